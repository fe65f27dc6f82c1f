#include "panes/ComingRows.h"

#include "panes/DirListItem.h"

#include <algorithm>
#include <utility>

namespace norvane {

ComingRows::ComingRows(const std::unordered_set<DirListItem*>& rows, RowSorting sorting)
    : fSorting(std::move(sorting)), fRows(rows.begin(), rows.end())
{
    fSorting.Sort(fRows);
    std::reverse(fRows.begin(), fRows.end());
}

DirListItem* ComingRows::TakeBefore(const DirListItem& row)
{
    const bool isBefore = !fRows.empty() && fSorting.Compare(*fRows.back(), row) < 0;
    return isBefore ? TakeLast() : nullptr;
}

DirListItem* ComingRows::TakeLast()
{
    if (fRows.empty()) {
        return nullptr;
    }
    DirListItem* row = fRows.back();
    fRows.pop_back();
    return row;
}

} // namespace norvane
