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
    if (!fFullList.AddItem(row, index)) {
        return false;
    }
    const CLVListItem* superitem = Superitem(row);
    if (superitem == nullptr || (superitem->IsExpanded() && IsVisibleRow(superitem))) {
        if (!BListView::AddItem(row, VisibleIndexBefore(index) + 1)) {
            fFullList.RemoveItem(index);
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
        const int32 visible = IndexOf(FullListItemAt(i));
        if (visible >= 0) {
            firstVisible = firstVisible < 0 ? visible : firstVisible;
            visibleCount++;
        }
    }
    if (visibleCount > 0) {
        BListView::RemoveItems(firstVisible, visibleCount);
    }
    fFullList.RemoveItems(index, count);
    RowsChanged();
    return true;
}

void ColumnListView::MakeEmpty()
{
    ListLock lock(*this);
    fFullList.MakeEmpty();
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

// Outline

bool ColumnListView::IsVisibleRow(const CLVListItem* row) const
{
    return HasItem(const_cast<CLVListItem*>(row));
}

int32 ColumnListView::VisibleIndexBefore(int32 fullIndex) const
{
    for (int32 i = fullIndex - 1; i >= 0; i--) {
        const int32 visible = IndexOf(FullListItemAt(i));
        if (visible >= 0) {
            return visible;
        }
    }
    return -1;
}

CLVListItem* ColumnListView::Superitem(const CLVListItem* row) const
{
    for (int32 i = FullListIndexOf(row) - 1; i >= 0; i--) {
        if (FullListItemAt(i)->OutlineLevel() < row->OutlineLevel()) {
            return FullListItemAt(i);
        }
    }
    return nullptr;
}

int32 ColumnListView::FullListNumberOfSubitems(const CLVListItem* row) const
{
    const int32 index = FullListIndexOf(row);
    if (index < 0) {
        return 0;
    }
    int32 count = 0;
    while (index + 1 + count < FullListCountItems() &&
           FullListItemAt(index + 1 + count)->OutlineLevel() > row->OutlineLevel()) {
        count++;
    }
    return count;
}

void ColumnListView::Expand(CLVListItem* row)
{
    ListLock lock(*this);
    row->SetSuperItem(true);
    if (row->IsExpanded()) {
        return;
    }
    row->SetExpanded(true);
    int32 visible = IndexOf(row);
    if (visible < 0) {
        return;
    }
    Invalidate(row->ExpanderColumnRect());
    const int32 first = FullListIndexOf(row) + 1;
    const int32 end = first + FullListNumberOfSubitems(row);
    for (int32 i = first; i < end; i++) {
        CLVListItem* below = FullListItemAt(i);
        BListView::AddItem(below, ++visible);
        if (below->IsSuperItem() && !below->IsExpanded()) {
            i += FullListNumberOfSubitems(below);
        }
    }
    RowsChanged();
}

void ColumnListView::Collapse(CLVListItem* row)
{
    ListLock lock(*this);
    if (!row->IsExpanded()) {
        return;
    }
    row->SetExpanded(false);
    const int32 visible = IndexOf(row);
    if (visible < 0) {
        return;
    }
    Invalidate(row->ExpanderColumnRect());
    int32 count = 0;
    while (visible + 1 + count < CountItems() &&
           static_cast<CLVListItem*>(ItemAt(visible + 1 + count))->OutlineLevel() >
               row->OutlineLevel()) {
        count++;
    }
    if (count > 0) {
        BListView::RemoveItems(visible + 1, count);
    }
    RowsChanged();
}

bool ColumnListView::IsExpanded(int32 fullIndex) const
{
    const CLVListItem* row = FullListItemAt(fullIndex);
    return row != nullptr && row->IsExpanded();
}

void ColumnListView::MouseDown(BPoint where)
{
    auto* row = static_cast<CLVListItem*>(ItemAt(IndexOf(where)));
    if (fIsHierarchical && row != nullptr && row->IsSuperItem() &&
        row->ExpanderButtonRect().Contains(where)) {
        if (row->IsExpanded()) {
            Collapse(row);
        } else {
            Expand(row);
        }
        return;
    }
    BListView::MouseDown(where);
}

// The full list; a flat list has only its visible rows.

CLVListItem* ColumnListView::FullListItemAt(int32 index) const
{
    return fIsHierarchical ? static_cast<CLVListItem*>(fFullList.ItemAt(index))
                           : static_cast<CLVListItem*>(ItemAt(index));
}

int32 ColumnListView::FullListIndexOf(const CLVListItem* row) const
{
    return fIsHierarchical ? fFullList.IndexOf(row) : IndexOf(const_cast<CLVListItem*>(row));
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
    return fIsHierarchical ? fFullList.CountItems() : CountItems();
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
