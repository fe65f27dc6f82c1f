#include "panes/RowSource.h"

namespace norvane {

std::string RowSource::FooterText(const FolderTotals& selected, const FolderTotals& all) const
{
    return norvane::FooterText(selected.bytes, all.bytes, selected.files, all.files);
}

const entry_ref* RowSource::EntryToOpen(const DirListItem& row) const
{
    const entry_ref* ref = row.GetRef();
    return row.IsDir() || ref->name == nullptr ? nullptr : ref;
}

} // namespace norvane
