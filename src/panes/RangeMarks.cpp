#include "panes/RangeMarks.h"

#include "panes/DirListItem.h"
#include "panes/PaneMarks.h"
#include "panes/PaneRows.h"

#include <algorithm>

namespace norvane {

void RangeMarks::Moved(int32 from, int32 to)
{
    const DirListItem* start = fRows.RowAt(from < 0 ? to : from);
    if (start == nullptr || fRows.RowAt(to) == nullptr) {
        return;
    }
    const bool goesOn =
        from >= 0 && fAnchor != nullptr && start == fEnd && fRows.IndexOf(fAnchor) >= 0;
    if (!goesOn) {
        fAnchor = start;
        fKept.clear();
    }
    const int32 anchor = fRows.IndexOf(fAnchor);
    const int32 first = std::min(anchor, to);
    const int32 last = std::max(anchor, to);
    // None before it began.
    const int32 formerFirst = goesOn ? std::min(anchor, from) : last + 1;
    const int32 formerLast = goesOn ? std::max(anchor, from) : last;

    std::vector<DirListItem*> left = RowsOutside(formerFirst, formerLast, first, last);
    std::erase_if(left, [this](const DirListItem* row) { return fKept.erase(row) > 0; });
    const std::vector<DirListItem*> taken = RowsOutside(first, last, formerFirst, formerLast);
    for (const DirListItem* row : taken) {
        if (row->IsMarked()) {
            fKept.insert(row);
        }
    }
    fMarks.Unmark(left);
    fMarks.Mark(taken);
    fEnd = fRows.RowAt(to);
}

/// The rows of a range that are not in the other one; an empty one ends before it begins.
std::vector<DirListItem*> RangeMarks::RowsOutside(int32 from, int32 to, int32 otherFrom,
                                                  int32 otherTo) const
{
    std::vector<DirListItem*> rows;
    for (int32 index = from; index <= to; index++) {
        if (index >= otherFrom && index <= otherTo) {
            index = otherTo; // past it at once: it may be long
        } else if (!fRows.RowAt(index)->IsParent()) {
            rows.push_back(fRows.RowAt(index));
        }
    }
    return rows;
}

void RangeMarks::End()
{
    fAnchor = nullptr;
    fEnd = nullptr;
    fKept.clear();
}

void RangeMarks::Forget(const DirListItem* row)
{
    if (row == fAnchor || row == fEnd) {
        End();
    }
    fKept.erase(row);
}

} // namespace norvane
