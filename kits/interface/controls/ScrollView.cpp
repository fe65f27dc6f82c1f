#include <ScrollView.h>

#include "interface/views/Look.h"

#include <Window.h>

namespace {

float Breadth(border_style border)
{
    switch (border) {
    case B_FANCY_BORDER:
        return 2;
    case B_PLAIN_BORDER:
        return 1;
    default:
        return 0;
    }
}

// The frame around a target that stays where it is.
BRect FrameAround(const BView* target, bool horizontal, bool vertical, border_style border)
{
    BRect frame = target != nullptr ? target->Frame() : BRect(0, 0, 80, 240);
    if (horizontal) {
        frame.bottom += B_H_SCROLL_BAR_HEIGHT;
    }
    if (vertical) {
        frame.right += B_V_SCROLL_BAR_WIDTH;
    }
    const float breadth = Breadth(border);
    frame.InsetBy(-breadth, -breadth);
    if (breadth == 0) {
        // With a border the bars' outer lines lie upon it.
        frame.bottom += horizontal ? 1.0f : 0.0f;
        frame.right += vertical ? 1.0f : 0.0f;
    }
    return frame;
}

} // namespace

BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags,
                         bool horizontal, bool vertical, border_style border)
    : BView(FrameAround(target, horizontal, vertical, border), name, resizingMode,
            flags | B_WILL_DRAW | B_FRAME_EVENTS),
      fTarget(target), fBorder(border)
{
    SetViewColor(kits::look::kGround);
    const float breadth = Breadth(border);
    BRect inside = Bounds().InsetByCopy(breadth, breadth);
    if (target != nullptr) {
        target->MoveTo(breadth, breadth);
        AddChild(target);
        inside = target->Frame();
    }
    const float overlap = breadth > 0 ? 1.0f : 0.0f;
    if (vertical) {
        const float left = inside.right + 1;
        fVerticalBar = new BScrollBar(BRect(left, inside.top - overlap, left + B_V_SCROLL_BAR_WIDTH,
                                            inside.bottom + (horizontal ? 1.0f : overlap)),
                                      "_VSB_", target, 0, 1000, B_VERTICAL);
        AddChild(fVerticalBar); // adopted
    }
    if (horizontal) {
        const float top = inside.bottom + 1;
        fHorizontalBar = new BScrollBar(BRect(inside.left - overlap, top,
                                              inside.right + (vertical ? 1.0f : overlap),
                                              top + B_H_SCROLL_BAR_HEIGHT),
                                        "_HSB_", target, 0, 1000, B_HORIZONTAL);
        AddChild(fHorizontalBar); // adopted
    }
    if (target != nullptr) {
        target->TargetedByScrollView(this);
    }
}

BScrollBar* BScrollView::ScrollBar(orientation direction) const
{
    return direction == B_VERTICAL ? fVerticalBar : fHorizontalBar;
}

void BScrollView::SetBorder(border_style border)
{
    if (border != fBorder) {
        fBorder = border;
        Invalidate();
    }
}

status_t BScrollView::SetBorderHighlighted(bool highlighted)
{
    if (fBorder != B_FANCY_BORDER) {
        return B_ERROR;
    }
    if (highlighted != fIsHighlighted) {
        fIsHighlighted = highlighted;
        InvalidateBorder();
    }
    return B_OK;
}

void BScrollView::SetTarget(BView* target)
{
    if (target == fTarget) {
        return;
    }
    BView* old = fTarget;
    fTarget = target;
    for (BScrollBar* bar : {fVerticalBar, fHorizontalBar}) {
        if (bar != nullptr) {
            bar->SetTarget(target);
        }
    }
    if (old != nullptr) {
        old->TargetedByScrollView(nullptr);
        RemoveChild(old);
    }
    if (target != nullptr) {
        const float breadth = Breadth(fBorder);
        target->MoveTo(breadth, breadth);
        AddChild(target);
        target->TargetedByScrollView(this);
    }
}

void BScrollView::Draw(BRect)
{
    const BRect bounds = Bounds();
    switch (fBorder) {
    case B_FANCY_BORDER:
        if (fIsHighlighted && Window() != nullptr && Window()->IsActive()) {
            SetHighColor(kits::look::kFocus);
            StrokeRect(bounds);
        } else {
            kits::look::SunkenFrame(this, bounds);
        }
        SetHighColor(kits::look::kOutline);
        StrokeRect(bounds.InsetByCopy(1, 1));
        break;
    case B_PLAIN_BORDER:
        SetHighColor(kits::look::kOutline);
        StrokeRect(bounds);
        break;
    default:
        break;
    }
}

void BScrollView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    // The old border may be anywhere inside now.
    Invalidate();
}

void BScrollView::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (fIsHighlighted) {
        InvalidateBorder();
    }
}

void BScrollView::GetPreferredSize(float* width, float* height)
{
    *width = Bounds().Width();
    *height = Bounds().Height();
}

void BScrollView::InvalidateBorder()
{
    const BRect bounds = Bounds();
    const float inner = Breadth(fBorder) - 1;
    Invalidate(BRect(bounds.left, bounds.top, bounds.right, bounds.top + inner));
    Invalidate(BRect(bounds.left, bounds.bottom - inner, bounds.right, bounds.bottom));
    Invalidate(BRect(bounds.left, bounds.top, bounds.left + inner, bounds.bottom));
    Invalidate(BRect(bounds.right - inner, bounds.top, bounds.right, bounds.bottom));
}
