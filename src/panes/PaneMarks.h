#pragma once

#include "panes/MarkList.h"
#include "panes/PaneRows.h"

#include <vector>

namespace norvane {

/// The marks of a list, by place: set, taken away and drawn. The row ".." is never marked.
///
/// Thread: the list's window's. Ranges include both ends and may reach beyond the list.
class PaneMarks
{
public:
    explicit PaneMarks(PaneRows& rows) : fRows(rows) {}

    void Toggle(int32 index);
    void ToggleAll(int32 from, int32 to);
    void Mark(int32 from, int32 to);
    void Unmark(int32 from, int32 to);
    void Empty();
    /// Adds a row to the marked ones without showing it as marked.
    void Append(DirListItem* row) { fMarks.Append(row); }
    /// Forgets rows that go away.
    void Forget(const std::vector<DirListItem*>& rows) { fMarks.Forget(rows); }
    /// Forgets all; nothing is drawn.
    void ForgetAll() { fMarks.Clear(); }

    bool IsEmpty() const { return fMarks.IsEmpty(); }
    const MarkList& List() const { return fMarks; }

private:
    std::vector<DirListItem*> RowsBetween(int32 from, int32 to) const;

    PaneRows& fRows;
    MarkList fMarks;
};

} // namespace norvane
