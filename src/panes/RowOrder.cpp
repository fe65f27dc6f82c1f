#include "panes/RowOrder.h"

#include "panes/DirListItem.h"

#include <algorithm>
#include <cstring>

namespace norvane {

namespace {

// Beyond so many renamed rows asking each for its index costs more than walking the list.
constexpr std::size_t kManyDisplaced = 64;

/// Whether a row stands before a new one in a listing's order.
bool StandsBefore(const DirListItem& row, const char* name, bool isFolder)
{
    if (row.IsDir() != isFolder) {
        return row.IsDir();
    }
    return std::strcmp(row.GetEntryName(), name) <= 0;
}

/// Whether a new row goes directly before this one.
bool IsPlace(const DirListItem& row, const char* name, bool isFolder)
{
    if (row.IsDir() != isFolder) {
        return isFolder;
    }
    return std::strcmp(row.GetEntryName(), name) > 0;
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

int32 RowOrder::ScanForPlace(const char* name, bool isFolder, int32 end) const
{
    for (int32 i = First(); i < end; i++) {
        if (IsPlace(*fRows.RowAt(i), name, isFolder)) {
            return i;
        }
    }
    return end;
}

int32 RowOrder::SearchPlace(const char* name, bool isFolder) const
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
        if (probe < high && StandsBefore(*fRows.RowAt(probe), name, isFolder)) {
            low = probe + 1;
        } else {
            high = middle;
        }
    }
    while (low < fRows.CountRows() && !fDisplaced.empty() && IsDisplaced(fRows.RowAt(low)) &&
           !IsPlace(*fRows.RowAt(low), name, isFolder)) {
        low++;
    }
    return low;
}

int32 RowOrder::First() const
{
    return fRows.CountRows() > 0 && fRows.RowAt(0)->IsParent() ? 1 : 0;
}

RowOrder::Place RowOrder::PlaceFor(const char* name, bool isFolder) const
{
    const int32 ordered = SearchPlace(name, isFolder);
    int32 place = ordered;
    if (fDisplaced.size() > kManyDisplaced) {
        place = ScanForPlace(name, isFolder, fRows.CountRows());
        return {place, place == ordered};
    }
    // The first row that is greater counts, also when it stands where only its former name
    // belonged.
    for (const DirListItem* row : fDisplaced) {
        if (IsPlace(*row, name, isFolder)) {
            const int32 index = Walk(row);
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
    // In the listing's order the place for the same name is right behind the row.
    const int32 place = SearchPlace(row->GetEntryName(), row->IsDir()) - 1;
    if (place >= 0 && place < fRows.CountRows() && fRows.RowAt(place) == row) {
        return place;
    }
    return Walk(row);
}

} // namespace norvane
