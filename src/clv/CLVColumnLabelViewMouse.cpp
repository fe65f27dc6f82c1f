#include "clv/CLVColumnLabelView.h"

#include "clv/CLVColumn.h"
#include "clv/ColumnListView.h"

#include <AppDefs.h>
#include <Cursor.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageFilter.h>
#include <MessageRunner.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

// What a held mouse button does to the strip. The window hands over each move and the release, so
// nothing has to watch the mouse.

namespace norvane {

namespace {

constexpr float kGripReach = 2;    // on both sides of an edge that can be dragged
constexpr float kClickReach = 1;   // how far a click may move
constexpr float kScrollReach = 12; // from an end of the strip where a drag scrolls
constexpr float kScrollStep = 12;
constexpr bigtime_t kScrollInterval = 30'000;
constexpr uint32 kScrollTick = 'HdSc';
constexpr BCursor kEdgeCursor(B_CURSOR_ID_RESIZE_EAST_WEST);

/// Gives Escape to the strip while a button is held on it, wherever the focus is.
class EscapeFilter : public BMessageFilter
{
public:
    explicit EscapeFilter(CLVColumnLabelView& strip)
        : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE, B_KEY_DOWN), fStrip(strip)
    {
    }

    filter_result Filter(BMessage* message, BHandler**) override
    {
        int8 byte = 0;
        const bool isEscape = message->FindInt8("byte", &byte) == B_OK && byte == B_ESCAPE;
        return isEscape && fStrip.CancelGesture() ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
    }

private:
    CLVColumnLabelView& fStrip;
};

} // namespace

CLVColumnLabelView::~CLVColumnLabelView() = default;

void CLVColumnLabelView::AttachedToWindow()
{
    BView::AttachedToWindow();
    fKeyFilter = std::make_unique<EscapeFilter>(*this);
    Window()->AddCommonFilter(fKeyFilter.get());
}

void CLVColumnLabelView::DetachedFromWindow()
{
    EndGesture();
    Window()->RemoveCommonFilter(fKeyFilter.get());
    fKeyFilter.reset();
    BView::DetachedFromWindow();
}

void CLVColumnLabelView::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (!active) {
        EndGesture();
    }
}

void CLVColumnLabelView::MessageReceived(BMessage* message)
{
    if (message->what == kScrollTick) {
        ScrollForDrag();
    } else {
        BView::MessageReceived(message);
    }
}

void CLVColumnLabelView::MouseDown(BPoint where)
{
    // Another button that comes to a held one belongs to that one's gesture.
    if (HeldButtons(B_PRIMARY_MOUSE_BUTTON) != B_PRIMARY_MOUSE_BUTTON) {
        return;
    }
    EndGesture();
    Press(where);
    if (fGesture != Gesture::kNone) {
        SetMouseEventMask(B_POINTER_EVENTS, B_LOCK_WINDOW_FOCUS);
    }
}

void CLVColumnLabelView::Press(BPoint where)
{
    fIsAdding = (HeldModifiers() & B_SHIFT_KEY) != 0;
    fPress = PlaceOnStrip(where);
    fPointer = fPress;
    if (CLVColumn* edge = EdgeAt(where)) {
        fGesture = Gesture::kResize;
        fGestureColumn = edge;
        fPressWidth = edge->Width();
    } else if (CLVColumn* cell = CellAt(where)) {
        fGesture = Gesture::kPress;
        fGestureColumn = cell;
    }
    Invalidate();
}

void CLVColumnLabelView::MouseMoved(BPoint where, uint32 transit, const BMessage*)
{
    if ((HeldButtons(B_PRIMARY_MOUSE_BUTTON) & B_PRIMARY_MOUSE_BUTTON) == 0) {
        EndGesture(); // the release was lost
    }
    fPointer = PlaceOnStrip(where);
    if (fGesture == Gesture::kPress && HasMoved(where)) {
        BeginDrag();
    }
    switch (fGesture) {
    case Gesture::kResize:
        Resize(where);
        break;
    case Gesture::kDrag:
        DragTo(where);
        break;
    default:
        ShapePointer(where, transit);
    }
}

void CLVColumnLabelView::MouseUp(BPoint where)
{
    if (fGesture == Gesture::kNone || (HeldButtons(0) & B_PRIMARY_MOUSE_BUTTON) != 0) {
        return;
    }
    const BMessage* release = Window()->CurrentMessage();
    if (release == nullptr || release->what != B_MOUSE_UP || IsHidden()) {
        EndGesture(); // taken away from the person
        return;
    }
    if (fGesture == Gesture::kDrag) {
        DragTo(where);
        Drop();
    } else if (fGesture == Gesture::kPress) {
        const CLVColumn& column = *fGestureColumn;
        EndGesture();
        Click(column);
    } else {
        EndGesture();
    }
    ShapePointer(where, Bounds().Contains(where) ? B_INSIDE_VIEW : B_EXITED_VIEW);
}

bool CLVColumnLabelView::HasMoved(BPoint where) const
{
    const BPoint distance = PlaceOnStrip(where) - fPress;
    return std::fabs(distance.x) > kClickReach || std::fabs(distance.y) > kClickReach;
}

// What was dragged goes back, unless it was dropped; a width stays as it was seen last.
void CLVColumnLabelView::EndGesture()
{
    if (fGesture == Gesture::kNone) {
        return;
    }
    fGesture = Gesture::kNone;
    fGestureColumn = nullptr;
    fScrolling.reset();
    fGroups = DragGroups();
    fShiftedOrder.clear();
    Invalidate();
}

bool CLVColumnLabelView::CancelGesture()
{
    if (fGesture == Gesture::kNone) {
        return false;
    }
    CLVColumn* resized = fGesture == Gesture::kResize ? fGestureColumn : nullptr;
    EndGesture();
    if (resized != nullptr) {
        resized->SetWidth(fPressWidth);
    }
    return true;
}

void CLVColumnLabelView::ForgetColumn(const CLVColumn& column)
{
    if (&column == fGestureColumn) {
        EndGesture();
    }
}

void CLVColumnLabelView::ColumnsChanged()
{
    if (fGesture == Gesture::kDrag) {
        EndGesture();
    }
}

// Resizing

void CLVColumnLabelView::Resize(BPoint where)
{
    // From what was there at the press: a narrower column may scroll the list, which moves its edge
    // under a pointer that stands still.
    const float moved = PlaceOnStrip(where).x - fPress.x;
    fGestureColumn->SetWidth(std::round(fPressWidth + moved));
}

// Dragging

void CLVColumnLabelView::BeginDrag()
{
    UpdateDragGroups();
    fDragGroup = fGroups.GroupOf(fGestureColumn);
    if (!fGroups.CanMove(fDragGroup)) {
        EndGesture();
        return;
    }
    fGesture = Gesture::kDrag;
    fDragLeft = fGroups.LeftOf(fDragGroup);
    fGrip = fPress.x + Bounds().left - fDragLeft;
    fShiftedOrder = Displayed();
    SetSnapMinMax();
    Invalidate();
}

void CLVColumnLabelView::UpdateDragGroups()
{
    fGroups = DragGroups(Displayed());
}

void CLVColumnLabelView::SetSnapMinMax()
{
    fSnap = fGroups.LimitsOf(fDragGroup);
}

void CLVColumnLabelView::DragTo(BPoint where)
{
    ShiftDragGroup(std::round(where.x - fGrip));
    if (ScrollStep() == 0) {
        fScrolling.reset();
    } else if (fScrolling == nullptr) {
        const BMessage tick(kScrollTick);
        fScrolling = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kScrollInterval);
    }
}

void CLVColumnLabelView::ShiftDragGroup(float left)
{
    left = std::clamp(left, fSnap.min, fSnap.max);
    if (left != fDragLeft) {
        fDragLeft = left;
        fShiftedOrder = fGroups.Shifted(fDragGroup, left);
        Invalidate();
    }
}

bool CLVColumnLabelView::IsDragged(const CLVColumn* column) const
{
    const DragGroups::Columns& dragged = fGroups.ColumnsOf(fDragGroup);
    return std::find(dragged.begin(), dragged.end(), column) != dragged.end();
}

void CLVColumnLabelView::Drop()
{
    const DragGroups::Columns shifted = fShiftedOrder;
    const bool isMoved = shifted != Displayed();
    EndGesture();
    if (!isMoved) {
        return;
    }
    std::vector<int32> order;
    for (const CLVColumn* column : shifted) {
        order.push_back(fList->IndexOfColumn(column));
    }
    fList->SetDisplayOrder(order.data());
}

// How far the list is to scroll now: the pointer was dragged to an end of the strip, and there is
// more behind it.
float CLVColumnLabelView::ScrollStep() const
{
    const BRect view = Bounds();
    if (fPointer.x <= kScrollReach && fPointer.x < fPress.x) {
        return -std::min(kScrollStep, view.left);
    }
    if (fPointer.x >= view.Width() - kScrollReach && fPointer.x > fPress.x) {
        return std::clamp(fList->DataWidth() - view.right, 0.0f, kScrollStep);
    }
    return 0;
}

void CLVColumnLabelView::ScrollForDrag()
{
    if (fGesture != Gesture::kDrag) {
        return;
    }
    const BRect rows = fList->Bounds();
    fList->ScrollTo(BPoint(rows.left + ScrollStep(), rows.top));
    DragTo(fPointer + Bounds().LeftTop());
}

// Clicks

void CLVColumnLabelView::Click(const CLVColumn& column)
{
    // Where columns share a cell, one that cannot be sorted by stands for the first that can.
    const std::vector<Cell> cells = CellsOf(Displayed(), 0);
    const auto clicked = std::find_if(cells.begin(), cells.end(),
                                      [&](const Cell& cell) { return cell.column == &column; });
    const auto isSortable = [](const CLVColumn& one) {
        return (one.Flags() & CLV_SORT_KEYABLE) != 0;
    };
    if (isSortable(column)) {
        SortBy(column);
        return;
    }
    for (const Cell& cell : cells) {
        if (cell.run == clicked->run && isSortable(*cell.column)) {
            SortBy(*cell.column);
            return;
        }
    }
}

void CLVColumnLabelView::SortBy(const CLVColumn& column)
{
    const int32 index = fList->IndexOfColumn(&column);
    const int32 place = fList->SortKeyPlace(&column);
    if (fIsAdding ? place >= 0 : place == 0) {
        fList->ReverseSortMode(index);
    } else if (fIsAdding) {
        fList->AddSortKey(index);
    } else {
        fList->SetSortKey(index);
    }
}

// The pointer

void CLVColumnLabelView::ShapePointer(BPoint where, uint32 transit)
{
    const bool isInside = transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW;
    const bool isOnEdge = isInside && fGesture == Gesture::kNone && EdgeAt(where) != nullptr;
    SetViewCursor(isOnEdge ? &kEdgeCursor : B_CURSOR_SYSTEM_DEFAULT);
}

CLVColumn* CLVColumnLabelView::EdgeAt(BPoint where) const
{
    for (int32 place = fList->CountDisplayed() - 1; place >= 0; place--) {
        CLVColumn* column = fList->DisplayedAt(place);
        if (column->IsShown() && (column->Flags() & CLV_NOT_RESIZABLE) == 0 &&
            std::fabs(where.x - column->End()) <= kGripReach) {
            return column;
        }
    }
    return nullptr;
}

CLVColumn* CLVColumnLabelView::CellAt(BPoint where) const
{
    for (int32 place = 0; place < fList->CountDisplayed(); place++) {
        CLVColumn* column = fList->DisplayedAt(place);
        if (column->IsShown() && where.x >= column->Begin() && where.x < column->End() + 1 &&
            where.y >= Bounds().top && where.y <= Bounds().bottom) {
            return column;
        }
    }
    return nullptr;
}

BPoint CLVColumnLabelView::PlaceOnStrip(BPoint where) const
{
    return where - Bounds().LeftTop();
}

uint32 CLVColumnLabelView::HeldButtons(uint32 unknown) const
{
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    int32 held = 0;
    if (message == nullptr || message->FindInt32("buttons", &held) != B_OK) {
        return unknown;
    }
    return static_cast<uint32>(held);
}

uint32 CLVColumnLabelView::HeldModifiers() const
{
    int32 held = 0;
    const BMessage* press = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    if (press == nullptr || press->FindInt32("modifiers", &held) != B_OK) {
        return modifiers();
    }
    return static_cast<uint32>(held);
}

} // namespace norvane
