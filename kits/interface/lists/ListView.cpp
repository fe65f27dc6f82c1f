#include <ListView.h>

#include "ListPress.h"
#include "ListSelection.h"
#include "interface/text/RowHeights.h"
#include "interface/views/Look.h"

#include <Message.h>
#include <OS.h>
#include <ScrollView.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <span>

BListView::BListView(BRect frame, const char* name, list_view_type type, uint32 resizingMode,
                     uint32 flags)
    : BView(frame, name, resizingMode, flags), fHeights(std::make_unique<kits::RowHeights>()),
      fSelection(std::make_unique<kits::ListSelection>(fRows)), fType(type)
{
    fSelection->SetMultiple(type == B_MULTIPLE_SELECTION_LIST);
    SetViewColor(kits::look::kShine);
    SetLowColor(kits::look::kShine);
}

BListView::~BListView()
{
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        // Not touched: whoever made the rows may have deleted them already.
        fRows.ReplaceItem(row, nullptr);
    }
}

// BView

void BListView::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (!Messenger().IsValid()) {
        SetTarget(Window());
    }
    UpdateAllRows();
    FixScrollBar();
}

void BListView::DetachedFromWindow()
{
    fPress.reset();
    BView::DetachedFromWindow();
}

void BListView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    FixScrollBar();
}

void BListView::SetFont(const BFont* font, uint32 mask)
{
    BView::SetFont(font, mask);
    if (Window() != nullptr) {
        UpdateAllRows();
        FixScrollBar();
        Invalidate();
    }
}

void BListView::GetPreferredSize(float* width, float* height)
{
    *width = Bounds().Width();
    *height = static_cast<float>(std::max(0.0, Heights().Total() - 1));
}

void BListView::TargetedByScrollView(BScrollView* scroller)
{
    fScrollView = scroller;
}

// Rows

bool BListView::AddItem(BListItem* item)
{
    return BListView::AddItem(item, fRows.CountItems());
}

bool BListView::AddItem(BListItem* item, int32 index)
{
    if (item == nullptr || index < 0 || index > fRows.CountItems() || !fRows.AddItem(item, index)) {
        return false;
    }
    Insert(index, &item, 1);
    return true;
}

bool BListView::AddList(BList* items)
{
    return BListView::AddList(items, fRows.CountItems());
}

bool BListView::AddList(BList* items, int32 index)
{
    if (items == nullptr || index < 0 || index > fRows.CountItems() ||
        !fRows.AddList(items, index)) {
        return false;
    }
    const int32 count = items->CountItems();
    Insert(index, static_cast<BListItem* const*>(items->Items()), count);
    return true;
}

bool BListView::RemoveItem(BListItem* item)
{
    return BListView::RemoveItem(IndexOf(item)) != nullptr;
}

BListItem* BListView::RemoveItem(int32 index)
{
    BListItem* item = ItemAt(index);
    if (item == nullptr) {
        return nullptr;
    }
    BListView::RemoveItems(index, 1);
    return item;
}

bool BListView::RemoveItems(int32 index, int32 count)
{
    if (index < 0 || index >= fRows.CountItems() || count <= 0) {
        return false;
    }
    count = std::min(count, fRows.CountItems() - index);
    bool wasSelected = false;
    for (int32 row = index; row < index + count; row++) {
        BListItem* item = ItemAt(row);
        wasSelected = wasSelected || item->IsSelected();
        item->Deselect();
        item->fOwner = nullptr;
    }
    Heights();
    InvalidateFrom(index);
    fRows.RemoveItems(index, count);
    fHeights->Remove(index, count);
    fSelection->Removed(index, count);
    const float top = Bounds().top;
    FixScrollBar();
    if (Bounds().top != top) {
        Invalidate();
    }
    if (wasSelected) {
        SelectionDidChange(-1, -1);
    }
    return true;
}

void BListView::SetItems(const BList* items)
{
    if (items == nullptr) {
        return;
    }
    const bool areRearranged =
        UpdateNewRows(*items) == 0 && items->CountItems() == fRows.CountItems();
    const bool hasLostSelection = !areRearranged && ExchangeOwners(*items);
    // What stands before the first row that is another one stays as it is on the screen.
    int32 same = 0;
    while (same < fRows.CountItems() && fRows.ItemAt(same) == items->ItemAt(same)) {
        same++;
    }
    const bool areEquallyHigh = Heights().AreEqual(); // the old rows
    InvalidateFrom(same);
    fRows = *items;
    fSelection->Rearranged();
    fHeightsAreStale = !areRearranged || !areEquallyHigh;
    const float top = Bounds().top;
    FixScrollBar();
    InvalidateFrom(same);
    if (Bounds().top != top) {
        Invalidate();
    }
    if (hasLostSelection) {
        SelectionDidChange(-1, -1);
    }
}

/// How many rows are not the list's yet.
int32 BListView::UpdateNewRows(const BList& items)
{
    BFont font;
    GetFont(&font);
    int32 added = 0;
    const std::span all(static_cast<BListItem* const*>(items.Items()),
                        static_cast<size_t>(items.CountItems()));
    for (BListItem* item : all) {
        if (item->fOwner != this) {
            added++;
            if (Window() != nullptr) {
                item->Update(this, &font);
            }
        }
    }
    return added;
}

/// Whether a row that goes was selected.
bool BListView::ExchangeOwners(const BList& items)
{
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        ItemAt(row)->fOwner = nullptr;
    }
    for (int32 row = 0; row < items.CountItems(); row++) {
        static_cast<BListItem*>(items.ItemAt(row))->fOwner = this;
    }
    bool hasLostSelection = false;
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        BListItem* item = ItemAt(row);
        if (item->fOwner == nullptr && item->IsSelected()) {
            item->Deselect();
            hasLostSelection = true;
        }
    }
    return hasLostSelection;
}

void BListView::MakeEmpty()
{
    if (IsEmpty()) {
        return;
    }
    const bool wasSelected = CurrentSelection() >= 0;
    fSelection->DeselectAll();
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        ItemAt(row)->fOwner = nullptr;
    }
    const int32 count = fRows.CountItems();
    fRows.MakeEmpty();
    fHeights->Clear();
    fHeightsAreStale = false;
    fSelection->Removed(0, count);
    FixScrollBar();
    Invalidate();
    if (wasSelected) {
        SelectionDidChange(-1, -1);
    }
}

BListItem* BListView::ItemAt(int32 index) const
{
    return static_cast<BListItem*>(fRows.ItemAt(index));
}

int32 BListView::IndexOf(BPoint where) const
{
    return Heights().RowAt(where.y);
}

int32 BListView::IndexOf(BListItem* item) const
{
    return fRows.IndexOf(item);
}

BListItem* BListView::FirstItem() const
{
    return ItemAt(0);
}

BListItem* BListView::LastItem() const
{
    return ItemAt(fRows.CountItems() - 1);
}

bool BListView::HasItem(BListItem* item) const
{
    return IndexOf(item) >= 0;
}

int32 BListView::CountItems() const
{
    return fRows.CountItems();
}

bool BListView::IsEmpty() const
{
    return fRows.IsEmpty();
}

void BListView::DoForEach(bool (*function)(BListItem* item))
{
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        if (function(ItemAt(row))) {
            return;
        }
    }
}

void BListView::DoForEach(bool (*function)(BListItem* item, void* data), void* data)
{
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        if (function(ItemAt(row), data)) {
            return;
        }
    }
}

const BListItem** BListView::Items() const
{
    return static_cast<const BListItem**>(fRows.Items());
}

void BListView::SortItems(int (*compare)(const void*, const void*))
{
    fRows.SortItems(compare);
    fSelection->Rearranged();
    fHeightsAreStale = true;
    Invalidate();
}

bool BListView::SwapItems(int32 a, int32 b)
{
    if (!fRows.SwapItems(a, b)) {
        return false;
    }
    fSelection->Rearranged();
    fHeightsAreStale = true;
    InvalidateFrom(std::min(a, b));
    return true;
}

bool BListView::MoveItem(int32 from, int32 to)
{
    const double extent = Heights().Extent(from);
    if (!fRows.MoveItem(from, to)) {
        return false;
    }
    fHeights->Remove(from, 1);
    fHeights->Insert(to, 1, extent);
    fSelection->Moved(from, to);
    InvalidateRows(std::min(from, to), std::max(from, to));
    return true;
}

bool BListView::ReplaceItem(int32 index, BListItem* item)
{
    BListItem* old = ItemAt(index);
    if (old == nullptr || item == nullptr) {
        return false;
    }
    old->fOwner = nullptr;
    fRows.ReplaceItem(index, item);
    fSelection->Rearranged();
    if (Window() != nullptr) {
        BFont font;
        GetFont(&font);
        item->Update(this, &font);
    }
    item->fOwner = this;
    if (Heights().Extent(index) == item->Height() + 1) {
        InvalidateItem(index);
    } else {
        fHeights->Set(index, item->Height() + 1);
        FixScrollBar();
        InvalidateFrom(index);
    }
    return true;
}

BRect BListView::ItemFrame(int32 index) const
{
    if (index < 0 || index >= fRows.CountItems()) {
        return BRect();
    }
    const double top = Heights().Top(index);
    return BRect(0, static_cast<float>(top), std::max(0.0f, Bounds().right),
                 static_cast<float>(top + fHeights->Extent(index) - 1));
}

// Puts heights and marks of rows that were just added in step with the rows.
void BListView::Insert(int32 index, BListItem* const* items, int32 count)
{
    if (Window() != nullptr) {
        BFont font;
        GetFont(&font);
        for (int32 i = 0; i < count; i++) {
            items[i]->Update(this, &font);
        }
    }
    for (int32 i = 0; i < count; i++) {
        items[i]->fOwner = this;
    }
    if (!fHeightsAreStale) {
        NoteHeights(index, items, count);
    }
    fSelection->Inserted(index, count);
    FixScrollBar();
    InvalidateFrom(index);
}

// Rows of one height are noted together: a long list of them costs one step.
void BListView::NoteHeights(int32 index, BListItem* const* items, int32 count) const
{
    int32 begin = 0;
    for (int32 i = 0; i < count; i++) {
        if (i + 1 == count || items[i + 1]->Height() != items[i]->Height()) {
            fHeights->Insert(index + begin, i + 1 - begin, items[i]->Height() + 1.0);
            begin = i + 1;
        }
    }
}

kits::RowHeights& BListView::Heights() const
{
    if (fHeightsAreStale) {
        fHeightsAreStale = false;
        fHeights->Clear();
        NoteHeights(0, static_cast<BListItem* const*>(fRows.Items()), fRows.CountItems());
    }
    return *fHeights;
}

void BListView::UpdateAllRows()
{
    BFont font;
    GetFont(&font);
    for (int32 row = 0; row < fRows.CountItems(); row++) {
        ItemAt(row)->Update(this, &font);
    }
}

void BListView::FixScrollBar()
{
    BScrollBar* bar = ScrollBar(B_VERTICAL);
    if (bar == nullptr) {
        return;
    }
    const double total = Heights().Total();
    const double visible = Bounds().Height() + 1.0;
    bar->SetRange(0, static_cast<float>(std::max(0.0, total - visible)));
    bar->SetProportion(total > visible ? static_cast<float>(visible / total) : 1);
    const auto line = static_cast<float>(IsEmpty() ? 1 : Heights().Extent(0));
    bar->SetSteps(line, std::max(line, static_cast<float>(visible) - line));
}

// Only the rows that are seen, whatever the list's length.
void BListView::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kList;
    description->rowCount = CountItems();
    const BRect seen = Bounds();
    const int32 first = description->wantsParts ? IndexOf(seen.LeftTop()) : -1;
    for (int32 row = first; row >= 0 && row < CountItems(); ++row) {
        const BRect frame = ItemFrame(row);
        if (frame.top > seen.bottom) {
            break;
        }
        const BListItem* item = ItemAt(row);
        BViewDescription::Part line;
        line.thing = item;
        line.frame = frame & seen;
        line.name = item->SpokenText();
        line.states = item->IsSelected() ? uint32{BViewDescription::kSelected} : 0;
        line.states |= item->IsEnabled() ? 0 : uint32{BViewDescription::kDisabled};
        if (IsFocus() && row == CurrentSelection()) {
            line.states |= BViewDescription::kFocused;
        }
        description->parts.push_back(std::move(line));
    }
}
