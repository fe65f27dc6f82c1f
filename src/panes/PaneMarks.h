#pragma once

#include "panes/MarkList.h"
#include "panes/PaneRows.h"

#include <functional>
#include <utility>
#include <vector>

namespace norvane {

class NamePatterns;

/// The marks of a list, by place: set, taken away and drawn. The row ".." is never marked.
///
/// Rows that a filter keeps out of the list stay marked, and take no part in anything until they
/// are shown again. Thread: the list's window's. Ranges include both ends and may reach beyond the
/// list.
class PaneMarks
{
public:
    /// `changed` is called whenever marks came or went; it may be empty.
    explicit PaneMarks(PaneRows& rows, std::function<void()> changed = {})
        : fRows(rows), fChanged(std::move(changed))
    {
    }

    void Toggle(int32 index);
    void ToggleAll(int32 from, int32 to);
    void Mark(int32 from, int32 to);
    void Unmark(int32 from, int32 to);
    void Mark(const std::vector<DirListItem*>& rows);
    void Unmark(const std::vector<DirListItem*>& rows);
    /// Marks or unmarks all rows whose own names match.
    void MarkMatching(const NamePatterns& patterns);
    void UnmarkMatching(const NamePatterns& patterns);
    void Empty();
    /// Adds a row to the marked ones without showing it as marked.
    void Append(DirListItem* row) { fMarks.Append(row); }
    /// Forgets rows that go away.
    void Forget(const std::vector<DirListItem*>& rows) { fMarks.Forget(rows); }
    /// Forgets all; nothing is drawn.
    void ForgetAll() { fMarks.Clear(); }

    /// Whether no row is marked that is shown.
    bool IsEmpty() const;
    /// The marked rows that are shown, in the order of marking.
    std::vector<DirListItem*> Rows() const;
    /// Costs more than a look only when marked rows changed, or were hidden or shown.
    const MarkTotals& Totals() const;
    /// All marked rows.
    const MarkList& List() const { return fMarks; }

private:
    std::vector<DirListItem*> RowsBetween(int32 from, int32 to) const;
    std::vector<DirListItem*> RowsMatching(const NamePatterns& patterns) const;

    void Changed();

    PaneRows& fRows;
    const std::function<void()> fChanged;
    mutable MarkList fMarks;
    mutable uint32 fCounted = 0; // which of the rows' changes the totals know of
};

} // namespace norvane
