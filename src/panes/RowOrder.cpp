#include "panes/RowOrder.h"

#include "panes/DirListItem.h"

#include <algorithm>

namespace norvane {

namespace {

// Beyond so many renamed rows asking each for its index costs more than walking the list.
constexpr std::size_t kManyDisplaced = 64;

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

/// Whether the row at an index is greater than this one.
bool RowOrder::IsBehind(int32 index, const DirListItem& row) const
{
    return fSorting.Compare(*fRows.RowAt(index), row) > 0;
}

int32 RowOrder::ScanForPlace(const DirListItem& row) const
{
    int32 place = First();
    while (place < fRows.CountRows() && !IsBehind(place, row)) {
        place++;
    }
    return place;
}

int32 RowOrder::SearchPlace(const DirListItem& row) const
{
    int32 low = First();
    int32 high = fRows.CountRows();
    while (low < high) {
        const int32 middle = low + (high - low) / 2;
        // A displaced row says nothing about the order; the next one that is in its place does.
        int32 probe = middle;
        while (probe < high && !fDisplaced.empty() && IsDisplaced(fRows.RowAt(probe))) {
            probe++;
        }
        if (probe < high && !IsBehind(probe, row)) {
            low = probe + 1;
        } else {
            high = middle;
        }
    }
    while (low < fRows.CountRows() && !fDisplaced.empty() && IsDisplaced(fRows.RowAt(low)) &&
           !IsBehind(low, row)) {
        low++;
    }
    return low;
}

int32 RowOrder::First() const
{
    return fRows.CountRows() > 0 && fRows.RowAt(0)->IsParent() ? 1 : 0;
}

RowOrder::Place RowOrder::PlaceFor(const DirListItem& row) const
{
    const int32 ordered = SearchPlace(row);
    int32 place = ordered;
    if (fDisplaced.size() > kManyDisplaced) {
        place = ScanForPlace(row);
        return {place, place == ordered};
    }
    // The first row that is greater counts, also when it stands where only its former name
    // belonged.
    for (const DirListItem* displaced : fDisplaced) {
        if (fSorting.Compare(*displaced, row) > 0) {
            const int32 index = Walk(displaced);
            place = index >= First() ? std::min(place, index) : place;
        }
    }
    return {place, place == ordered};
}

int32 RowOrder::Walk(const DirListItem* row) const
{
    for (int32 i = 0; i < fRows.CountRows(); i++) {
        if (fRows.RowAt(i) == row) {
            return i;
        }
    }
    return -1;
}

int32 RowOrder::IndexOf(const DirListItem* row) const
{
    if (row->IsParent()) {
        return fRows.CountRows() > 0 && fRows.RowAt(0) == row ? 0 : -1;
    }
    // The place for another one like it is right behind the row.
    const int32 place = SearchPlace(*row) - 1;
    if (place >= 0 && place < fRows.CountRows() && fRows.RowAt(place) == row) {
        return place;
    }
    return Walk(row);
}

} // namespace norvane
