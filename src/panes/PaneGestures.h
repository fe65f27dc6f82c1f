#pragma once

#include "panes/PaneMarks.h"
#include "panes/PaneRows.h"

#include <Point.h>

#include <optional>

namespace norvane {

/// What presses, moves and releases of the mouse mean for the marks of a list.
///
/// Thread: the list's window's.
class PaneGestures
{
public:
    PaneGestures(PaneRows& rows, PaneMarks& marks) : fRows(rows), fMarks(marks) {}

    /// A button went down over a row, or beside all rows (-1). True when the press is to be
    /// followed to its release, wherever the pointer goes.
    bool Pressed(BPoint where, int32 index, uint32 modifiers, uint32 buttons);
    /// The pointer moved while these buttons were held. The row that is to be dragged from here on;
    /// null for none.
    DirListItem* Moved(BPoint where, uint32 buttons);
    /// The press is over. When it was one of the secondary button, released in place, that asks for
    /// a menu: of the row that is told, or of the place for null.
    std::optional<DirListItem*> Released();

    /// Forgets a row that goes away.
    void Forget(const DirListItem* row);
    void ForgetAll();

private:
    /// A press without modifiers, until its release.
    struct Press
    {
        BPoint where;
        DirListItem* row = nullptr; // may be null; cleared when the row goes
        bool isPrimary = true;      // another button clears no marks
        bool isForMenu = false;     // the secondary one, and no other
        bool wasOnRow = false;      // which may be gone
        bool isInPlace = true;      // the pointer never left the square around the press
    };

    void MarkWithCommand(int32 index);
    void MarkWithShift(int32 index);

    PaneRows& fRows;
    PaneMarks& fMarks;
    DirListItem* fAnchor = nullptr; // where the last range of marks started
    std::optional<Press> fPress;    // empty unless a press is being followed
};

} // namespace norvane
