// The part of BListView that a person sees and works: drawing, the selection, keys and the mouse.

#include <ListView.h>

#include "ListPress.h"
#include "ListSelection.h"
#include "interface/text/RowHeights.h"
#include "interface/views/Look.h"

#include <Message.h>
#include <OS.h>
#include <ScrollView.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kDragDistance = 4;
// Further than a hand trembles, and further than a derived list waits before it starts its own
// drag.
constexpr float kSweepDistance = 12;
constexpr bigtime_t kScrollInterval = 50'000;

int32 FindField(const BMessage* message, const char* name)
{
    int32 value = 0;
    if (message != nullptr) {
        message->FindInt32(name, &value);
    }
    return value;
}

} // namespace

// Drawing

void BListView::Draw(BRect updateRect)
{
    DrawRows(updateRect);
    if (fScrollView == nullptr && IsFocus()) {
        DrawFocus();
    }
}

void BListView::DrawRows(BRect updateRect)
{
    const kits::RowHeights& heights = Heights();
    const bool needsGround = ViewColor() == B_TRANSPARENT_COLOR;
    int32 row = heights.RowAt(std::max(0.0f, updateRect.top));
    if (row < 0) {
        return;
    }
    for (; row < fRows.CountItems(); row++) {
        const BRect frame = ItemFrame(row);
        if (frame.top > updateRect.bottom) {
            return;
        }
        ItemAt(row)->DrawItem(this, frame, needsGround);
    }
}

// Inside a scroll view the border shows the focus.
void BListView::DrawFocus()
{
    SetHighColor(kits::look::kFocus);
    StrokeRect(Bounds());
}

void BListView::InvalidateItem(int32 index)
{
    InvalidateRows(index, index);
}

void BListView::InvalidateFrom(int32 index)
{
    if (Window() == nullptr) {
        return;
    }
    const BRect bounds = Bounds();
    const auto top = static_cast<float>(Heights().Top(index));
    if (top <= bounds.bottom) {
        Invalidate(BRect(bounds.left, std::max(top, bounds.top), bounds.right, bounds.bottom));
    }
}

void BListView::InvalidateRows(int32 first, int32 last)
{
    if (Window() == nullptr || first < 0 || last < first || first >= CountItems()) {
        return;
    }
    const BRect bounds = Bounds();
    const auto top = static_cast<float>(Heights().Top(first));
    const auto bottom = static_cast<float>(Heights().Top(last + 1) - 1);
    const BRect rows = BRect(bounds.left, top, bounds.right, bottom) & bounds;
    if (rows.IsValid()) {
        Invalidate(rows);
    }
}

// Selection

void BListView::SetListType(list_view_type type)
{
    if (fType == type) {
        return;
    }
    fType = type;
    fSelection->SetMultiple(type == B_MULTIPLE_SELECTION_LIST);
    const int32 kept = CurrentSelection();
    if (type == B_SINGLE_SELECTION_LIST && CurrentSelection(1) >= 0) {
        DeselectExcept(kept, kept);
    }
}

void BListView::Select(int32 index, bool extend)
{
    Select(index, index, extend);
}

void BListView::Select(int32 start, int32 finish, bool extend)
{
    if (const auto change = fSelection->Select(start, finish, extend)) {
        SelectionDidChange(change.first, change.last);
    }
}

bool BListView::IsItemSelected(int32 index) const
{
    return fSelection->IsSelected(index);
}

int32 BListView::CurrentSelection(int32 n) const
{
    return fSelection->Nth(n);
}

void BListView::DeselectAll()
{
    DeselectExcept(-1, -1);
}

void BListView::DeselectExcept(int32 start, int32 finish)
{
    if (const auto change = fSelection->DeselectExcept(start, finish)) {
        SelectionDidChange(change.first, change.last);
    }
}

void BListView::Deselect(int32 index)
{
    if (const auto change = fSelection->Deselect(index)) {
        SelectionDidChange(change.first, change.last);
    }
}

void BListView::SelectionChanged() {}

void BListView::SelectionDidChange(int32 first, int32 last)
{
    InvalidateRows(first, last);
    SelectionChanged();
    if (fSelectionMessage) {
        Invoke(fSelectionMessage.get());
    }
}

void BListView::ScrollToSelection()
{
    const int32 row = CurrentSelection();
    if (row >= 0) {
        ScrollRowIntoView(row);
    }
}

void BListView::ScrollRowIntoView(int32 index)
{
    const BRect bounds = Bounds();
    const double top = Heights().Top(index);
    const double bottom = Heights().Top(index + 1) - 1;
    if (top < bounds.top || bottom - top > bounds.Height()) {
        ScrollTo(BPoint(bounds.left, static_cast<float>(top)));
    } else if (bottom > bounds.bottom) {
        ScrollTo(BPoint(bounds.left, static_cast<float>(bottom - bounds.Height())));
    }
}

// Messages

void BListView::SetSelectionMessage(BMessage* message)
{
    fSelectionMessage.reset(message);
}

void BListView::SetInvocationMessage(BMessage* message)
{
    SetMessage(message);
}

BMessage* BListView::InvocationMessage() const
{
    return Message();
}

uint32 BListView::InvocationCommand() const
{
    return Command();
}

uint32 BListView::SelectionCommand() const
{
    return fSelectionMessage ? fSelectionMessage->what : 0;
}

status_t BListView::Invoke(BMessage* message)
{
    const BMessage* source = message != nullptr ? message : Message();
    if (source == nullptr) {
        return B_BAD_VALUE;
    }
    BMessage copy(*source);
    FillSelectionInto(&copy);
    return BInvoker::Invoke(&copy);
}

void BListView::FillSelectionInto(BMessage* message)
{
    message->AddInt64("when", system_time());
    message->AddPointer("source", this);
    const int32 first = CurrentSelection();
    for (int32 row = first; row >= 0 && row < CountItems(); row++) {
        if (IsItemSelected(row)) {
            message->AddInt32("index", row);
        }
    }
}

void BListView::MessageReceived(BMessage* message)
{
    if (message->what != kits::kTick) {
        BView::MessageReceived(message);
        return;
    }
    if (fPress && fPress->scrolling && fPress->scrolling->Id() == FindField(message, "ticker")) {
        AutoScroll();
    }
}

// Keys

void BListView::MakeFocus(bool focused)
{
    const bool was = IsFocus();
    BView::MakeFocus(focused);
    if (IsFocus() == was) {
        return;
    }
    if (fScrollView != nullptr) {
        fScrollView->SetBorderHighlighted(IsFocus());
    } else {
        Invalidate();
    }
}

void BListView::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (IsFocus() && fScrollView == nullptr) {
        Invalidate();
    }
}

void BListView::KeyDown(const char* bytes, int32 byteCount)
{
    if (byteCount != 1) {
        BView::KeyDown(bytes, byteCount);
        return;
    }
    const BMessage* key = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const auto held = static_cast<uint32>(FindField(key, "modifiers"));
    // Keys start from the last row touched, or from the selection when a program made it.
    const int32 cursor = fSelection->Cursor() >= 0 ? fSelection->Cursor() : CurrentSelection();
    switch (bytes[0]) {
    case B_UP_ARROW:
        MoveSelection(cursor < 0 ? 0 : cursor - 1, held);
        break;
    case B_DOWN_ARROW:
        MoveSelection(cursor + 1, held);
        break;
    case B_PAGE_UP:
        MoveSelection(PageTarget(cursor, -1), held);
        break;
    case B_PAGE_DOWN:
        MoveSelection(PageTarget(cursor, 1), held);
        break;
    case B_HOME:
        MoveSelection(0, held);
        break;
    case B_END:
        MoveSelection(CountItems() - 1, held);
        break;
    case B_ENTER:
    case B_SPACE:
        if (CurrentSelection() >= 0 && kits::look::IsFreshKey(key)) {
            Invoke();
        }
        break;
    default:
        BView::KeyDown(bytes, byteCount);
    }
}

void BListView::MoveSelection(int32 index, uint32 held)
{
    if (IsEmpty()) {
        return;
    }
    index = std::clamp(index, 0, CountItems() - 1);
    // A disabled row is stepped over, in the direction of the move.
    const int32 step = index < fSelection->Cursor() ? -1 : 1;
    while (ItemAt(index) != nullptr && !ItemAt(index)->IsEnabled()) {
        index += step;
    }
    if (ItemAt(index) == nullptr) {
        return;
    }
    const auto change = fSelection->MoveTo(index, held);
    ScrollRowIntoView(index);
    if (change) {
        SelectionDidChange(change.first, change.last);
    }
}

int32 BListView::PageTarget(int32 from, int32 direction) const
{
    const double page = Bounds().Height() + 1.0;
    const double place = Heights().Top(std::max(from, 0)) + direction * page;
    const int32 row = Heights().RowAt(place);
    if (row >= 0) {
        // One row stays in sight of where it was; but never none at all further.
        return direction > 0 ? std::max(row - 1, from + 1) : std::min(row + 1, from - 1);
    }
    return direction < 0 ? 0 : CountItems() - 1;
}

// Mouse

void BListView::MouseDown(BPoint where)
{
    const BMessage* press = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const auto held = static_cast<uint32>(FindField(press, "modifiers"));
    const auto buttons = static_cast<uint32>(FindField(press, "buttons"));
    const int32 clicks = FindField(press, "clicks");
    const int32 row = IndexOf(where);
    if (!IsFocus()) {
        MakeFocus();
    }
    const bool wasSelected = IsItemSelected(row);
    if (clicks % 2 == 0 && clicks > 0 && wasSelected && (buttons & B_PRIMARY_MOUSE_BUTTON) != 0) {
        fPress.reset();
        Invoke();
        return;
    }
    fPress.reset();
    if (row >= 0 && (buttons & B_PRIMARY_MOUSE_BUTTON) != 0) {
        fPress = std::make_unique<kits::ListPress>(where, row, wasSelected);
        fPress->pointer = where;
        SetMouseEventMask(B_POINTER_EVENTS, 0);
    }
    SelectByPointer(row, held);
}

void BListView::SelectByPointer(int32 index, uint32 held)
{
    // A row that is half in sight stays where it is, or the second press of a double click would
    // miss it.
    if (const auto change = fSelection->Press(index, held)) {
        SelectionDidChange(change.first, change.last);
    }
}

void BListView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    BView::MouseMoved(where, transit, dragged);
    if (!fPress) {
        return;
    }
    const BMessage* move = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    if (dragged != nullptr || FindField(move, "buttons") == 0) {
        // A drag took over, or a derived list kept the release for itself.
        fPress.reset();
        return;
    }
    fPress->pointer = where;
    if (!fPress->wasDragOffered && fPress->HasLeft(where, kDragDistance)) {
        fPress->wasDragOffered = true;
        if (InitiateDrag(fPress->Where(), fPress->Row(), fPress->WasSelected())) {
            fPress.reset();
            return;
        }
    }
    if (fPress->isSweeping || fPress->HasLeft(where, kSweepDistance)) {
        fPress->isSweeping = true;
        SweepTo(where);
    }
}

// The selection follows the pointer; outside the view the list scrolls on while the pointer stays
// there.
void BListView::SweepTo(BPoint where)
{
    const BRect bounds = Bounds();
    if (where.y >= bounds.top && where.y <= bounds.bottom) {
        fPress->scrolling.reset();
    } else if (!fPress->scrolling) {
        fPress->scrolling =
            std::make_unique<kits::Ticker>(BMessenger(this), kScrollInterval, kScrollInterval);
    }
    const float y = std::clamp(where.y, bounds.top, bounds.bottom);
    const int32 row = IndexOf(BPoint(where.x, std::max(0.0f, y)));
    if (const auto change = fSelection->Sweep(row >= 0 ? row : CountItems() - 1)) {
        SelectionDidChange(change.first, change.last);
    }
}

void BListView::AutoScroll()
{
    const BRect bounds = Bounds();
    const float y = fPress->pointer.y;
    const auto row = static_cast<float>(Heights().Extent(0));
    const double end = std::max(0.0, Heights().Total() - 1 - bounds.Height());
    const float target = y < bounds.top ? bounds.top - row : bounds.top + row;
    const float top = std::clamp(target, 0.0f, static_cast<float>(end));
    if (top != bounds.top) {
        // The pointer stands still on the screen, so it moves over the rows.
        fPress->pointer.y += top - bounds.top;
        ScrollTo(BPoint(bounds.left, top));
    }
    fPress->scrolling->NextTick();
    SweepTo(fPress->pointer);
}

void BListView::MouseUp(BPoint where)
{
    BView::MouseUp(where);
    if (!fPress) {
        return;
    }
    const int32 row = fPress->Row();
    fPress.reset();
    if (const auto change = fSelection->Release(row)) {
        SelectionDidChange(change.first, change.last);
    }
}

bool BListView::InitiateDrag(BPoint, int32, bool)
{
    return false;
}
