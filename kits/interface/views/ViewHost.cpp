#include "ViewHost.h"

#include "ViewAccess.h"
#include "ViewState.h"
#include "WindowViews.h"
#include "interface/graphics/RegionAccess.h"

#include "server/FrontImage.h"

#include <OS.h>

#include <algorithm>
#include <utility>

namespace kits {

namespace {

constexpr bigtime_t kFrameTime = 1'000'000 / 60;

int UnitsAcross(float extent)
{
    return std::max(0, static_cast<int>(extent) + 1);
}

// The parts of a region lie beside each other, so their shares of the box add up.
bool HasAll(const QRegion& region, const QRect& box)
{
    int64 share = 0;
    for (const QRect& part : region) {
        const QRect common = part & box;
        share += int64{common.width()} * common.height();
    }
    return share == int64{box.width()} * box.height();
}

} // namespace

ViewHost::ViewHost(BWindow* owner, const WindowShape& shape)
    : fOwner(owner), fLink(std::make_unique<WindowLink>(LooperOf(owner), shape)),
      fRoot(std::make_unique<BView>(shape.frame.OffsetToCopy(B_ORIGIN), nullptr, B_FOLLOW_NONE, 0)),
      fFrame(shape.frame)
{
    fScale = fLink->Scale();
    ViewAccess::AttachRoot(*fRoot, this);
}

ViewHost::~ViewHost()
{
    fIsShown = false;
    ViewAccess::DetachRoot(*fRoot);
}

void ViewHost::SetFrame(BRect frame)
{
    const bool isResized = frame.Width() != fFrame.Width() || frame.Height() != fFrame.Height();
    fFrame = frame;
    if (isResized) {
        ViewAccess::SetFrame(*fRoot, frame.OffsetToCopy(B_ORIGIN));
    }
}

void ViewHost::UpdateScale()
{
    const float scale = fLink->Scale();
    if (scale != fScale) {
        fScale = scale;
        LayoutChanged();
        Invalidate(PixelsOf(fRoot->Bounds()));
    }
}

void ViewHost::EnsureCanvas()
{
    const QSize before = fCanvas.Image().size();
    const bool isNew =
        fCanvas.SetSize(UnitsAcross(fFrame.Width()), UnitsAcross(fFrame.Height()), fScale);
    if (isNew) {
        fInvalid = PixelsOf(fRoot->Bounds());
        fDamage = QRegion();
    }
    if (before != fCanvas.Image().size()) {
        fPrepared = nullptr;
    }
}

void ViewHost::PrepareShow()
{
    fIsShown = true;
    fDisabled = 0;
    UpdateScale();
    EnsureCanvas();
    Paint();
}

// What is to be painted

void ViewHost::Invalidate(const QRegion& area)
{
    fInvalid += area & PixelsOf(fRoot->Bounds());
}

void ViewHost::Invalidate(const BView& view, const QRegion& area)
{
    if (area.isEmpty()) {
        return;
    }
    double x = 0;
    double y = 0;
    ViewAccess::GetOrigin(view, &x, &y);
    const QRegion here = area.translated(static_cast<int>(x), static_cast<int>(y));
    // A list that grows invalidates the same place thousands of times in a frame.
    if (HasAll(fInvalid, here.boundingRect())) {
        return;
    }
    const QRegion seen = VisibleTree(view);
    if (!seen.isEmpty()) {
        fInvalid += here & seen;
    }
}

void ViewHost::Enable()
{
    fDisabled = std::max(0, fDisabled - 1);
}

void ViewHost::Paint()
{
    if (!fIsShown || fDisabled > 0 || fPainted != nullptr) {
        return;
    }
    EnsureCanvas();
    fLastPaint = system_time();
    if (!fInvalid.isEmpty()) {
        // What hooks invalidate from here on waits for the next frame.
        const QRegion area = std::exchange(fInvalid, QRegion()) & PixelsOf(fRoot->Bounds());
        fDamage += fCanvas.ToDevice(area);
        fFrames++;
        PaintView(*fRoot, area);
    }
    Present();
}

void ViewHost::PaintIfDue()
{
    if (HasWork() && system_time() >= DueTime()) {
        Paint();
    }
}

bigtime_t ViewHost::DueTime() const
{
    return fLastPaint + kFrameTime;
}

void ViewHost::Present()
{
    fCanvas.Finish();
    if (fDamage.isEmpty() || !fIsShown) {
        return;
    }
    const QRegion damage = std::exchange(fDamage, QRegion());
    if (fLink->Front().Update(fCanvas.Image(), damage)) {
        fLink->Present();
    }
}

// Painting

void ViewHost::PaintView(BView& view, const QRegion& area)
{
    QRegion own = area;
    for (const BView* child : ViewAccess::Children(view)) {
        // Below a child that is not erased itself lies its parent's picture.
        if (!ViewAccess::HidesItself(*child) && child->ViewColor() != B_TRANSPARENT_COLOR) {
            own -= VisibleTree(*child);
        }
    }
    if (!own.isEmpty()) {
        CallDraw(view, own, false);
    }
    PaintChildren(view, area);
    if ((view.Flags() & B_DRAW_ON_CHILDREN) != 0) {
        CallDraw(view, area, true);
    }
}

void ViewHost::PaintChildren(BView& view, const QRegion& area)
{
    const std::vector<BView*>& children = ViewAccess::Children(view);
    for (size_t i = 0; i < children.size(); ++i) {
        BView* child = children[i];
        if (ViewAccess::HidesItself(*child)) {
            continue;
        }
        const QRegion seen = VisibleTree(*child) & area;
        if (!seen.isEmpty()) {
            PaintView(*child, seen);
        }
    }
}

void ViewHost::CallDraw(BView& view, const QRegion& area, bool isAfterChildren)
{
    fPainted = &view;
    fPaintedArea = area;
    LayoutChanged();
    const bool isErased = !isAfterChildren && view.ViewColor() != B_TRANSPARENT_COLOR;
    if (isErased) {
        const rgb_color color = view.ViewColor();
        fCanvas.SetClip(fCanvas.ToDevice(area));
        QPainter& painter = fCanvas.Painter();
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect& rect : fCanvas.Clip()) {
            painter.fillRect(rect, QColor(color.red, color.green, color.blue));
        }
        fPrepared = nullptr;
    }
    if ((view.Flags() & B_WILL_DRAW) != 0 && &view != fRoot.get()) {
        double x = 0;
        double y = 0;
        ViewAccess::GetOrigin(view, &x, &y);
        const QRect box = area.boundingRect();
        const BRect update(static_cast<float>(box.left() - x), static_cast<float>(box.top() - y),
                           static_cast<float>(box.right() - x),
                           static_cast<float>(box.bottom() - y));
        if (isAfterChildren) {
            view.DrawAfterChildren(update);
        } else {
            view.Draw(update);
        }
    }
    fPainted = nullptr;
    LayoutChanged();
}

} // namespace kits
