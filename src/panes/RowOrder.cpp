#include "panes/RowOrder.h"

#include "panes/DirListItem.h"

#include <algorithm>

namespace norvane {

namespace {

// Beyond so many renamed rows asking each for its index costs more than walking the list.
constexpr std::size_t kManyDisplaced = 64;

/// The first index behind "..".
int32 First(const RowSequence& rows)
{
    return rows.CountRows() > 0 && rows.RowAt(0)->IsParent() ? 1 : 0;
}

} // namespace

void RowOrder::Displaced(const DirListItem* row)
{
    fDisplaced.insert(row);
}

void RowOrder::Forget(const DirListItem* row)
{
    fDisplaced.erase(row);
}

bool RowOrder::IsDisplaced(const DirListItem* row) const
{
    return fDisplaced.contains(row);
}

/// Whether the other is greater than this one.
bool RowOrder::IsBehind(const DirListItem& other, const DirListItem& row) const
{
    return fSorting.Compare(other, row) > 0;
}

int32 RowOrder::ScanForPlace(const DirListItem& row) const
{
    int32 place = First(fRows);
    while (place < fRows.CountRows() && !IsBehind(*fRows.RowAt(place), row)) {
        place++;
    }
    return place;
}

int32 RowOrder::SearchPlace(const DirListItem& row, const RowSequence& rows) const
{
    int32 low = First(rows);
    int32 high = rows.CountRows();
    while (low < high) {
        const int32 middle = low + (high - low) / 2;
        // A displaced row says nothing about the order; the next one that is in its place does.
        int32 probe = middle;
        while (probe < high && !fDisplaced.empty() && IsDisplaced(rows.RowAt(probe))) {
            probe++;
        }
        if (probe < high && !IsBehind(*rows.RowAt(probe), row)) {
            low = probe + 1;
        } else {
            high = middle;
        }
    }
    while (low < rows.CountRows() && !fDisplaced.empty() && IsDisplaced(rows.RowAt(low)) &&
           !IsBehind(*rows.RowAt(low), row)) {
        low++;
    }
    return low;
}

RowOrder::Place RowOrder::PlaceFor(const DirListItem& row) const
{
    const int32 ordered = SearchPlace(row, fRows);
    int32 place = ordered;
    if (fDisplaced.size() > kManyDisplaced) {
        place = ScanForPlace(row);
        return {place, place == ordered};
    }
    // The first row that is greater counts, also when it stands where only its former name
    // belonged.
    for (const DirListItem* displaced : fDisplaced) {
        if (fSorting.Compare(*displaced, row) > 0) {
            const int32 index = Walk(displaced, fRows);
            place = index >= First(fRows) ? std::min(place, index) : place;
        }
    }
    return {place, place == ordered};
}

int32 RowOrder::Walk(const DirListItem* row, const RowSequence& rows)
{
    for (int32 i = 0; i < rows.CountRows(); i++) {
        if (rows.RowAt(i) == row) {
            return i;
        }
    }
    return -1;
}

int32 RowOrder::IndexOf(const DirListItem* row, const RowSequence& some) const
{
    if (row->IsParent()) {
        return some.CountRows() > 0 && some.RowAt(0) == row ? 0 : -1;
    }
    // The place for another one like it is right behind the row.
    const int32 place = SearchPlace(*row, some) - 1;
    if (place >= 0 && place < some.CountRows() && some.RowAt(place) == row) {
        return place;
    }
    return Walk(row, some);
}

} // namespace norvane
