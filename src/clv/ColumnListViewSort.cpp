#include "clv/ColumnListView.h"

#include "clv/CLVColumnLabelView.h"
#include "clv/ListLock.h"

#include <utility>
#include <vector>

// Sort keys, modes and the sorting itself.

namespace norvane {

namespace {

CLVListItem* RowOf(const void* slot)
{
    return static_cast<CLVListItem*>(*static_cast<BListItem* const*>(slot));
}

} // namespace

void ColumnListView::SetSortFunction(CompareFunction compare)
{
    fCompare = compare;
}

int32 ColumnListView::SortKeyPlace(const CLVColumn* column) const
{
    return fSortKeys.IndexOf(column);
}

void ColumnListView::InvalidateSortKeys()
{
    for (int32 i = 0; i < fSortKeys.CountItems(); i++) {
        const auto* column = static_cast<CLVColumn*>(fSortKeys.ItemAt(i));
        if (column->SortMode() != NoSort) {
            fStrip->InvalidateColumn(*column);
        }
    }
}

void ColumnListView::SetSortKey(int32 columnIndex)
{
    ListLock lock(*this);
    CLVColumn* column = columnIndex < 0 ? nullptr : ColumnAt(columnIndex);
    if (columnIndex >= 0 && (column == nullptr || (column->Flags() & CLV_SORT_KEYABLE) == 0)) {
        return;
    }
    if (column != nullptr && fSortKeys.FirstItem() == column) {
        return;
    }
    InvalidateSortKeys();
    fSortKeys.MakeEmpty();
    if (column == nullptr) {
        return;
    }
    fSortKeys.AddItem(column);
    if (column->SortMode() == NoSort) {
        SetSortMode(columnIndex, Ascending);
    }
    SortItems();
    fStrip->InvalidateColumn(*column);
}

void ColumnListView::AddSortKey(int32 columnIndex)
{
    ListLock lock(*this);
    CLVColumn* column = columnIndex < 0 ? nullptr : ColumnAt(columnIndex);
    if (column == nullptr || (column->Flags() & CLV_SORT_KEYABLE) == 0 ||
        fSortKeys.HasItem(column)) {
        return;
    }
    fSortKeys.AddItem(column);
    if (column->SortMode() == NoSort) {
        SetSortMode(columnIndex, Ascending);
    }
    SortItems();
    fStrip->InvalidateColumn(*column);
}

void ColumnListView::SetSortMode(int32 columnIndex, CLVSortMode mode)
{
    ListLock lock(*this);
    CLVColumn* column = columnIndex < 0 ? nullptr : ColumnAt(columnIndex);
    if (column == nullptr || (column->Flags() & CLV_SORT_KEYABLE) == 0 ||
        column->SortMode() == mode) {
        return;
    }
    column->fSortMode = mode;
    if (mode == NoSort) {
        fSortKeys.RemoveItem(column);
    }
    SortItems();
    fStrip->InvalidateColumn(*column);
}

void ColumnListView::ReverseSortMode(int32 columnIndex)
{
    ListLock lock(*this);
    const CLVColumn* column = columnIndex < 0 ? nullptr : ColumnAt(columnIndex);
    if (column == nullptr) {
        return;
    }
    switch (column->SortMode()) {
    case Ascending:
        SetSortMode(columnIndex, Descending);
        break;
    case Descending:
        SetSortMode(columnIndex, NoSort);
        break;
    case NoSort:
        SetSortMode(columnIndex, Ascending);
        break;
    }
}

int32 ColumnListView::Sorting(int32* keys, CLVSortMode* modes) const
{
    const int32 count = fSortKeys.CountItems();
    for (int32 i = 0; i < count; i++) {
        const auto* column = static_cast<CLVColumn*>(fSortKeys.ItemAt(i));
        keys[i] = IndexOfColumn(column);
        modes[i] = column->SortMode();
    }
    return count;
}

void ColumnListView::SetSorting(int32 count, const int32* keys, const CLVSortMode* modes)
{
    ListLock lock(*this);
    InvalidateSortKeys();
    fSortKeys.MakeEmpty();
    for (int32 i = 0; i < count; i++) {
        if (i == 0) {
            SetSortKey(keys[0]);
        } else {
            AddSortKey(keys[i]);
        }
        SetSortMode(keys[i], modes[i]);
    }
}

void ColumnListView::SortItems()
{
    ListLock lock(*this);
    // Without a compare function all rows are equal; sorting them would cost and could move them.
    if (fCompare == nullptr || CountItems() == 0) {
        return;
    }
    if (fIsHierarchical) {
        SortOutline();
    } else {
        SortFlat();
    }
}

void ColumnListView::SortFlat()
{
    for (int32 i = 0; i < CountItems(); i++) {
        static_cast<CLVListItem*>(ItemAt(i))->fSortOwner = this;
    }
    BListView::SortItems(&CompareRows);
}

int ColumnListView::PlainCompare(const CLVListItem* a, const CLVListItem* b) const
{
    for (int32 i = 0; i < fSortKeys.CountItems(); i++) {
        const auto* column = static_cast<CLVColumn*>(fSortKeys.ItemAt(i));
        const int order = fCompare(a, b, IndexOfColumn(column));
        if (order != 0) {
            return column->SortMode() == Descending ? -order : order;
        }
    }
    return 0;
}

int ColumnListView::CompareRows(const void* a, const void* b)
{
    const CLVListItem* left = RowOf(a);
    return left->fSortOwner->PlainCompare(left, RowOf(b));
}

int ColumnListView::ComparePlaces(const void* a, const void* b)
{
    const int32 left = RowOf(a)->fSortPlace;
    const int32 right = RowOf(b)->fSortPlace;
    return left < right ? -1 : (left > right ? 1 : 0);
}

// Each row's subrows are sorted by themselves. A row without one above it is of the first level,
// and one that skips levels is of that below its superitem: otherwise it would belong to another
// row when it comes to lie elsewhere.
void ColumnListView::SortOutline()
{
    const auto count = static_cast<std::size_t>(fOutline.Count());
    std::vector<CLVListItem*> first;
    std::vector<std::vector<CLVListItem*>> below(count);
    for (int32 i = 0; i < fOutline.Count(); i++) {
        CLVListItem* row = fOutline.At(i);
        const CLVListItem* superitem = fOutline.SuperitemOf(row);
        row->fSortPlace = i;
        (superitem != nullptr ? below[static_cast<std::size_t>(superitem->fSortPlace)] : first)
            .push_back(row);
    }
    std::vector<CLVListItem*> sorted;
    std::vector<std::pair<CLVListItem*, uint32>> waiting; // with their levels, the next one last
    const auto await = [&](std::vector<CLVListItem*>& rows, uint32 level) {
        SortFullListSegment(rows);
        for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
            waiting.emplace_back(*row, level);
        }
    };
    await(first, 0);
    while (!waiting.empty()) {
        const auto [row, level] = waiting.back();
        waiting.pop_back();
        sorted.push_back(row);
        row->SetOutlineLevel(level);
        await(below[static_cast<std::size_t>(row->fSortPlace)], level + 1);
        row->fSortPlace = static_cast<int32>(sorted.size());
    }
    fOutline.Arrange(sorted);
    BListView::SortItems(&ComparePlaces);
}

// The subrows of one row, or the rows of the first level.
void ColumnListView::SortFullListSegment(std::vector<CLVListItem*>& rows) const
{
    SortListArray(rows.data(), static_cast<int32>(rows.size()));
}

void ColumnListView::SortListArray(CLVListItem** rows, int32 count) const
{
    for (int32 i = 0; i < count - 1; i++) {
        for (int32 j = i + 1; j < count; j++) {
            // Exactly 1: a compare function with other positive answers leaves the pair alone.
            if (PlainCompare(rows[i], rows[j]) == 1) {
                std::swap(rows[i], rows[j]);
            }
        }
    }
}

} // namespace norvane
