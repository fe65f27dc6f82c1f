#include "TextViewState.h"

#include <Messenger.h>
#include <ScrollBar.h>

#include <algorithm>
#include <cmath>

// Which part of its text a view shows.

namespace kits {

namespace {

// Rows that are counted move others into sight, a few times at most.
constexpr int32 kMostRounds = 4;

} // namespace

float TextViewState::ContentHeight() const
{
    const BRect rect = geometry.Rect();
    return static_cast<float>(geometry.RowTop(geometry.CountRows())) + std::max(0.0f, rect.top);
}

// The widest of the rows that were seen and that one with the caret.
float TextViewState::ContentWidth() const
{
    if (geometry.Wraps()) {
        return geometry.Rect().right + 1;
    }
    if (text.CountLines() == 1) {
        widest = geometry.RoughRowWidth(0);
    } else {
        widest = std::max(widest, geometry.RoughRowWidth(geometry.RowOf(caret)));
    }
    const float margin = std::max(1.0f, geometry.Rect().left);
    return geometry.Rect().left + std::ceil(widest) + margin;
}

BPoint TextViewState::CountSight(BPoint corner)
{
    if (!geometry.Wraps() || view.Window() == nullptr) {
        return corner;
    }
    const bool isDrawn = drawnCorrections == geometry.CountCorrections();
    const BRect seen = view.Bounds();
    const int32 anchored = geometry.RowStart(geometry.RowAt(static_cast<double>(seen.top)));
    const auto top = [&] {
        return geometry.RowTop(geometry.RowOf(anchored));
    };
    for (int32 rounds = 0; rounds < kMostRounds; ++rounds) {
        const int32 before = geometry.CountCorrections();
        const double topBefore = top();
        const double y = static_cast<double>(corner.y);
        geometry.CountBetween(y, y + static_cast<double>(seen.Height()));
        if (geometry.CountCorrections() == before) {
            break;
        }
        corner.y = std::max(0.0f, corner.y + static_cast<float>(top() - topBefore));
        BMessenger(&view).SendMessage(kRowsCorrected);
    }
    if (isDrawn) {
        drawnCorrections = geometry.CountCorrections(); // all that was in sight moves along
    }
    return corner;
}

void TextViewState::CountAround(int32 offset)
{
    if (!geometry.Wraps()) {
        return;
    }
    const double reach = static_cast<double>(view.Bounds().Height());
    const int32 first = geometry.CountCorrections();
    for (int32 rounds = 0; rounds < kMostRounds; ++rounds) {
        const int32 before = geometry.CountCorrections();
        const double y = static_cast<double>(geometry.PointAt(offset).y);
        geometry.CountBetween(y - reach, y + reach);
        if (geometry.CountCorrections() == before) {
            break;
        }
    }
    if (geometry.CountCorrections() != first) {
        view.Invalidate();
    }
}

void TextViewState::ScrollTo(int32 offset)
{
    if (view.Window() == nullptr) {
        return;
    }
    CountAround(offset);
    const BRect seen = view.Bounds();
    const BPoint place = offset == caret ? geometry.CaretAt(offset) : geometry.PointAt(offset);
    const float margin = std::max(1.0f, geometry.Rect().left);
    BPoint corner = seen.LeftTop();
    // So far that some of what stands behind the edge is seen too.
    const float step = std::floor((seen.Width() + 1) / 4);
    if (place.x < seen.left + margin) {
        corner.x = std::max(0.0f, place.x - step);
    } else if (place.x > seen.right - margin) {
        corner.x = place.x - seen.Width() + step;
    }
    const float bottom = place.y + geometry.RowHeight() - 1;
    if (place.y < seen.top) {
        corner.y = place.y - std::max(0.0f, geometry.Rect().top);
    } else if (bottom > seen.bottom && bottom - seen.Height() <= place.y) {
        corner.y = bottom - seen.Height();
    }
    const float mostX = std::max(0.0f, ContentWidth() - (seen.Width() + 1));
    const float mostY = std::max(0.0f, ContentHeight() - (seen.Height() + 1));
    view.ScrollTo(BPoint(std::round(std::clamp(corner.x, 0.0f, mostX)),
                         std::round(std::clamp(corner.y, 0.0f, mostY))));
}

void TextViewState::ScrollToCaret()
{
    UpdateScrollBars();
    ScrollTo(caret);
}

void TextViewState::LimitScrolling()
{
    UpdateScrollBars();
    const BRect seen = view.Bounds();
    const float mostX = std::max(0.0f, ContentWidth() - (seen.Width() + 1));
    const float mostY = std::max(0.0f, ContentHeight() - (seen.Height() + 1));
    if (seen.left > mostX || seen.top > mostY) {
        view.ScrollTo(BPoint(std::min(seen.left, mostX), std::min(seen.top, mostY)));
    }
}

void TextViewState::UpdateScrollBars()
{
    const BRect seen = view.Bounds();
    const auto update = [](BScrollBar* bar, float content, float room, float step) {
        if (bar != nullptr) {
            bar->SetRange(0, std::max(0.0f, std::ceil(content - room)));
            bar->SetProportion(content > 0 ? std::min(1.0f, room / content) : 1.0f);
            bar->SetSteps(step, std::max(step, room - step));
        }
    };
    update(view.ScrollBar(B_VERTICAL), ContentHeight(), seen.Height() + 1, geometry.RowHeight());
    update(view.ScrollBar(B_HORIZONTAL), ContentWidth(), seen.Width() + 1, geometry.RowHeight());
}

} // namespace kits
