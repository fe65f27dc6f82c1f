#pragma once

#include <SupportDefs.h>

class BList;

namespace kits {

/// Which rows of a list are selected, and what a click or a key makes of it. Needs no window.
///
/// The mark itself is kept in the rows (BListItem::IsSelected()); this knows the span in which
/// marks are, the anchor of ranges and the row that keys start from. Disabled rows are never
/// selected by a person.
class ListSelection
{
public:
    /// The rows whose mark changed lie between these two; nothing changed when first is -1.
    struct Change
    {
        int32 first = -1;
        int32 last = -1;

        explicit operator bool() const { return first >= 0; }
        void Include(int32 row);
        void Include(const Change& other);
    };

    /// Borrows the list of BListItems.
    explicit ListSelection(const BList& rows) : fRows(rows) {}

    void SetMultiple(bool multiple) { fIsMultiple = multiple; }

    // The program's own selecting; indices outside are brought inside or do nothing.

    Change Select(int32 first, int32 last, bool extend);
    Change Deselect(int32 row);
    /// Deselects all rows but those from `first` to `last`.
    Change DeselectExcept(int32 first, int32 last);
    Change DeselectAll() { return DeselectExcept(-1, -1); }

    // A person's.

    /// A press on a row, or below the last one (-1).
    Change Press(int32 row, uint32 modifiers);
    /// The release of a press that moved nothing: leaves only the row selected when the press
    /// spared several.
    Change Release(int32 row);
    /// The pointer was dragged to a row.
    Change Sweep(int32 row);
    /// A key moved to a row: with Shift the range from the anchor, else that row alone.
    Change MoveTo(int32 row, uint32 modifiers);

    // The rows changed: marks move with their rows.

    void Inserted(int32 index, int32 count);
    void Removed(int32 index, int32 count);
    /// The row at `from` stands at `to` now.
    void Moved(int32 from, int32 to);
    /// Rows may be anywhere now, as after sorting.
    void Rearranged();

    bool IsSelected(int32 row) const;
    /// The n-th selected row, or -1.
    int32 Nth(int32 n) const;
    /// The row that arrow keys start from: the last one clicked or moved to, or -1.
    int32 Cursor() const { return fCursor; }
    /// Whether the press spared a selection of several rows until the release.
    bool IsCollapsePending() const { return fIsCollapsePending; }

private:
    int32 Count() const;
    bool IsEnabled(int32 row) const;
    bool Mark(int32 row, bool selected);
    void Widen(int32 first, int32 last);
    Change SelectEnabled(int32 first, int32 last, bool extend);
    bool HasSeveral() const;

    const BList& fRows;
    bool fIsMultiple = false;
    bool fIsCollapsePending = false;
    // No mark lies outside this span; fFirst is -1 when there is none.
    mutable int32 fFirst = -1;
    mutable int32 fLast = -1;
    int32 fAnchor = -1;
    int32 fCursor = -1;
};

} // namespace kits
