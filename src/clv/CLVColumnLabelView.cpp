#include "clv/CLVColumnLabelView.h"

#include "clv/CLVColumn.h"
#include "clv/ColumnListView.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Region.h>
#include <ViewDescription.h>
#include <Window.h>

#include <cmath>
#include <utility>

namespace norvane {

namespace {

constexpr float kGripReach = 2; // on both sides of an edge that can be dragged
constexpr float kLabelInset = 5;
constexpr float kMarkInset = 5; // of the sort mark, from the cell's right edge
constexpr float kMarkBreadth = 6;
constexpr float kMarkHeight = 3;
constexpr rgb_color kFace = {216, 216, 216, 255};
constexpr rgb_color kPressedFace = {196, 196, 196, 255};
constexpr rgb_color kLight = {255, 255, 255, 255};
constexpr rgb_color kShadow = {152, 152, 152, 255};
constexpr rgb_color kLabelColor = {0, 0, 0, 255};
constexpr rgb_color kMarkColor = {152, 152, 152, 255};
constexpr rgb_color kHighlight = {75, 96, 154, 255};
constexpr float kHighlightHeight = 2;

bool IsMerged(const CLVColumn* column)
{
    return column != nullptr && (column->Flags() & CLV_MERGE_WITH_RIGHT) != 0;
}

} // namespace

CLVColumnLabelView::CLVColumnLabelView(BRect frame, ColumnListView* list, const BFont* labelFont)
    : BView(frame, "ColumnLabels", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fList(list), fFont(labelFont)
{
    SetFont(&fFont);
    SetViewColor(kFace);
    SetLowColor(kFace);
}

void CLVColumnLabelView::Describe(BViewDescription* description) const
{
    description->name = "";
    for (int32 place = 0; place < fList->CountDisplayed(); place++) {
        const CLVColumn* column = fList->DisplayedAt(place);
        const BRect cell(column->Begin(), 0, column->End(), Bounds().bottom);
        if (!column->IsShown() || !cell.Intersects(Bounds())) {
            continue;
        }
        BViewDescription::Part part;
        part.thing = column;
        part.role = BViewDescription::Role::kColumnHeader;
        part.frame = cell;
        part.name = column->Label() != nullptr ? column->Label() : "";
        description->parts.push_back(std::move(part));
    }
}

void CLVColumnLabelView::Draw(BRect)
{
    const float bottom = Bounds().bottom;
    float end = -1;
    for (int32 place = 0; place < fList->CountDisplayed(); place++) {
        const CLVColumn* column = fList->DisplayedAt(place);
        if (!column->IsShown()) {
            continue;
        }
        BRect cell(column->Begin(), 0, column->End(), bottom);
        end = column->End();
        DrawCell(cell, *column, column == fGestureColumn && fIsPressedInside);
    }
    if (end < Bounds().right) {
        DrawFrame(BRect(end + 1, 0, Bounds().right, bottom), kFace);
    }
    if (fIsHighlighted) {
        SetHighColor(kHighlight);
        FillRect(BRect(Bounds().left, bottom - kHighlightHeight + 1, Bounds().right, bottom));
    }
}

void CLVColumnLabelView::DrawFrame(BRect cell, rgb_color face)
{
    SetHighColor(face);
    FillRect(cell);
    SetHighColor(kLight);
    StrokeLine(cell.LeftTop(), cell.RightTop());
    SetHighColor(kShadow);
    StrokeLine(cell.LeftBottom(), cell.RightBottom());
}

void CLVColumnLabelView::DrawCell(BRect cell, const CLVColumn& column, bool isPressed)
{
    const rgb_color face = isPressed ? kPressedFace : kFace;
    DrawFrame(cell, face);
    if (!IsMerged(&column)) {
        SetHighColor(kShadow);
        StrokeLine(BPoint(cell.right, cell.top + 2), BPoint(cell.right, cell.bottom - 2));
    }
    if (!IsMerged(LeftOf(column))) {
        SetHighColor(kLight);
        StrokeLine(cell.LeftTop(), cell.LeftBottom());
    }
    BRegion clipping(cell);
    ConstrainClippingRegion(&clipping);
    if (column.Label() != nullptr) {
        font_height height;
        fFont.GetHeight(&height);
        SetHighColor(kLabelColor);
        SetLowColor(face);
        DrawString(column.Label(),
                   BPoint(cell.left + kLabelInset, cell.top + 2 + std::ceil(height.ascent)));
    }
    if (fList->SortKeyPlace(&column) >= 0) {
        DrawSortMark(cell, column);
    }
    ConstrainClippingRegion(nullptr);
}

void CLVColumnLabelView::DrawSortMark(BRect cell, const CLVColumn& column)
{
    if (column.SortMode() == NoSort) {
        return;
    }
    const float left = cell.right - kMarkInset - kMarkBreadth;
    const float top = cell.top + std::floor((cell.Height() - kMarkHeight) / 2);
    SetHighColor(kMarkColor);
    for (int32 line = 0; line <= static_cast<int32>(kMarkHeight); line++) {
        const float row = static_cast<float>(line);
        const float inset = column.SortMode() == Ascending ? kMarkHeight - row : row;
        StrokeLine(BPoint(left + inset, top + row), BPoint(left + kMarkBreadth - inset, top + row));
    }
}

void CLVColumnLabelView::InvalidateColumn(const CLVColumn& column)
{
    Invalidate(BRect(column.Begin(), Bounds().top, column.End(), Bounds().bottom));
}

void CLVColumnLabelView::SetHighlighted(bool isHighlighted)
{
    if (isHighlighted != fIsHighlighted) {
        fIsHighlighted = isHighlighted;
        Invalidate();
    }
}

CLVColumn* CLVColumnLabelView::LeftOf(const CLVColumn& column) const
{
    CLVColumn* left = nullptr;
    for (int32 place = 0; place < fList->CountDisplayed(); place++) {
        CLVColumn* shown = fList->DisplayedAt(place);
        if (shown == &column) {
            return left;
        }
        left = shown->IsShown() ? shown : left;
    }
    return nullptr;
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

void CLVColumnLabelView::MouseDown(BPoint where)
{
    // Another button that comes to a held one belongs to that one's gesture.
    if (HeldButtons(B_PRIMARY_MOUSE_BUTTON) != B_PRIMARY_MOUSE_BUTTON) {
        return;
    }
    fIsAdding = (HeldModifiers() & B_SHIFT_KEY) != 0;
    if (CLVColumn* edge = EdgeAt(where)) {
        fGesture = Gesture::kResize;
        fGestureColumn = edge;
        fPressPlace = PlaceOnStrip(where);
        fPressWidth = edge->Width();
    } else if (CLVColumn* cell = CellAt(where)) {
        fGesture = Gesture::kPress;
        fGestureColumn = cell;
        fIsPressedInside = true;
        InvalidateColumn(*cell);
    } else {
        return;
    }
    SetMouseEventMask(B_POINTER_EVENTS, B_LOCK_WINDOW_FOCUS);
}

void CLVColumnLabelView::MouseMoved(BPoint where, uint32, const BMessage*)
{
    if (fGesture == Gesture::kResize) {
        Resize(where);
        return;
    }
    if (fGesture == Gesture::kPress && fGestureColumn != nullptr) {
        const bool isInside = CellAt(where) == fGestureColumn;
        if (isInside != fIsPressedInside) {
            fIsPressedInside = isInside;
            InvalidateColumn(*fGestureColumn);
        }
    }
}

void CLVColumnLabelView::Resize(BPoint where)
{
    // From what was there at the press: a narrower column may scroll the list, which moves its edge
    // under a pointer that stands still.
    const float moved = PlaceOnStrip(where) - fPressPlace;
    fGestureColumn->SetWidth(std::round(fPressWidth + moved));
}

void CLVColumnLabelView::MouseUp(BPoint)
{
    if (fGestureColumn == nullptr || (HeldButtons(0) & B_PRIMARY_MOUSE_BUTTON) != 0) {
        return;
    }
    const CLVColumn* column = fGestureColumn;
    const bool isClick = fGesture == Gesture::kPress && fIsPressedInside;
    EndGesture();
    if (isClick && (column->Flags() & CLV_SORT_KEYABLE) != 0) {
        SortBy(*column, fIsAdding);
    }
}

void CLVColumnLabelView::ForgetColumn(const CLVColumn& column)
{
    if (&column == fGestureColumn) {
        EndGesture();
    }
}

void CLVColumnLabelView::EndGesture()
{
    InvalidateColumn(*fGestureColumn);
    fGesture = Gesture::kNone;
    fGestureColumn = nullptr;
    fIsPressedInside = false;
}

float CLVColumnLabelView::PlaceOnStrip(BPoint where) const
{
    return where.x - Bounds().left;
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

void CLVColumnLabelView::SortBy(const CLVColumn& column, bool isAdding)
{
    const int32 index = fList->IndexOfColumn(&column);
    const int32 place = fList->SortKeyPlace(&column);
    if (isAdding ? place >= 0 : place == 0) {
        fList->ReverseSortMode(index);
    } else if (isAdding) {
        fList->AddSortKey(index);
    } else {
        fList->SetSortKey(index);
    }
}

} // namespace norvane
