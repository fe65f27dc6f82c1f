#include "clv/ColumnListView.h"

#include "clv/ListLock.h"
#include "clv/NearSearch.h"

#include <InputConstants.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

// What is below what, and which rows of an outline are shown.

namespace norvane {

CLVListItem* ColumnListView::Superitem(const CLVListItem* row) const
{
    return fOutline.SuperitemOf(row);
}

int32 ColumnListView::FullListNumberOfSubitems(const CLVListItem* row) const
{
    return fOutline.CountBelow(row);
}

// The rows shown

int32 ColumnListView::VisibleIndexOf(const CLVListItem* row) const
{
    if (!row->fPlace.isShown) {
        return -1;
    }
    const int32 index = FindNear(row, row->fPlace.shownIndex, CountItems(),
                                 [this](int32 at) { return ItemAt(at); });
    row->fPlace.shownIndex = index;
    return index;
}

int32 ColumnListView::VisibleIndexBefore(int32 fullIndex) const
{
    int32 index = fullIndex - 1;
    while (index >= 0 && !fOutline.At(index)->fPlace.isShown) {
        const CLVListItem* superitem = Superitem(fOutline.At(index));
        // With a row all its siblings are hidden, when it is their superitem that hides them.
        const bool isHidden = superitem != nullptr && !superitem->IsExpanded();
        index = isHidden ? fOutline.IndexOf(superitem) : index - 1;
    }
    return index >= 0 ? VisibleIndexOf(fOutline.At(index)) : -1;
}

bool ColumnListView::ShowRows(BList& rows, int32 visibleIndex)
{
    if (!BListView::AddList(&rows, visibleIndex)) {
        return false;
    }
    for (int32 i = 0; i < rows.CountItems(); i++) {
        auto* row = static_cast<CLVListItem*>(rows.ItemAt(i));
        row->fPlace.isShown = true;
        row->fPlace.shownIndex = visibleIndex + i;
    }
    return true;
}

void ColumnListView::HideRows(int32 visibleIndex, int32 count)
{
    for (int32 i = visibleIndex; i < visibleIndex + count; i++) {
        static_cast<CLVListItem*>(ItemAt(i))->fPlace.isShown = false;
    }
    BListView::RemoveItems(visibleIndex, count);
}

// Expanding. A flat list has nothing below its rows.

void ColumnListView::Expand(CLVListItem* row)
{
    ListLock lock(*this);
    if (!fIsHierarchical) {
        return;
    }
    row->SetSuperItem(true);
    if (row->IsExpanded()) {
        return;
    }
    row->SetExpanded(true);
    const int32 visible = VisibleIndexOf(row);
    if (visible < 0) {
        return;
    }
    InvalidateItem(visible);
    BList shown;
    const int32 first = FullListIndexOf(row) + 1;
    const int32 end = first + FullListNumberOfSubitems(row);
    for (int32 i = first; i < end; i++) {
        CLVListItem* below = fOutline.At(i);
        shown.AddItem(below);
        if (!below->IsExpanded()) {
            i += FullListNumberOfSubitems(below);
        }
    }
    ShowRows(shown, visible + 1);
    RowsChanged();
}

void ColumnListView::Collapse(CLVListItem* row)
{
    ListLock lock(*this);
    if (!fIsHierarchical || !row->IsExpanded()) {
        return;
    }
    row->SetExpanded(false);
    const int32 visible = VisibleIndexOf(row);
    if (visible < 0) {
        return;
    }
    InvalidateItem(visible);
    int32 count = 0;
    while (visible + 1 + count < CountItems() &&
           static_cast<CLVListItem*>(ItemAt(visible + 1 + count))->OutlineLevel() >
               row->OutlineLevel()) {
        count++;
    }
    HideRows(visible + 1, count);
    RowsChanged();
}

bool ColumnListView::IsExpanded(int32 fullIndex) const
{
    const CLVListItem* row = FullListItemAt(fullIndex);
    return row != nullptr && row->IsExpanded();
}

// What a person does

void ColumnListView::ToggleExpansion(CLVListItem* row)
{
    if (!row->IsExpanded()) {
        Expand(row);
        return;
    }
    const bool hadSelection = CurrentSelection() >= 0;
    Collapse(row);
    if (hadSelection && CurrentSelection() < 0) {
        SelectRow(row); // in place of one that it hides
    }
}

void ColumnListView::SelectRow(const CLVListItem* row)
{
    Select(VisibleIndexOf(row));
    ScrollToSelection();
}

void ColumnListView::MouseDown(BPoint where)
{
    auto* row = static_cast<CLVListItem*>(ItemAt(IndexOf(where)));
    if (fIsHierarchical && row != nullptr && row->IsSuperItem() &&
        row->ExpanderButtonRect().Contains(where)) {
        ToggleExpansion(row);
        return;
    }
    BListView::MouseDown(where);
}

void ColumnListView::KeyDown(const char* bytes, int32 byteCount)
{
    constexpr int32 kOtherMeaning = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
    const BMessage* key = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const int32 held = key != nullptr ? key->GetInt32("modifiers", 0) & kOtherMeaning : 0;
    if (!fIsHierarchical || byteCount != 1 || held != 0 || !WalkOutline(bytes[0])) {
        BListView::KeyDown(bytes, byteCount);
    }
}

// Right goes further in, left further out, a step at a time. False when the key is another one.
bool ColumnListView::WalkOutline(char key)
{
    auto* row = static_cast<CLVListItem*>(ItemAt(CurrentSelection()));
    if (row == nullptr || (key != B_LEFT_ARROW && key != B_RIGHT_ARROW)) {
        return false;
    }
    const bool hasArrow = row->IsSuperItem();
    if (hasArrow && row->IsExpanded() != (key == B_RIGHT_ARROW)) {
        ToggleExpansion(row);
        return true;
    }
    if (key == B_RIGHT_ARROW) {
        if (hasArrow && FullListNumberOfSubitems(row) > 0) {
            SelectRow(fOutline.At(fOutline.IndexOf(row) + 1));
        }
    } else if (const CLVListItem* superitem = Superitem(row)) {
        SelectRow(superitem);
    }
    return true;
}

} // namespace norvane
