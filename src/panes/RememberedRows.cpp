#include "panes/RememberedRows.h"

#include "panes/PaneRows.h"

namespace norvane {

RememberedRows::RememberedRows(const std::vector<DirListItem*>& rows)
{
    fEntries.reserve(rows.size());
    for (const DirListItem* row : rows) {
        fEntries.push_back({row->GetEntryName(), row->NodeRef(),
                            static_cast<uint64>(row->GetRef()->directory), row->HasNode(),
                            row->IsParent()});
    }
}

std::vector<DirListItem*> RememberedRows::FindIn(const PaneRows& rows) const
{
    std::vector<DirListItem*> found;
    found.reserve(fEntries.size());
    for (const Entry& entry : fEntries) {
        if (DirListItem* row = Find(entry, rows)) {
            found.push_back(row);
        }
    }
    return found;
}

DirListItem* RememberedRows::Find(const Entry& entry, const PaneRows& rows)
{
    if (entry.isParent) {
        DirListItem* first = rows.RowAt(0);
        return first != nullptr && first->IsParent() ? first : nullptr;
    }
    DirListItem* row = rows.FindRow(entry.name.c_str());
    const bool isSame =
        row != nullptr && row->HasNode() == entry.hasNode &&
        (!entry.hasNode || (row->NodeRef() == entry.node &&
                            static_cast<uint64>(row->GetRef()->directory) == entry.directory));
    return isSame ? row : nullptr;
}

} // namespace norvane
