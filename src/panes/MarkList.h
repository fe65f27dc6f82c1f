#pragma once

#include "panes/MarkTotals.h"

#include <SupportDefs.h>

#include <vector>

namespace norvane {

class DirListItem;

/// The marked rows of a pane in the order of marking. Plain data: the rows are borrowed and drawn
/// by others.
class MarkList
{
public:
    /// Marks or unmarks one row.
    void Toggle(DirListItem* row);
    /// Adds the row without setting its mark, unless it is there.
    void Append(DirListItem* row);
    /// Unmarks all those of `rows` that are marked; a few in no time, many in one pass.
    void Unmark(const std::vector<DirListItem*>& rows);
    /// Marks all those of `rows` that are not marked.
    void Mark(const std::vector<DirListItem*>& rows);
    /// Forgets rows that go away.
    void Forget(const std::vector<DirListItem*>& rows);
    /// Unmarks all.
    void Clear();
    /// Unmarks those that no filter keeps out of the list.
    void ClearSeen();

    bool IsEmpty() const { return fRows.empty(); }
    int32 Count() const { return static_cast<int32>(fRows.size()); }
    const std::vector<DirListItem*>& Rows() const { return fRows; }
    /// Those that no filter keeps out of the list.
    std::vector<DirListItem*> SeenRows() const;

    const MarkTotals& Totals() const { return fTotals; }
    /// Marked rows changed, or were hidden or shown: counts them all again.
    void Recount();

private:
    void UnmarkFew(const std::vector<DirListItem*>& rows);

    std::vector<DirListItem*> fRows;
    MarkTotals fTotals; // of those that are marked
};

} // namespace norvane
