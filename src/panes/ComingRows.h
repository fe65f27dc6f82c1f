#pragma once

#include "panes/RowSorting.h"

#include <unordered_set>
#include <vector>

namespace norvane {

class DirListItem;

/// Rows on their way into a list, in its order.
class ComingRows
{
public:
    ComingRows(const std::unordered_set<DirListItem*>& rows, RowSorting sorting);

    /// The next one that goes before `row`; null when there is none.
    DirListItem* TakeBefore(const DirListItem& row);
    /// The next one that goes behind all rows; null when there is none left.
    DirListItem* TakeLast();

private:
    const RowSorting fSorting;
    std::vector<DirListItem*> fRows; // the last one is taken first
};

} // namespace norvane
