#include "clv/ColumnListView.h"

#include "clv/ListLock.h"

#include <algorithm>

// Rows: in a flat list those of the BListView, in an outline the full list and the visible part of
// it.

namespace norvane {

void ColumnListView::RowsChanged()
{
    UpdateColumnSizesDataRectSizeScrollBars();
}

void ColumnListView::SetFont(const BFont* font, uint32 mask)
{
    ListLock lock(*this);
    BListView::SetFont(font, mask);
    RowsChanged(); // they may be higher now
}

bool ColumnListView::AddItem(CLVListItem* row)
{
    return AddItem(row, fIsHierarchical ? FullListCountItems() : CountItems());
}

bool ColumnListView::AddItem(CLVListItem* row, int32 index)
{
    ListLock lock(*this);
    if (row == nullptr) {
        return false;
    }
    if (!fIsHierarchical) {
        const bool added = BListView::AddItem(row, index);
        RowsChanged();
        return added;
    }
    if (!fOutline.Insert(row, index)) {
        return false;
    }
    const CLVListItem* superitem = Superitem(row);
    if (superitem == nullptr || (superitem->IsExpanded() && VisibleIndexOf(superitem) >= 0)) {
        BList shown;
        shown.AddItem(row);
        if (!ShowRows(shown, VisibleIndexBefore(index) + 1)) {
            fOutline.Remove(index, 1);
            return false;
        }
    }
    RowsChanged();
    return true;
}

bool ColumnListView::AddUnder(CLVListItem* row, CLVListItem* superitem)
{
    ListLock lock(*this);
    const int32 index = fIsHierarchical ? FullListIndexOf(superitem) : -1;
    if (index < 0) {
        return false;
    }
    row->SetOutlineLevel(superitem->OutlineLevel() + 1);
    return AddItem(row, index + FullListNumberOfSubitems(superitem) + 1);
}

bool ColumnListView::AddList(BList* rows)
{
    return AddList(rows, fIsHierarchical ? FullListCountItems() : CountItems());
}

bool ColumnListView::AddList(BList* rows, int32 index)
{
    ListLock lock(*this);
    if (!fIsHierarchical) {
        const bool added = BListView::AddList(rows, index);
        RowsChanged();
        return added;
    }
    for (int32 i = 0; i < rows->CountItems(); i++) {
        if (!AddItem(static_cast<CLVListItem*>(rows->ItemAt(i)), index + i)) {
            return false;
        }
    }
    return true;
}

bool ColumnListView::RemoveItem(CLVListItem* row)
{
    ListLock lock(*this);
    if (!fIsHierarchical) {
        const int32 index = IndexOf(row);
        return index >= 0 && RemoveItem(index) != nullptr;
    }
    const int32 index = FullListIndexOf(row);
    return index >= 0 && RemoveFullItems(index, 1 + FullListNumberOfSubitems(row));
}

BListItem* ColumnListView::RemoveItem(int32 index)
{
    ListLock lock(*this);
    if (!fIsHierarchical) {
        BListItem* row = BListView::RemoveItem(index);
        RowsChanged();
        return row;
    }
    CLVListItem* row = FullListItemAt(index);
    return row != nullptr && RemoveItem(row) ? row : nullptr;
}

bool ColumnListView::RemoveItems(int32 index, int32 count)
{
    ListLock lock(*this);
    if (!fIsHierarchical) {
        const bool removed = BListView::RemoveItems(index, count);
        RowsChanged();
        return removed;
    }
    if (index < 0 || count < 0 || index + count > FullListCountItems()) {
        return false;
    }
    uint32 shallowest = UINT32_MAX;
    for (int32 i = index; i < index + count; i++) {
        shallowest = std::min(shallowest, FullListItemAt(i)->OutlineLevel());
    }
    // No row may stay behind without the row above it.
    while (index + count < FullListCountItems() &&
           FullListItemAt(index + count)->OutlineLevel() > shallowest) {
        count++;
    }
    return RemoveFullItems(index, count);
}

bool ColumnListView::RemoveFullItems(int32 index, int32 count)
{
    int32 firstVisible = -1;
    int32 visibleCount = 0;
    for (int32 i = index; i < index + count; i++) {
        const CLVListItem* row = fOutline.At(i);
        if (row->fPlace.isShown) {
            firstVisible = firstVisible < 0 ? VisibleIndexOf(row) : firstVisible;
            visibleCount++;
        }
    }
    HideRows(firstVisible, visibleCount);
    fOutline.Remove(index, count);
    RowsChanged();
    return true;
}

void ColumnListView::MakeEmpty()
{
    ListLock lock(*this);
    fOutline.Clear();
    BListView::MakeEmpty();
    RowsChanged();
}

void ColumnListView::SetItems(const BList* rows)
{
    ListLock lock(*this);
    if (fIsHierarchical) {
        BList added(*rows);
        MakeEmpty();
        AddList(&added);
        return;
    }
    BListView::SetItems(rows);
    RowsChanged();
}

// The full list; a flat list has only its visible rows.

CLVListItem* ColumnListView::FullListItemAt(int32 index) const
{
    return fIsHierarchical ? fOutline.At(index) : static_cast<CLVListItem*>(ItemAt(index));
}

int32 ColumnListView::FullListIndexOf(const CLVListItem* row) const
{
    return fIsHierarchical ? fOutline.IndexOf(row) : IndexOf(const_cast<CLVListItem*>(row));
}

int32 ColumnListView::FullListIndexOf(BPoint where)
{
    const auto* row = static_cast<CLVListItem*>(ItemAt(IndexOf(where)));
    return row != nullptr ? FullListIndexOf(row) : -1;
}

CLVListItem* ColumnListView::FullListFirstItem() const
{
    return FullListItemAt(0);
}

CLVListItem* ColumnListView::FullListLastItem() const
{
    return FullListItemAt(FullListCountItems() - 1);
}

bool ColumnListView::FullListHasItem(const CLVListItem* row) const
{
    return FullListIndexOf(row) >= 0;
}

int32 ColumnListView::FullListCountItems() const
{
    return fIsHierarchical ? fOutline.Count() : CountItems();
}

bool ColumnListView::FullListIsEmpty() const
{
    return FullListCountItems() == 0;
}

int32 ColumnListView::FullListCurrentSelection(int32 index) const
{
    const auto* row = static_cast<CLVListItem*>(ItemAt(CurrentSelection(index)));
    return row != nullptr ? FullListIndexOf(row) : -1;
}

void ColumnListView::FullListDoForEach(bool (*function)(CLVListItem*))
{
    for (int32 i = 0; i < FullListCountItems(); i++) {
        if (function(FullListItemAt(i))) {
            return;
        }
    }
}

void ColumnListView::FullListDoForEach(bool (*function)(CLVListItem*, void*), void* data)
{
    for (int32 i = 0; i < FullListCountItems(); i++) {
        if (function(FullListItemAt(i), data)) {
            return;
        }
    }
}

} // namespace norvane
