#include "clv/CLVListItem.h"

#include "clv/ColumnListView.h"

#include <Bitmap.h>
#include <Font.h>
#include <Region.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kArrowSize = 10;
constexpr float kArrowMargin = 3; // right of the arrow
const BRect kNowhere(-1, -1, -1, -1);

} // namespace

CLVListItem::CLVListItem(uint32 level, bool isSuperitem, bool isExpanded, float minimumHeight)
    : BListItem(level, isExpanded), fLevel(level), fIsSuperitem(isSuperitem),
      fMinimumHeight(minimumHeight)
{
}

CLVListItem::~CLVListItem() = default;

std::atomic<uint32> CLVListItem::sLevelChanges{0};

void CLVListItem::SetOutlineLevel(uint32 level)
{
    // A row may outlive the outline that it was in, so that one is not told itself.
    if (level != fLevel && fPlace.outline != nullptr) {
        sLevelChanges++;
    }
    fLevel = level;
}

float CLVListItem::ExpanderShift(int32 displayIndex, BView* owner) const
{
    const auto* list = static_cast<ColumnListView*>(owner);
    const CLVColumn* column = list->DisplayedAt(displayIndex);
    return column != nullptr && column->IsShifted() ? static_cast<float>(fLevel) * kIndentation : 0;
}

void CLVListItem::DrawItem(BView* owner, BRect itemRect, bool complete)
{
    auto& list = *static_cast<ColumnListView*>(owner);
    BRegion clipping;
    if (complete) {
        clipping.Set(itemRect);
    } else {
        owner->GetClippingRegion(&clipping);
    }
    const float indentation = static_cast<float>(fLevel) * kIndentation;
    const float limit = list.IndentationLimit();
    float lastEnd = -1;
    for (int32 place = 0; place < list.CountDisplayed(); place++) {
        const CLVColumn& column = *list.DisplayedAt(place);
        if (!column.IsShown()) {
            continue;
        }
        BRect cell(column.Begin(), itemRect.top, column.End(), itemRect.bottom);
        lastEnd = column.End();
        if ((column.Flags() & CLV_EXPANDER) != 0) {
            cell.right = std::min(cell.right + indentation, limit);
            DrawExpanderCell(list, column, cell, complete, complete || clipping.Intersects(cell));
            continue;
        }
        if (column.IsShifted() && indentation > 0) {
            cell.left += indentation;
            cell.right = std::min(cell.right + indentation, limit);
            if (cell.right <= cell.left) {
                continue;
            }
        }
        if (clipping.Intersects(cell)) {
            DrawItemColumn(owner, cell, list.IndexOfColumn(&column), complete);
        }
    }
    const BRect rest(lastEnd + 1, itemRect.top, owner->Bounds().right, itemRect.bottom);
    if (rest.IsValid() && clipping.Intersects(rest)) {
        DrawItemColumn(owner, rest, -1, complete);
    }
}

void CLVListItem::DrawExpanderCell(ColumnListView& list, const CLVColumn& column, BRect cell,
                                   bool complete, bool isVisible)
{
    fExpanderColumn = cell;
    fExpanderButton = kNowhere;
    if (isVisible) {
        DrawItemColumn(&list, cell, list.IndexOfColumn(&column), complete);
    }
    if (!fIsSuperitem) {
        return;
    }
    const float top = cell.top + std::ceil((cell.Height() - kArrowSize) / 2);
    const float shift = static_cast<float>(fLevel) * kIndentation;
    const float left = column.End() + shift - kArrowMargin - kArrowSize;
    const float overhang = std::max(left + kArrowSize - cell.right, 0.0f);
    if (left >= cell.right) {
        return;
    }
    fExpanderButton = BRect(left, top, left + kArrowSize - overhang, top + kArrowSize);
    if (isVisible) {
        list.SetDrawingMode(B_OP_OVER);
        list.DrawBitmap(list.ArrowBitmap(IsExpanded()),
                        BRect(0, 0, kArrowSize - overhang, kArrowSize), fExpanderButton);
        list.SetDrawingMode(B_OP_COPY);
    }
}

void CLVListItem::Update(BView* owner, const BFont* font)
{
    // Set once: a height that changes makes the list measure all of its rows again.
    font_height height;
    font->GetHeight(&height);
    const float lineHeight = std::ceil(height.ascent + height.descent + height.leading);
    SetHeight(std::max(lineHeight, fMinimumHeight));
    if (const auto* list = dynamic_cast<const ColumnListView*>(owner)) {
        SetWidth(list->DataWidth());
    }
}

} // namespace norvane
