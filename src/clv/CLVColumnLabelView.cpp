#include "clv/CLVColumnLabelView.h"

#include "clv/CLVColumn.h"
#include "clv/ColumnListView.h"

#include <MessageFilter.h>
#include <MessageRunner.h>
#include <Region.h>
#include <ViewDescription.h>

#include <algorithm>
#include <cmath>
#include <utility>

// What the strip shows.

namespace norvane {

namespace {

constexpr float kLabelInset = 5;
constexpr float kMarkInset = 5; // of the sort mark, from the cell's right edge
constexpr float kMarkBreadth = 6;
constexpr float kMarkHeight = 3;
constexpr rgb_color kFace = {216, 216, 216, 255};
constexpr rgb_color kPressedFace = {196, 196, 196, 255};
constexpr rgb_color kVacantFace = {184, 184, 184, 255};
constexpr rgb_color kLiftedFace = {240, 240, 240, 255};
constexpr rgb_color kLight = {255, 255, 255, 255};
constexpr rgb_color kShadow = {152, 152, 152, 255};
constexpr rgb_color kOutline = {96, 96, 96, 255};
constexpr rgb_color kLabelColor = {0, 0, 0, 255};
constexpr rgb_color kMarkColor = {152, 152, 152, 255};
constexpr rgb_color kHighlight = {75, 96, 154, 255};
constexpr float kHighlightHeight = 2;

bool HasSortMark(const ColumnListView& list, const CLVColumn& column)
{
    return column.SortMode() != NoSort && list.SortKeyPlace(&column) >= 0;
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
    for (const Cell& cell : CellsOf(Displayed(), 0)) {
        if (!cell.frame.Intersects(Bounds())) {
            continue;
        }
        BViewDescription::Part part;
        part.thing = cell.column;
        part.role = BViewDescription::Role::kColumnHeader;
        part.frame = cell.frame;
        part.name = cell.column->Label() != nullptr ? cell.column->Label() : "";
        description->parts.push_back(std::move(part));
    }
}

DragGroups::Columns CLVColumnLabelView::Displayed() const
{
    DragGroups::Columns columns;
    for (int32 place = 0; place < fList->CountDisplayed(); place++) {
        columns.push_back(fList->DisplayedAt(place));
    }
    return columns;
}

std::vector<CLVColumnLabelView::Cell> CLVColumnLabelView::CellsOf(const DragGroups::Columns& order,
                                                                  float left) const
{
    std::vector<Cell> cells;
    int32 run = 0;
    bool joinsLeft = false;
    for (CLVColumn* column : order) {
        if (!column->IsShown()) {
            continue;
        }
        const bool joinsRight = (column->Flags() & CLV_MERGE_WITH_RIGHT) != 0;
        // As it is laid out: a column that is about to be has its new width already.
        const float width = column->End() - column->Begin();
        const BRect frame(left, 0, left + width, Bounds().bottom);
        cells.push_back({column, frame, run, joinsLeft, joinsRight});
        run += joinsRight ? 0 : 1;
        joinsLeft = joinsRight;
        left = frame.right + 1;
    }
    return cells;
}

void CLVColumnLabelView::Draw(BRect)
{
    const bool isDragging = fGesture == Gesture::kDrag;
    const std::vector<Cell> cells = CellsOf(isDragging ? fShiftedOrder : Displayed(), 0);
    int32 pressedRun = -1;
    for (const Cell& cell : cells) {
        if (fGesture == Gesture::kPress && cell.column == fGestureColumn) {
            pressedRun = cell.run;
        }
    }
    for (const Cell& cell : cells) {
        if (cell.frame.Intersects(Bounds())) {
            DrawCell(cell, LookOf(cell, pressedRun));
        }
    }
    const float end = cells.empty() ? -1 : cells.back().frame.right;
    const float bottom = Bounds().bottom;
    if (end < Bounds().right) {
        DrawFrame(BRect(end + 1, 0, Bounds().right, bottom), CellLook::kFlat);
    }
    if (fIsHighlighted) {
        SetHighColor(kHighlight);
        FillRect(BRect(Bounds().left, bottom - kHighlightHeight + 1, Bounds().right, bottom));
    }
    if (isDragging) {
        DrawLifted();
    }
}

CLVColumnLabelView::CellLook CLVColumnLabelView::LookOf(const Cell& cell, int32 pressedRun) const
{
    if (cell.run == pressedRun) {
        return CellLook::kPressed;
    }
    return fGesture == Gesture::kDrag && IsDragged(cell.column) ? CellLook::kVacant
                                                                : CellLook::kFlat;
}

void CLVColumnLabelView::DrawFrame(BRect cell, CellLook look)
{
    rgb_color face = kFace;
    rgb_color top = kLight;
    switch (look) {
    case CellLook::kPressed:
        face = kPressedFace;
        top = kShadow;
        break;
    case CellLook::kVacant:
        face = kVacantFace;
        top = kShadow;
        break;
    case CellLook::kLifted:
        face = kLiftedFace;
        break;
    case CellLook::kFlat:
        break;
    }
    SetHighColor(face);
    SetLowColor(face);
    FillRect(cell);
    SetHighColor(top);
    StrokeLine(cell.LeftTop(), cell.RightTop());
    SetHighColor(kShadow);
    StrokeLine(cell.LeftBottom(), cell.RightBottom());
}

void CLVColumnLabelView::DrawCell(const Cell& cell, CellLook look)
{
    const BRect frame = cell.frame;
    DrawFrame(frame, look);
    if (fGesture == Gesture::kResize && cell.column == fGestureColumn) {
        SetHighColor(kHighlight);
        StrokeLine(frame.RightTop(), frame.RightBottom());
    } else if (!cell.joinsRight) {
        SetHighColor(kShadow);
        StrokeLine(BPoint(frame.right, frame.top + 2), BPoint(frame.right, frame.bottom - 2));
    }
    if (look == CellLook::kVacant) {
        return;
    }
    if (!cell.joinsLeft && look != CellLook::kPressed) {
        SetHighColor(kLight);
        StrokeLine(frame.LeftTop(), frame.LeftBottom());
    }
    DrawLabel(cell, LowColor());
    if (HasSortMark(*fList, *cell.column)) {
        DrawSortMark(cell);
    }
}

void CLVColumnLabelView::DrawLabel(const Cell& cell, rgb_color face)
{
    if (cell.column->Label() == nullptr) {
        return;
    }
    BRect room = cell.frame;
    if (HasSortMark(*fList, *cell.column)) {
        room.right -= kMarkInset + kMarkBreadth + 2;
    }
    if (!room.IsValid()) {
        return;
    }
    font_height height;
    fFont.GetHeight(&height);
    BRegion clipping(room);
    ConstrainClippingRegion(&clipping);
    SetHighColor(kLabelColor);
    SetLowColor(face);
    DrawString(cell.column->Label(),
               BPoint(room.left + kLabelInset, room.top + 2 + std::ceil(height.ascent)));
    ConstrainClippingRegion(nullptr);
}

void CLVColumnLabelView::DrawSortMark(const Cell& cell)
{
    const BRect frame = cell.frame;
    BRegion clipping(frame);
    ConstrainClippingRegion(&clipping);
    const float left = frame.right - kMarkInset - kMarkBreadth;
    const float top = frame.top + std::floor((frame.Height() - kMarkHeight) / 2);
    SetHighColor(kMarkColor);
    for (int32 line = 0; line <= static_cast<int32>(kMarkHeight); line++) {
        const float row = static_cast<float>(line);
        const float inset = cell.column->SortMode() == Ascending ? kMarkHeight - row : row;
        StrokeLine(BPoint(left + inset, top + row), BPoint(left + kMarkBreadth - inset, top + row));
    }
    ConstrainClippingRegion(nullptr);
}

// The cells that follow the pointer, over all others.
void CLVColumnLabelView::DrawLifted()
{
    const std::vector<Cell> cells = CellsOf(fGroups.ColumnsOf(fDragGroup), fDragLeft);
    if (cells.empty()) {
        return;
    }
    for (const Cell& cell : cells) {
        DrawCell(cell, CellLook::kLifted);
    }
    BRect outline = cells.front().frame;
    outline.right = cells.back().frame.right;
    SetHighColor(kOutline);
    StrokeRect(outline);
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

} // namespace norvane
