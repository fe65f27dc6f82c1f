#include "clv/ColumnListView.h"

#include "clv/ArrowPictures.h"
#include "clv/CLVColumnLabelView.h"
#include "clv/CLVContainerView.h"
#include "clv/ListLock.h"
#include "clv/PrefilledBitmap.h"
#include "clv/ScrollViewCorner.h"

#include <Font.h>
#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kSmallStep = 20;
constexpr rgb_color kCornerIdle = {240, 240, 240, 255};
constexpr rgb_color kCornerBusy = {216, 216, 216, 255};

CLVColumn* ColumnIn(const BList& list, int32 index)
{
    return static_cast<CLVColumn*>(list.ItemAt(index));
}

float StripHeight(const BFont& font)
{
    font_height height;
    font.GetHeight(&height);
    return 1 + std::ceil(height.ascent) + std::ceil(height.descent) + 3;
}

// Moves the pixels right of `last` by a distance; what is not covered by them from `first` on is
// painted.
void MoveSideways(BView& view, float first, float last, float distance)
{
    const BRect all = view.Bounds();
    const BRect behind(std::max(last + 1, all.left), all.top, all.right, all.bottom);
    const BRect moved = behind.OffsetByCopy(distance, 0) & all;
    if (!moved.IsValid() || distance != std::round(distance)) {
        view.Invalidate(BRect(first, all.top, all.right, all.bottom) & all);
        return;
    }
    view.CopyBits(moved.OffsetByCopy(-distance, 0), moved);
    const BRect before = BRect(first, all.top, moved.left - 1, all.bottom) & all;
    const BRect after(moved.right + 1, all.top, all.right, all.bottom);
    for (const BRect& bare : {before, after}) {
        if (bare.IsValid()) {
            view.Invalidate(bare);
        }
    }
}

void ColourCorner(ScrollViewCorner& corner, rgb_color color)
{
    if (corner.ViewColor() == color) {
        return;
    }
    corner.SetViewColor(color);
    corner.Invalidate();
}

} // namespace

ColumnListView::ColumnListView(BRect frame, CLVContainerView** containerOut, const char* name,
                               uint32 resizingMode, uint32 flags, list_view_type type,
                               bool isHierarchical, bool horizontal, bool vertical,
                               border_style border, const BFont* labelFont)
    : BListView(frame, name, type, B_FOLLOW_ALL_SIDES, flags), fIsHierarchical(isHierarchical),
      fRightArrow(std::make_unique<PrefilledBitmap>(kArrowBounds, B_CMAP8, RightArrowBits())),
      fDownArrow(std::make_unique<PrefilledBitmap>(kArrowBounds, B_CMAP8, DownArrowBits()))
{
    const BRect strip(frame.left, frame.top, frame.right, frame.top + StripHeight(*labelFont));
    fStrip = new CLVColumnLabelView(strip, this, labelFont);
    fContainer = new CLVContainerView(name, this, fStrip, resizingMode, 0, horizontal, vertical,
                                      border); // adopts both
    fContainer->SetFarewell([this] { ForgetContainer(); });
    fContainer->MoveTo(frame.LeftTop());
    fContainer->ResizeContentTo(frame.Width(), frame.Height());
    if (containerOut != nullptr) {
        *containerOut = fContainer;
    }
    UpdateColumnSizesDataRectSizeScrollBars();
}

ColumnListView::~ColumnListView()
{
    for (int32 i = CountColumns() - 1; i >= 0; i--) {
        delete ColumnAt(i);
    }
    if (fContainer == nullptr) {
        return; // it is being deleted itself and takes us along
    }
    RemoveSelf();
    fContainer->ForgetList();
    if (fContainer->Parent() == nullptr && fContainer->Window() == nullptr) {
        delete fContainer;
    }
}

void ColumnListView::ForgetContainer()
{
    fContainer = nullptr;
    fStrip = nullptr;
}

// Columns

bool ColumnListView::AddColumn(CLVColumn* column)
{
    ListLock lock(*this);
    const bool isExpander = (column->Flags() & CLV_EXPANDER) != 0;
    if (column->Parent() != nullptr || (isExpander && (!fIsHierarchical || HasExpanderColumn()))) {
        return false;
    }
    fColumns.AddItem(column);
    fDisplayed.AddItem(column);
    column->fParent = this;
    if (isExpander && column->IsShown()) {
        fExpanderColumn = IndexOfColumn(column);
    }
    RelayOutFrom(0);
    return true;
}

bool ColumnListView::AddColumnList(BList* columns)
{
    bool added = true;
    for (int32 i = 0; i < columns->CountItems(); i++) {
        added = AddColumn(ColumnIn(*columns, i)) && added;
    }
    return added;
}

bool ColumnListView::RemoveColumn(CLVColumn* column)
{
    ListLock lock(*this);
    if (!fColumns.HasItem(column)) {
        return false;
    }
    if (fSortKeys.HasItem(column)) {
        SetSortMode(IndexOfColumn(column), NoSort);
    }
    fStrip->ForgetColumn(*column);
    fColumns.RemoveItem(column);
    fDisplayed.RemoveItem(column);
    column->fParent = nullptr;
    fExpanderColumn = -1;
    for (int32 i = 0; i < CountColumns(); i++) {
        if ((ColumnAt(i)->Flags() & CLV_EXPANDER) != 0 && ColumnAt(i)->IsShown()) {
            fExpanderColumn = i;
        }
    }
    RelayOutFrom(0);
    return true;
}

bool ColumnListView::RemoveColumns(CLVColumn* first, int32 count)
{
    const int32 index = IndexOfColumn(first);
    if (index < 0 || count < 0 || index + count > CountColumns()) {
        return false;
    }
    for (int32 i = 0; i < count; i++) {
        RemoveColumn(ColumnAt(index));
    }
    return true;
}

int32 ColumnListView::CountColumns() const
{
    return fColumns.CountItems();
}

int32 ColumnListView::IndexOfColumn(const CLVColumn* column) const
{
    return fColumns.IndexOf(column);
}

CLVColumn* ColumnListView::ColumnAt(int32 index) const
{
    return ColumnIn(fColumns, index);
}

bool ColumnListView::HasExpanderColumn() const
{
    for (int32 i = 0; i < CountColumns(); i++) {
        if ((ColumnAt(i)->Flags() & CLV_EXPANDER) != 0) {
            return true;
        }
    }
    return false;
}

bool ColumnListView::SetDisplayOrder(const int32* order)
{
    ListLock lock(*this);
    fDisplayed.MakeEmpty();
    for (int32 i = 0; i < CountColumns(); i++) {
        CLVColumn* column = ColumnAt(order[i]);
        if (column == nullptr || fDisplayed.HasItem(column)) {
            return false;
        }
        fDisplayed.AddItem(column);
    }
    RelayOutFrom(0);
    DisplayOrderChanged(order);
    return true;
}

int32* ColumnListView::DisplayOrder() const
{
    auto* order = new int32[static_cast<std::size_t>(CountDisplayed())];
    for (int32 i = 0; i < CountDisplayed(); i++) {
        order[i] = IndexOfColumn(DisplayedAt(i));
    }
    return order;
}

int32 ColumnListView::CountDisplayed() const
{
    return fDisplayed.CountItems();
}

CLVColumn* ColumnListView::DisplayedAt(int32 place) const
{
    return ColumnIn(fDisplayed, place);
}

void ColumnListView::ColumnWidthChanged(int32, float) {}

void ColumnListView::DisplayOrderChanged(const int32*) {}

void ColumnListView::ColumnWidened(CLVColumn& column)
{
    ListLock lock(*this);
    if (column.IsShown()) {
        MoveBehind(column);
    }
    ColumnWidthChanged(IndexOfColumn(&column), column.Width());
}

void ColumnListView::ColumnShownChanged(CLVColumn& column)
{
    ListLock lock(*this);
    if ((column.Flags() & CLV_EXPANDER) != 0) {
        fExpanderColumn = column.IsShown() ? IndexOfColumn(&column) : -1;
    }
    if (!column.IsShown()) {
        fStrip->ForgetColumn(column);
    }
    const float begin = column.IsShown() ? 0 : column.Begin();
    RelayOutFrom(begin);
}

// The column is laid out with its old width still.
void ColumnListView::MoveBehind(const CLVColumn& column)
{
    const float distance = column.Width() - (column.End() - column.Begin());
    float first = column.Begin();
    float last = column.End();
    const float limit = IndentationLimit();
    if (limit >= first) {
        // Indented cells reach into the columns behind theirs, up to a limit that moves, too.
        first = std::min(first, ColumnAt(fExpanderColumn)->Begin());
        last = std::max(last, limit);
    }
    if (Window() != nullptr) {
        Window()->UpdateIfNeeded();
    }
    MoveSideways(*this, first, last, distance);
    MoveSideways(*fStrip, column.Begin(), column.End(), distance);
    UpdateColumnSizesDataRectSizeScrollBars();
    fStrip->ColumnsChanged();
}

void ColumnListView::RelayOutFrom(float left)
{
    fStrip->ColumnsChanged();
    UpdateColumnSizesDataRectSizeScrollBars();
    BRect rows = Bounds();
    rows.left = std::max(rows.left, left);
    Invalidate(rows);
    BRect cells = fStrip->Bounds();
    cells.left = std::max(cells.left, left);
    fStrip->Invalidate(cells);
}

// Layout

void ColumnListView::AttachedToWindow()
{
    BListView::AttachedToWindow();
    UpdateColumnSizesDataRectSizeScrollBars();
}

void ColumnListView::FrameResized(float width, float height)
{
    // Rows keep height and baseline whatever the list's size, so none is touched.
    UpdateColumnSizesDataRectSizeScrollBars();
    BListView::FrameResized(width, height);
}

void ColumnListView::ScrollTo(BPoint where)
{
    BListView::ScrollTo(where);
    if (fStrip != nullptr) {
        fStrip->ScrollTo(BPoint(where.x, 0));
    }
}

int ColumnListView::GetHdrHeight() const
{
    return static_cast<int>(fStrip->Frame().Height());
}

void ColumnListView::ResizeTo(float width, float height)
{
    fContainer->ResizeContentTo(width, height);
}

void ColumnListView::UpdateColumnSizesDataRectSizeScrollBars()
{
    bool isShifting = false;
    float end = -1;
    for (int32 place = 0; place < CountDisplayed(); place++) {
        CLVColumn& column = *DisplayedAt(place);
        column.fIsShifted = isShifting;
        if (!column.IsShown()) {
            continue;
        }
        column.fBegin = end + 1;
        column.fEnd = column.fBegin + column.fWidth;
        end = column.fEnd;
        if (isShifting && (column.Flags() & CLV_PUSH_PASS) == 0) {
            isShifting = false;
        }
        if ((column.Flags() & CLV_EXPANDER) != 0) {
            isShifting = true;
        }
    }
    fDataWidth = std::max(end, 0.0f);
    const int32 rows = CountItems();
    fDataHeight = rows > 0 ? ItemFrame(rows - 1).bottom : 0;
    UpdateScrollBars();
}

void ColumnListView::UpdateScrollBars()
{
    if (Window() == nullptr || fContainer == nullptr) {
        return;
    }
    ScrollBackToData();
    const BRect view = Bounds();
    const float extentWidth = std::max(fDataWidth, view.Width());
    const float extentHeight = std::max(fDataHeight, view.Height());
    if (BScrollBar* bar = fContainer->ScrollBar(B_HORIZONTAL)) {
        const float proportion = extentWidth > 0 ? view.Width() / extentWidth : 1;
        const bool isIdle = proportion >= 1 && view.left <= 0;
        bar->SetProportion(proportion);
        bar->SetRange(0, isIdle ? 0 : extentWidth - view.Width());
        bar->SetSteps(kSmallStep, std::max(view.Width(), kSmallStep));
    }
    if (BScrollBar* bar = fContainer->ScrollBar(B_VERTICAL)) {
        const float proportion = extentHeight > 0 ? view.Height() / extentHeight : 1;
        const bool isIdle = proportion >= 1 && view.top <= 0;
        bar->SetProportion(proportion);
        bar->SetRange(0, isIdle ? 0 : extentHeight - view.Height());
        if (ScrollViewCorner* corner = fContainer->Corner()) {
            ColourCorner(*corner, isIdle ? kCornerIdle : kCornerBusy);
        }
    }
}

void ColumnListView::ScrollBackToData()
{
    const BRect view = Bounds();
    const float overshootRight = std::min(view.right - fDataWidth, view.left);
    const float overshootBottom = std::min(view.bottom - fDataHeight, view.top);
    if (overshootRight > 0 || overshootBottom > 0) {
        ScrollTo(BPoint(view.left - std::max(overshootRight, 0.0f),
                        view.top - std::max(overshootBottom, 0.0f)));
    }
}

float ColumnListView::IndentationLimit() const
{
    for (int32 place = CountDisplayed() - 1; place >= 0; place--) {
        const CLVColumn& column = *DisplayedAt(place);
        const bool isIndented = column.IsShifted() || (column.Flags() & CLV_EXPANDER) != 0;
        if (isIndented && column.IsShown()) {
            return column.End();
        }
    }
    return -1;
}

const BBitmap* ColumnListView::ArrowBitmap(bool isExpanded) const
{
    return isExpanded ? fDownArrow.get() : fRightArrow.get();
}

} // namespace norvane
