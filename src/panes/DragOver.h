#pragma once

#include "panes/PaneRows.h"

#include <Point.h>

#include <functional>
#include <memory>

class BMessage;
class BMessageRunner;

namespace norvane {

class ColumnListView;

/// What a list shows while entries are dragged over it: the folder's row that would take them; and
/// near its edges it scrolls.
///
/// Thread: the list's window's.
class DragOver
{
public:
    /// Whether the row takes what is dragged, rather than the place that the list shows.
    using TakesEntries = std::function<bool(const DirListItem& row, const BMessage& dragged)>;

    DragOver(ColumnListView& list, const PaneRows& rows, TakesEntries takesEntries);
    ~DragOver();
    DragOver(const DragOver&) = delete;
    DragOver& operator=(const DragOver&) = delete;

    /// The pointer moved; `dragged` is null when it drags nothing.
    void Moved(BPoint where, uint32 transit, const BMessage* dragged);
    /// Scrolls on: the list got kDragScroll.
    void Scroll();
    /// Draws the frame of the row that would take the entries.
    void Draw();
    /// Forgets a row that goes away.
    void Forget(const DirListItem* row);
    void ForgetAll();

private:
    void End();
    void Point(BPoint where);
    void SetRow(DirListItem* row);
    float ScrollDirection() const;

    ColumnListView& fList;
    const PaneRows& fRows;
    const TakesEntries fTakesEntries;
    std::unique_ptr<const BMessage> fDragged;   // null while nothing is dragged over the list
    BPoint fWhere;                              // of the pointer, in the list's coordinates
    DirListItem* fPointed = nullptr;            // the row below it; may be null
    DirListItem* fRow = nullptr;                // the one that takes the entries; may be null
    std::unique_ptr<BMessageRunner> fScrolling; // while the pointer is near an edge
};

} // namespace norvane
