#include <ScrollBar.h>

#include "ScrollPress.h"
#include "interface/views/Look.h"
#include "interface/views/ScrollFollower.h"
#include "interface/views/ViewAccess.h"

#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

using kits::ScrollGeometry;
using Part = ScrollGeometry::Part;

namespace {

constexpr bigtime_t kRepeatDelay = 300'000;
constexpr bigtime_t kRepeatInterval = 40'000;

constexpr rgb_color kTrough = {198, 198, 198, 255};
constexpr rgb_color kDisabledTrough = {224, 224, 224, 255};
constexpr rgb_color kPressed = {184, 184, 184, 255};

} // namespace

/// A scroll bar as its target sees it.
class kits::BarFollower : public ScrollFollower
{
public:
    explicit BarFollower(BScrollBar& bar) : fBar(bar) {}

    // ScrollFollower
    void TargetScrolled(double place) override { fBar.SetValue(static_cast<float>(place)); }
    void WheelTurned(BMessage* message) override { fBar.MessageReceived(message); }
    void TargetGone() override { fBar.fTarget = nullptr; }
    BScrollBar* Bar() override { return &fBar; }

private:
    BScrollBar& fBar;
};

BScrollBar::BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
                       orientation direction)
    : BView(frame, name,
            direction == B_VERTICAL ? B_FOLLOW_TOP_BOTTOM | B_FOLLOW_RIGHT
                                    : B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE | B_FRAME_EVENTS),
      fOrientation(direction), fMin(std::min(min, max)), fMax(std::max(min, max)),
      fFollower(std::make_unique<kits::BarFollower>(*this))
{
    SetViewColor(B_TRANSPARENT_COLOR);
    fValue = fMin;
    SetTarget(target);
}

BScrollBar::~BScrollBar()
{
    SetTarget(static_cast<BView*>(nullptr));
}

void BScrollBar::SetValue(float value)
{
    // Whole units only: rows must meet the view's edges at the same place after any scrolling.
    value = std::clamp(std::round(value), fMin, fMax);
    if (value == fValue) {
        return;
    }
    fValue = value;
    Redraw();
    ValueChanged(fValue);
}

void BScrollBar::SetProportion(float proportion)
{
    proportion = std::clamp(proportion, 0.0f, 1.0f);
    if (proportion != fProportion) {
        fProportion = proportion;
        Redraw();
    }
}

void BScrollBar::SetRange(float min, float max)
{
    max = std::max(min, max);
    if (min == fMin && max == fMax) {
        return;
    }
    fMin = min;
    fMax = max;
    Redraw();
    SetValue(fValue);
}

void BScrollBar::GetRange(float* min, float* max) const
{
    if (min != nullptr) {
        *min = fMin;
    }
    if (max != nullptr) {
        *max = fMax;
    }
}

void BScrollBar::SetSteps(float smallStep, float largeStep)
{
    fSmallStep = smallStep;
    fLargeStep = largeStep;
}

void BScrollBar::GetSteps(float* smallStep, float* largeStep) const
{
    if (smallStep != nullptr) {
        *smallStep = fSmallStep;
    }
    if (largeStep != nullptr) {
        *largeStep = fLargeStep;
    }
}

void BScrollBar::SetTarget(BView* target)
{
    if (target == fTarget) {
        return;
    }
    if (fTarget != nullptr) {
        kits::ViewAccess::SetScrollBar(*fTarget, fOrientation, nullptr);
    }
    fTarget = target;
    if (fTarget == nullptr) {
        return;
    }
    fTargetName = fTarget->Name() != nullptr ? fTarget->Name() : "";
    kits::ViewAccess::SetScrollBar(*fTarget, fOrientation, fFollower.get());
    ValueChanged(fValue);
}

void BScrollBar::SetTarget(const char* targetName)
{
    fTargetName = targetName != nullptr ? targetName : "";
    BView* found = Window() != nullptr ? Window()->FindView(fTargetName.c_str()) : nullptr;
    SetTarget(found);
}

void BScrollBar::ValueChanged(float newValue)
{
    if (fTarget == nullptr) {
        return;
    }
    BPoint place = fTarget->Bounds().LeftTop();
    float& along = fOrientation == B_VERTICAL ? place.y : place.x;
    if (along != newValue) {
        along = newValue;
        fTarget->ScrollTo(place);
    }
}

// BView

void BScrollBar::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (fTarget == nullptr && !fTargetName.empty()) {
        SetTarget(std::string(fTargetName).c_str()); // it may be in the window now
    }
}

void BScrollBar::DetachedFromWindow()
{
    fPress.reset();
    BView::DetachedFromWindow();
}

void BScrollBar::MessageReceived(BMessage* message)
{
    int32 ticker = 0;
    float turned = 0;
    switch (message->what) {
    case kits::kTick:
        message->FindInt32("ticker", &ticker);
        if (fPress && fPress->repeating && fPress->repeating->Id() == ticker) {
            fPress->repeating->NextTick();
            StepByPart();
        }
        break;
    case B_MOUSE_WHEEL_CHANGED:
        message->FindFloat("be:wheel_delta_y", &turned);
        if (turned == 0) {
            message->FindFloat("be:wheel_delta_x", &turned);
        }
        SetValue(fValue + turned * fSmallStep);
        break;
    default:
        BView::MessageReceived(message);
    }
}

void BScrollBar::MouseDown(BPoint where)
{
    const ScrollGeometry geometry = Geometry();
    const float position = fOrientation == B_VERTICAL ? where.y : where.x;
    const Part part = IsUsable() ? geometry.PartAt(position) : Part::kNone;
    if (part == Part::kNone || fPress) {
        return;
    }
    fPress = std::make_unique<kits::ScrollPress>(part, position, geometry.ThumbStart());
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
    if (part != Part::kThumb) {
        fPress->repeating =
            std::make_unique<kits::Ticker>(BMessenger(this), kRepeatDelay, kRepeatInterval);
        StepByPart();
    }
    Redraw();
}

void BScrollBar::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    BView::MouseMoved(where, transit, dragged);
    if (!fPress) {
        return;
    }
    const float position = fOrientation == B_VERTICAL ? where.y : where.x;
    fPress->pointer = position;
    if (fPress->part == Part::kThumb) {
        // Wherever the pointer strays meanwhile: the thumb follows and never snaps back.
        SetValue(Geometry().ValueOfThumbAt(position - fPress->grip));
        return;
    }
    const bool isInside = Bounds().Contains(where);
    if (isInside != fPress->isInside) {
        fPress->isInside = isInside;
        Redraw();
    }
}

void BScrollBar::MouseUp(BPoint where)
{
    BView::MouseUp(where);
    EndTracking();
}

void BScrollBar::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    Redraw();
}

void BScrollBar::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (!active) {
        EndTracking();
    }
}

void BScrollBar::GetPreferredSize(float* width, float* height)
{
    *width = fOrientation == B_VERTICAL ? B_V_SCROLL_BAR_WIDTH : Bounds().Width();
    *height = fOrientation == B_VERTICAL ? Bounds().Height() : B_H_SCROLL_BAR_HEIGHT;
}

// One step of the part that is held; the trough stops once the thumb is under the pointer.
void BScrollBar::StepByPart()
{
    if (!fPress->isInside) {
        return;
    }
    const Part part = fPress->part;
    const bool isArrow = part == Part::kLessArrow || part == Part::kMoreArrow;
    if (Geometry().PartAt(fPress->pointer) != part) {
        return;
    }
    const bool isBack = part == Part::kLessArrow || part == Part::kLessPage;
    const float step = isArrow ? fSmallStep : fLargeStep;
    SetValue(fValue + (isBack ? -step : step));
}

void BScrollBar::EndTracking()
{
    if (fPress) {
        fPress.reset();
        Redraw();
    }
}

ScrollGeometry BScrollBar::Geometry() const
{
    const BRect bounds = Bounds();
    const bool isUpright = fOrientation == B_VERTICAL;
    const float length = (isUpright ? bounds.Height() : bounds.Width()) + 1;
    const float breadth = (isUpright ? bounds.Width() : bounds.Height()) + 1;
    return ScrollGeometry(length, breadth, {fMin, fMax, fValue, fProportion});
}

bool BScrollBar::IsUsable() const
{
    return fMax > fMin;
}

void BScrollBar::Redraw()
{
    if (Window() != nullptr) {
        Invalidate();
    }
}

// Drawing

// The part of the bar from `start` on, `length` units long, as a rectangle of the view.
BRect BScrollBar::Along(float start, float length) const
{
    const BRect bounds = Bounds();
    if (fOrientation == B_VERTICAL) {
        return BRect(bounds.left, bounds.top + start, bounds.right,
                     bounds.top + start + length - 1);
    }
    return BRect(bounds.left + start, bounds.top, bounds.left + start + length - 1, bounds.bottom);
}

void BScrollBar::Draw(BRect)
{
    const ScrollGeometry geometry = Geometry();
    const float arrow = geometry.ArrowLength();
    const float length = arrow * 2 + geometry.TroughLength();
    DrawTrough(Along(arrow, geometry.TroughLength()));
    DrawArrow(Along(0, arrow), true);
    DrawArrow(Along(length - arrow, arrow), false);
    if (geometry.HasThumb()) {
        DrawThumb(Along(geometry.ThumbStart(), geometry.ThumbLength()));
    }
    SetHighColor(IsUsable() ? kits::look::kOutline : kits::look::kShadow);
    StrokeRect(Bounds());
}

void BScrollBar::DrawTrough(BRect trough)
{
    if (!trough.IsValid()) {
        return;
    }
    kits::look::Fill(this, trough, IsUsable() ? kTrough : kDisabledTrough);
    if (!IsUsable()) {
        return;
    }
    // A shadow along the near edge sets the trough below the thumb.
    SetHighColor(kits::look::kShadow);
    if (fOrientation == B_VERTICAL) {
        StrokeLine(BPoint(trough.left + 1, trough.top), BPoint(trough.left + 1, trough.bottom));
    } else {
        StrokeLine(BPoint(trough.left, trough.top + 1), BPoint(trough.right, trough.top + 1));
    }
}

void BScrollBar::DrawArrow(BRect box, bool isLess)
{
    using kits::look::Arrow;
    if (box.Width() < 3 || box.Height() < 3) {
        return;
    }
    const Part part = isLess ? Part::kLessArrow : Part::kMoreArrow;
    const bool isDown = fPress && fPress->part == part && fPress->isInside;
    const bool isAtEnd = fValue == (isLess ? fMin : fMax);
    const BRect face = ArrowFace(box, isLess);
    kits::look::Fill(this, face, isDown ? kPressed : kits::look::kGround);
    if (isDown) {
        kits::look::Frame(this, face, kits::look::kShadow, kits::look::kSoftShine);
    } else {
        kits::look::Frame(this, face, kits::look::kShine, kits::look::kSoftShadow);
    }
    const Arrow direction = fOrientation == B_VERTICAL ? (isLess ? Arrow::kUp : Arrow::kDown)
                                                       : (isLess ? Arrow::kLeft : Arrow::kRight);
    const rgb_color color = IsUsable() && !isAtEnd ? kits::look::kOutline : kits::look::kShadow;
    kits::look::ArrowHead(this, isDown ? face.OffsetByCopy(1, 1) : face, direction, 4, color);
}

// The outline is shared with the trough and drawn as one line.
BRect BScrollBar::ArrowFace(BRect box, bool isLess) const
{
    if (fOrientation == B_VERTICAL) {
        box.InsetBy(1, 0);
        (isLess ? box.top : box.bottom) += isLess ? 1.0f : -1.0f;
    } else {
        box.InsetBy(0, 1);
        (isLess ? box.left : box.right) += isLess ? 1.0f : -1.0f;
    }
    return box;
}

void BScrollBar::DrawThumb(BRect thumb)
{
    const bool isHeld = fPress && fPress->part == Part::kThumb;
    SetHighColor(kits::look::kOutline);
    StrokeRect(thumb);
    BRect face = thumb.InsetByCopy(1, 1);
    kits::look::Fill(this, face, isHeld ? kits::look::kSoftShine : kits::look::kGround);
    kits::look::Frame(this, face, kits::look::kShine, kits::look::kSoftShadow);
    DrawGrip(face);
}

// Three notches across the middle of the thumb, where it is long enough for them.
void BScrollBar::DrawGrip(BRect face)
{
    const bool isUpright = fOrientation == B_VERTICAL;
    if ((isUpright ? face.Height() : face.Width()) < 14) {
        return;
    }
    const float middle =
        std::floor(isUpright ? (face.top + face.bottom) / 2 : (face.left + face.right) / 2);
    for (int32 notch = -1; notch <= 1; notch++) {
        const float place = middle + 3.0f * static_cast<float>(notch);
        const BRect line = isUpright ? BRect(face.left + 3, place, face.right - 3, place)
                                     : BRect(place, face.top + 3, place, face.bottom - 3);
        kits::look::Fill(this, line, kits::look::kShadow);
        kits::look::Fill(this, line.OffsetByCopy(isUpright ? 0 : 1, isUpright ? 1 : 0),
                         kits::look::kShine);
    }
}

void BScrollBar::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kScrollBar;
}
