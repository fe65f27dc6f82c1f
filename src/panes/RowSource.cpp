#include "panes/RowSource.h"

namespace norvane {

std::string RowSource::FooterText(const FolderTotals& selected, const FolderTotals& all) const
{
    return norvane::FooterText(selected.bytes, all.bytes, selected.files, all.files);
}

} // namespace norvane
