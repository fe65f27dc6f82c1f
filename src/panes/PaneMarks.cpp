#include "panes/PaneMarks.h"

#include <algorithm>

namespace norvane {

void PaneMarks::Toggle(int32 index)
{
    DirListItem* row = fRows.RowAt(index);
    if (row != nullptr && !row->IsParent()) {
        fMarks.Toggle(row);
        fRows.Redraw(row);
    }
}

std::vector<DirListItem*> PaneMarks::RowsBetween(int32 from, int32 to) const
{
    std::vector<DirListItem*> rows;
    const int32 last = std::min(to, fRows.CountRows() - 1);
    for (int32 index = std::max(from, 0); index <= last; index++) {
        if (!fRows.RowAt(index)->IsParent()) {
            rows.push_back(fRows.RowAt(index));
        }
    }
    return rows;
}

void PaneMarks::Mark(int32 from, int32 to)
{
    fMarks.Mark(RowsBetween(from, to));
    fRows.RedrawAll();
}

void PaneMarks::Unmark(int32 from, int32 to)
{
    fMarks.Unmark(RowsBetween(from, to));
    fRows.RedrawAll();
}

void PaneMarks::ToggleAll(int32 from, int32 to)
{
    std::vector<DirListItem*> marked;
    std::vector<DirListItem*> others;
    for (DirListItem* row : RowsBetween(from, to)) {
        (row->IsMarked() ? marked : others).push_back(row);
    }
    fMarks.Unmark(marked);
    fMarks.Mark(others);
    fRows.RedrawAll();
}

void PaneMarks::Empty()
{
    if (!fMarks.IsEmpty()) {
        fMarks.Clear();
        fRows.RedrawAll();
    }
}

} // namespace norvane
