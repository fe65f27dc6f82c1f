#pragma once

#include <SupportDefs.h>

#include <unordered_set>
#include <vector>

namespace norvane {

class DirListItem;
class PaneMarks;
class PaneRows;

/// The rows that are marked while Shift is held and the cursor moves: all between the row where
/// that began and the cursor, both included.
///
/// Rows that the range leaves again are unmarked, but for those that were marked before it came.
/// Thread: the list's window's.
class RangeMarks
{
public:
    RangeMarks(PaneRows& rows, PaneMarks& marks) : fRows(rows), fMarks(marks) {}

    /// The cursor was moved with Shift. `from` is -1 when there was none.
    void Moved(int32 from, int32 to);
    /// What is marked stays; the next move begins another range.
    void End();
    /// A row goes away.
    void Forget(const DirListItem* row);

private:
    std::vector<DirListItem*> RowsOutside(int32 from, int32 to, int32 otherFrom,
                                          int32 otherTo) const;

    PaneRows& fRows;
    PaneMarks& fMarks;
    const DirListItem* fAnchor = nullptr;         // null: there is no range
    const DirListItem* fEnd = nullptr;            // where the cursor is
    std::unordered_set<const DirListItem*> fKept; // were marked before
};

} // namespace norvane
