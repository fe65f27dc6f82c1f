#include "panes/PaneMarks.h"

#include "panes/NamePatterns.h"

#include <algorithm>

namespace norvane {

void PaneMarks::Toggle(int32 index)
{
    DirListItem* row = fRows.RowAt(index);
    if (row != nullptr && !row->IsParent()) {
        Totals(); // of what changed before
        fMarks.Toggle(row);
        fRows.Redraw(row);
        if (fChanged) {
            fChanged();
        }
    }
}

/// Many at once.
void PaneMarks::Changed()
{
    fRows.RedrawAll();
    if (fChanged) {
        fChanged();
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

std::vector<DirListItem*> PaneMarks::RowsMatching(const NamePatterns& patterns) const
{
    std::vector<DirListItem*> rows;
    for (int32 index = 0; index < fRows.CountRows(); index++) {
        DirListItem* row = fRows.RowAt(index);
        if (!row->IsParent() && patterns.Matches(row->LeafName(), row->IsDir())) {
            rows.push_back(row);
        }
    }
    return rows;
}

void PaneMarks::Mark(const std::vector<DirListItem*>& rows)
{
    Totals(); // of what changed before
    fMarks.Mark(rows);
    Changed();
}

void PaneMarks::Unmark(const std::vector<DirListItem*>& rows)
{
    Totals();
    fMarks.Unmark(rows);
    Changed();
}

void PaneMarks::Mark(int32 from, int32 to)
{
    Mark(RowsBetween(from, to));
}

void PaneMarks::Unmark(int32 from, int32 to)
{
    Unmark(RowsBetween(from, to));
}

void PaneMarks::MarkMatching(const NamePatterns& patterns)
{
    Mark(RowsMatching(patterns));
}

void PaneMarks::UnmarkMatching(const NamePatterns& patterns)
{
    Unmark(RowsMatching(patterns));
}

void PaneMarks::ToggleAll(int32 from, int32 to)
{
    std::vector<DirListItem*> marked;
    std::vector<DirListItem*> others;
    for (DirListItem* row : RowsBetween(from, to)) {
        (row->IsMarked() ? marked : others).push_back(row);
    }
    Totals();
    fMarks.Unmark(marked);
    fMarks.Mark(others);
    Changed();
}

void PaneMarks::Empty()
{
    if (!IsEmpty()) {
        fMarks.ClearSeen();
        Changed();
    }
}

bool PaneMarks::IsEmpty() const
{
    return fMarks.Count() <= Totals().unseen;
}

std::vector<DirListItem*> PaneMarks::Rows() const
{
    Totals();
    return fMarks.SeenRows();
}

const MarkTotals& PaneMarks::Totals() const
{
    const uint32 changes = fRows.MarkedChanges();
    if (fCounted != changes) {
        fCounted = changes;
        fMarks.Recount();
    }
    return fMarks.Totals();
}

} // namespace norvane
