#include "ListSelection.h"

#include <InterfaceDefs.h>
#include <List.h>
#include <ListItem.h>

#include <algorithm>

namespace kits {

namespace {

BListItem* RowAt(const BList& rows, int32 index)
{
    return static_cast<BListItem*>(rows.ItemAt(index));
}

// Alt belongs to many window managers, so Ctrl does what Alt does on the platform.
constexpr uint32 kToggleKeys = B_COMMAND_KEY | B_OPTION_KEY;

// Where the row at `index` is after `count` rows went, or -1 when it was one of them.
int32 AfterRemoval(int32 index, int32 removed, int32 count)
{
    if (index < removed) {
        return index;
    }
    return index < removed + count ? -1 : index - count;
}

} // namespace

void ListSelection::Change::Include(int32 row)
{
    first = first < 0 ? row : std::min(first, row);
    last = std::max(last, row);
}

void ListSelection::Change::Include(const Change& other)
{
    if (other) {
        Include(other.first);
        Include(other.last);
    }
}

ListSelection::Change ListSelection::Select(int32 first, int32 last, bool extend)
{
    if (first > last) {
        std::swap(first, last);
    }
    if (last < 0 || first >= Count()) {
        return {};
    }
    first = std::max(first, 0);
    last = std::min(last, Count() - 1);
    if (!fIsMultiple) {
        last = first;
        extend = false;
    }
    Change change;
    if (!extend) {
        change = DeselectExcept(first, last);
    }
    for (int32 row = first; row <= last; row++) {
        if (Mark(row, true)) {
            change.Include(row);
        }
    }
    Widen(first, last);
    fAnchor = first;
    fCursor = last;
    return change;
}

ListSelection::Change ListSelection::Deselect(int32 row)
{
    Change change;
    if (row >= 0 && row < Count() && Mark(row, false)) {
        change.Include(row);
    }
    return change;
}

ListSelection::Change ListSelection::DeselectExcept(int32 first, int32 last)
{
    Change change;
    if (first > last) {
        std::swap(first, last);
    }
    if (fFirst >= 0) {
        for (int32 row = fFirst; row <= std::min(fLast, Count() - 1); row++) {
            if ((row < first || row > last) && Mark(row, false)) {
                change.Include(row);
            }
        }
    }
    // What is left selected lies inside both spans.
    const int32 keptFirst = std::max(fFirst, first);
    const int32 keptLast = std::min(fLast, last);
    const bool isAnyKept = fFirst >= 0 && first >= 0 && keptFirst <= keptLast;
    fFirst = isAnyKept ? keptFirst : -1;
    fLast = isAnyKept ? keptLast : -1;
    return change;
}

ListSelection::Change ListSelection::Press(int32 row, uint32 modifiers)
{
    fIsCollapsePending = false;
    const bool isExtending = fIsMultiple && (modifiers & B_SHIFT_KEY) != 0;
    const bool isToggling = fIsMultiple && (modifiers & kToggleKeys) != 0;
    if (row < 0 || row >= Count()) {
        return isExtending || isToggling ? Change() : DeselectAll();
    }
    if (!IsEnabled(row)) {
        return {};
    }
    if (isExtending && fAnchor >= 0) {
        fCursor = row;
        return SelectEnabled(fAnchor, row, isToggling);
    }
    fAnchor = row;
    fCursor = row;
    if (isToggling && IsSelected(row)) {
        return Deselect(row);
    }
    if (!isToggling && IsSelected(row) && HasSeveral()) {
        // It may become a drag of all of them; the release decides.
        fIsCollapsePending = true;
        return {};
    }
    return SelectEnabled(row, row, isToggling);
}

ListSelection::Change ListSelection::Release(int32 row)
{
    if (!fIsCollapsePending) {
        return {};
    }
    fIsCollapsePending = false;
    return row >= 0 && row < Count() ? DeselectExcept(row, row) : Change();
}

ListSelection::Change ListSelection::Sweep(int32 row)
{
    fIsCollapsePending = false;
    row = std::clamp(row, 0, std::max(0, Count() - 1));
    if (Count() == 0) {
        return {};
    }
    fCursor = row;
    if (!fIsMultiple || fAnchor < 0) {
        return IsEnabled(row) ? SelectEnabled(row, row, false) : Change();
    }
    return SelectEnabled(fAnchor, row, false);
}

ListSelection::Change ListSelection::MoveTo(int32 row, uint32 modifiers)
{
    if (row < 0 || row >= Count()) {
        return {};
    }
    fCursor = row;
    if (fIsMultiple && (modifiers & B_SHIFT_KEY) != 0 && fAnchor >= 0) {
        return SelectEnabled(fAnchor, row, false);
    }
    fAnchor = row;
    return SelectEnabled(row, row, false);
}

void ListSelection::Inserted(int32 index, int32 count)
{
    const auto moved = [&](int32 row) {
        return row >= index ? row + count : row;
    };
    if (fFirst >= 0) {
        // Rows that go in between widen the span; marks in it stay inside.
        fFirst = moved(fFirst);
        fLast = moved(fLast);
    }
    fAnchor = moved(fAnchor);
    fCursor = moved(fCursor);
    for (int32 row = index; row < index + count; row++) {
        if (IsSelected(row)) {
            Widen(row, row);
        }
    }
}

void ListSelection::Removed(int32 index, int32 count)
{
    if (fFirst >= 0) {
        const int32 end = index + count;
        fFirst = fFirst < index ? fFirst : std::max(index, fFirst - count);
        fLast = fLast < index ? fLast : (fLast < end ? index - 1 : fLast - count);
        if (fLast < fFirst) {
            fFirst = -1;
            fLast = -1;
        }
    }
    fAnchor = AfterRemoval(fAnchor, index, count);
    fCursor = AfterRemoval(fCursor, index, count);
}

void ListSelection::Moved(int32 from, int32 to)
{
    const auto moved = [&](int32 row) {
        if (row == from) {
            return to;
        }
        return row > from && row <= to ? row - 1 : row < from && row >= to ? row + 1 : row;
    };
    fAnchor = moved(fAnchor);
    fCursor = moved(fCursor);
    if (fFirst >= 0) {
        // All others move by one at most. Nth() finds out how far the span really reaches.
        fFirst = std::max(0, fFirst - 1);
        fLast = std::min(Count() - 1, fLast + 1);
        if (IsSelected(to)) {
            Widen(to, to);
        }
    }
}

void ListSelection::Rearranged()
{
    if (fFirst >= 0) {
        fFirst = 0;
        fLast = Count() - 1;
    }
    fAnchor = Nth(0);
    fCursor = fAnchor;
}

bool ListSelection::IsSelected(int32 row) const
{
    const BListItem* item = RowAt(fRows, row);
    return item != nullptr && item->IsSelected();
}

int32 ListSelection::Nth(int32 n) const
{
    if (fFirst < 0 || n < 0) {
        return -1;
    }
    bool isFirstKnown = false;
    for (int32 row = fFirst; row <= fLast && row < Count(); row++) {
        if (!IsSelected(row)) {
            continue;
        }
        if (!isFirstKnown) {
            fFirst = row; // so that the next question need not walk here again
            isFirstKnown = true;
        }
        if (n-- == 0) {
            return row;
        }
    }
    if (!isFirstKnown) {
        fFirst = -1;
        fLast = -1;
    }
    return -1;
}

int32 ListSelection::Count() const
{
    return fRows.CountItems();
}

bool ListSelection::IsEnabled(int32 row) const
{
    const BListItem* item = RowAt(fRows, row);
    return item != nullptr && item->IsEnabled();
}

bool ListSelection::Mark(int32 row, bool selected)
{
    BListItem* item = RowAt(fRows, row);
    if (item == nullptr || item->IsSelected() == selected) {
        return false;
    }
    if (selected) {
        item->Select();
    } else {
        item->Deselect();
    }
    return true;
}

void ListSelection::Widen(int32 first, int32 last)
{
    fFirst = fFirst < 0 ? first : std::min(fFirst, first);
    fLast = std::max(fLast, last);
}

ListSelection::Change ListSelection::SelectEnabled(int32 first, int32 last, bool extend)
{
    if (first > last) {
        std::swap(first, last);
    }
    Change change;
    if (!extend) {
        change = DeselectExcept(first, last);
    }
    for (int32 row = first; row <= last; row++) {
        if (IsEnabled(row) && Mark(row, true)) {
            change.Include(row);
        }
    }
    Widen(first, last);
    return change;
}

bool ListSelection::HasSeveral() const
{
    return Nth(1) >= 0;
}

} // namespace kits
