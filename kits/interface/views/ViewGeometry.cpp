#include <View.h>

#include "ScrollFollower.h"
#include "ViewAccess.h"
#include "ViewHost.h"
#include "ViewState.h"
#include "WindowState.h"
#include "WindowViews.h"
#include "interface/graphics/RegionAccess.h"

#include <Window.h>

#include <cmath>

// Where views are: frames, following the parent's sides, conversions, scrolling.

namespace {

float Rounded(double value)
{
    return static_cast<float>(std::round(value));
}

// Which of the parent's sides `rule` names; where that side has gone when the parent grew by
// `grown`.
float FollowedBy(uint32 rule, uint32 farSide, float grown, float centre)
{
    if (rule == farSide) {
        return grown;
    }
    return rule == kViewCenter ? centre : 0;
}

} // namespace

BRect BView::Bounds() const
{
    return BRect(static_cast<float>(fScrollX), static_cast<float>(fScrollY),
                 static_cast<float>(fScrollX + static_cast<double>(fFrame.Width())),
                 static_cast<float>(fScrollY + static_cast<double>(fFrame.Height())));
}

void BView::MoveBy(float dh, float dv)
{
    MoveTo(fFrame.left + dh, fFrame.top + dv);
}

void BView::MoveTo(BPoint where)
{
    MoveTo(where.x, where.y);
}

void BView::MoveTo(float x, float y)
{
    CheckLock();
    SetFrame(fFrame.OffsetToCopy(Rounded(x), Rounded(y)));
}

void BView::ResizeBy(float dh, float dv)
{
    ResizeTo(fFrame.Width() + dh, fFrame.Height() + dv);
}

void BView::ResizeTo(float width, float height)
{
    CheckLock();
    SetFrame(
        BRect(fFrame.left, fFrame.top, fFrame.left + Rounded(width), fFrame.top + Rounded(height)));
}

void BView::SetFrame(BRect frame)
{
    if (frame == fFrame) {
        return;
    }
    const BRect old = fFrame;
    const bool isMoved = old.LeftTop() != frame.LeftTop();
    const float dh = frame.Width() - old.Width();
    const float dv = frame.Height() - old.Height();
    const QRegion before = fHost != nullptr ? fHost->VisibleTree(*this) : QRegion();
    fFrame = frame;
    if (fHost != nullptr) {
        fHost->LayoutChanged();
        const QRegion after = fHost->VisibleTree(*this);
        const bool isAllNew = isMoved || (fFlags & B_FULL_UPDATE_ON_RESIZE) != 0;
        fHost->Invalidate(isAllNew ? before + after : before.xored(after));
    }
    if (dh != 0 || dv != 0) {
        for (size_t i = 0; i < fChildren.size(); ++i) {
            fChildren[i]->FollowParent(dh, dv);
        }
    }
    if (fHost == nullptr || (fFlags & B_FRAME_EVENTS) == 0) {
        return;
    }
    if (isMoved) {
        FrameMoved(fFrame.LeftTop());
    }
    if (dh != 0 || dv != 0) {
        FrameResized(fFrame.Width(), fFrame.Height());
    }
}

void BView::FollowParent(float dh, float dv)
{
    const uint32 top = fResizingMode >> 12 & 15;
    const uint32 left = fResizingMode >> 8 & 15;
    const uint32 bottom = fResizingMode >> 4 & 15;
    const uint32 right = fResizingMode & 15;
    // Half of an odd distance is taken from where the parent now is, so that nothing drifts.
    const float parentWidth = fParent->fFrame.Width();
    const float parentHeight = fParent->fFrame.Height();
    const float centreX = std::floor(parentWidth / 2) - std::floor((parentWidth - dh) / 2);
    const float centreY = std::floor(parentHeight / 2) - std::floor((parentHeight - dv) / 2);
    SetFrame(BRect(fFrame.left + FollowedBy(left, kViewRight, dh, centreX),
                   fFrame.top + FollowedBy(top, kViewBottom, dv, centreY),
                   fFrame.right + FollowedBy(right, kViewRight, dh, centreX),
                   fFrame.bottom + FollowedBy(bottom, kViewBottom, dv, centreY)));
}

void BView::GetPreferredSize(float* width, float* height)
{
    *width = fFrame.Width();
    *height = fFrame.Height();
}

void BView::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BView::SetResizingMode(uint32 mode)
{
    fResizingMode = mode;
}

void BView::SetFlags(uint32 flags)
{
    CheckLock();
    fFlags = flags;
    if (fHost != nullptr) {
        kits::ViewListens(*fHost->Owner(), *this);
    }
}

// Conversions

void BView::ConvertToParent(BPoint* point) const
{
    point->x = static_cast<float>(point->x + static_cast<double>(fFrame.left) - fScrollX);
    point->y = static_cast<float>(point->y + static_cast<double>(fFrame.top) - fScrollY);
}

BPoint BView::ConvertToParent(BPoint point) const
{
    ConvertToParent(&point);
    return point;
}

void BView::ConvertFromParent(BPoint* point) const
{
    point->x = static_cast<float>(point->x - static_cast<double>(fFrame.left) + fScrollX);
    point->y = static_cast<float>(point->y - static_cast<double>(fFrame.top) + fScrollY);
}

BPoint BView::ConvertFromParent(BPoint point) const
{
    ConvertFromParent(&point);
    return point;
}

BRect BView::ConvertToParent(BRect rect) const
{
    return rect.OffsetToCopy(ConvertToParent(rect.LeftTop()));
}

BRect BView::ConvertFromParent(BRect rect) const
{
    return rect.OffsetToCopy(ConvertFromParent(rect.LeftTop()));
}

void BView::ConvertToScreen(BPoint* point) const
{
    double x = 0;
    double y = 0;
    kits::ViewAccess::GetOrigin(*this, &x, &y);
    if (fHost != nullptr) {
        x += static_cast<double>(fHost->Frame().left);
        y += static_cast<double>(fHost->Frame().top);
    }
    point->x = static_cast<float>(point->x + x);
    point->y = static_cast<float>(point->y + y);
}

BPoint BView::ConvertToScreen(BPoint point) const
{
    ConvertToScreen(&point);
    return point;
}

BRect BView::ConvertToScreen(BRect rect) const
{
    return rect.OffsetToCopy(ConvertToScreen(rect.LeftTop()));
}

void BView::ConvertFromScreen(BPoint* point) const
{
    double x = 0;
    double y = 0;
    kits::ViewAccess::GetOrigin(*this, &x, &y);
    if (fHost != nullptr) {
        x += static_cast<double>(fHost->Frame().left);
        y += static_cast<double>(fHost->Frame().top);
    }
    point->x = static_cast<float>(point->x - x);
    point->y = static_cast<float>(point->y - y);
}

BPoint BView::ConvertFromScreen(BPoint point) const
{
    ConvertFromScreen(&point);
    return point;
}

BRect BView::ConvertFromScreen(BRect rect) const
{
    return rect.OffsetToCopy(ConvertFromScreen(rect.LeftTop()));
}

// Scrolling

void BView::ScrollBy(float dh, float dv)
{
    if (dh != 0 || dv != 0) {
        ScrollTo(BPoint(static_cast<float>(fScrollX + static_cast<double>(dh)),
                        static_cast<float>(fScrollY + static_cast<double>(dv))));
    }
}

void BView::ScrollTo(float x, float y)
{
    ScrollTo(BPoint(x, y));
}

void BView::ScrollTo(BPoint where)
{
    ScrollToExact(static_cast<double>(where.x), static_cast<double>(where.y));
}

void BView::ScrollToExact(double x, double y)
{
    CheckLock();
    x = std::round(x);
    y = std::round(y);
    const double dx = fScrollX - x;
    const double dy = fScrollY - y;
    if (dx == 0 && dy == 0) {
        return;
    }
    const QRegion seen = fHost != nullptr ? fHost->VisibleTree(*this) : QRegion();
    fScrollX = x;
    fScrollY = y;
    if (fHost != nullptr) {
        fHost->LayoutChanged();
        const QRect box = seen.boundingRect();
        const bool isFar = std::fabs(dx) > box.width() || std::fabs(dy) > box.height();
        if (isFar) {
            fHost->Invalidate(seen);
        } else {
            fHost->Scroll(seen, static_cast<int>(dx), static_cast<int>(dy));
        }
    }
    if (fHorizontalBar != nullptr && dx != 0) {
        fHorizontalBar->TargetScrolled(x);
    }
    if (fVerticalBar != nullptr && dy != 0) {
        fVerticalBar->TargetScrolled(y);
    }
}

BScrollBar* BView::ScrollBar(orientation direction) const
{
    kits::ScrollFollower* bar = direction == B_VERTICAL ? fVerticalBar : fHorizontalBar;
    return bar != nullptr ? bar->Bar() : nullptr;
}

void BView::CopyBits(BRect source, BRect destination)
{
    CheckLock();
    if (fHost == nullptr || !source.IsValid()) {
        return;
    }
    double x = 0;
    double y = 0;
    kits::ViewAccess::GetOrigin(*this, &x, &y);
    const QPoint origin(static_cast<int>(x), static_cast<int>(y));
    const QRect from = kits::PixelsOf(source).translated(origin);
    const QRect to = kits::PixelsOf(destination).translated(origin);
    const QPoint distance = to.topLeft() - from.topLeft();
    fHost->CopyPixels(fHost->VisibleRegion(*this), from, distance.x(), distance.y());
}
