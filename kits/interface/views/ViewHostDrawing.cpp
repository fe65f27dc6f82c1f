#include "ViewHost.h"

#include "ViewAccess.h"
#include "ViewState.h"
#include "interface/graphics/RegionAccess.h"

#include <algorithm>
#include <vector>

// Where views lie in their window, what of them is seen, and what drawing needs to know of that.

namespace kits {

namespace {

// Damage of many small parts costs more to keep apart than to copy.
constexpr int kMaxDamageParts = 48;

// The view's frame in window units, not cut by anything.
QRect BoxOf(const BView& view)
{
    const BView* parent = ViewAccess::TreeParent(view);
    double x = 0;
    double y = 0;
    if (parent != nullptr) {
        ViewAccess::GetOrigin(*parent, &x, &y);
    }
    return PixelsOf(view.Frame()).translated(static_cast<int>(x), static_cast<int>(y));
}

// Whether the view covers what lies below it in the order of siblings.
bool Covers(const BView& view)
{
    return !ViewAccess::HidesItself(view) && view.ViewColor() != B_TRANSPARENT_COLOR;
}

} // namespace

QRegion ViewHost::VisibleTree(const BView& view) const
{
    QRect box = BoxOf(view);
    QRegion covered;
    for (const BView* at = &view; at != nullptr; at = ViewAccess::TreeParent(*at)) {
        const BView* parent = ViewAccess::TreeParent(*at);
        if (ViewAccess::HidesItself(*at)) {
            return {};
        }
        if (parent == nullptr) {
            break;
        }
        box &= BoxOf(*parent);
        const std::vector<BView*>& siblings = ViewAccess::Children(*parent);
        const auto place = std::find(siblings.begin(), siblings.end(), at);
        for (auto later = place == siblings.end() ? place : place + 1; later != siblings.end();
             ++later) {
            if (Covers(**later)) {
                covered += BoxOf(**later) & box;
            }
        }
    }
    return box.isEmpty() ? QRegion() : QRegion(box) - covered;
}

QRegion ViewHost::VisibleRegion(const BView& view) const
{
    QRegion seen = VisibleTree(view);
    for (const BView* child : ViewAccess::Children(view)) {
        if (!ViewAccess::HidesItself(*child)) {
            seen -= BoxOf(*child);
        }
    }
    return seen;
}

BView* ViewHost::ViewAt(BPoint where) const
{
    const QPoint point = PixelsOf(BRect(where, where)).topLeft();
    BView* found = nullptr;
    BView* at = fRoot.get();
    while (at != nullptr && BoxOf(*at).contains(point)) {
        found = at;
        const std::vector<BView*>& children = ViewAccess::Children(*at);
        const auto hit =
            std::find_if(children.rbegin(), children.rend(), [point](const BView* child) {
                return !ViewAccess::HidesItself(*child) && BoxOf(*child).contains(point);
            });
        at = hit != children.rend() ? *hit : nullptr;
    }
    return found != fRoot.get() ? found : nullptr;
}

void ViewHost::ViewGone(const BView* view)
{
    LayoutChanged();
    if (fPrepared == view) {
        fPrepared = nullptr;
    }
    if (fPainted == view) {
        fPainted = nullptr;
    }
}

// Drawing

QRegion ViewHost::DrawingRegion(const BView& view) const
{
    QRegion region = fPainted == &view ? fPaintedArea : VisibleRegion(view);
    const std::optional<BRegion>& clip = ViewAccess::State(view).now.clip;
    if (clip) {
        double x = 0;
        double y = 0;
        ViewAccess::GetOrigin(view, &x, &y);
        region &= RegionAccess::Get(*clip).translated(static_cast<int>(x), static_cast<int>(y));
    }
    return region;
}

Canvas* ViewHost::BeginDrawing(const BView& view)
{
    if (!fIsShown || fCanvas.IsNull()) {
        return nullptr;
    }
    if (fPrepared != &view || fPreparedSerial != fSerial) {
        const QRegion device = fCanvas.ToDevice(DrawingRegion(view));
        fPrepared = &view;
        fPreparedSerial = fSerial;
        fIsPreparedEmpty = device.isEmpty();
        fCanvas.SetClip(device);
    }
    return fIsPreparedEmpty ? nullptr : &fCanvas;
}

void ViewHost::Drawn(const QRect& device)
{
    if (fPainted != nullptr && fPainted == fPrepared) {
        return; // the whole area being painted is damage already
    }
    fDamage += device & fCanvas.Clip().boundingRect();
    if (fDamage.rectCount() > kMaxDamageParts) {
        fDamage = fDamage.boundingRect();
    }
}

bool ViewHost::CanMove(int dx, int dy) const
{
    return fIsShown && !fCanvas.IsNull() && fPainted == nullptr && fCanvas.IsWhole(dx) &&
           fCanvas.IsWhole(dy);
}

void ViewHost::Scroll(const QRegion& area, int dx, int dy)
{
    const QRegion target = area & area.translated(dx, dy);
    if (!CanMove(dx, dy) || target.isEmpty()) {
        fInvalid += area;
        return;
    }
    // What was invalid there moves along with the pixels.
    const QRegion stale = fInvalid & area;
    fInvalid -= area;
    fInvalid += stale.translated(dx, dy) & area;
    fInvalid += area - target;
    MovePixels(target, dx, dy);
}

void ViewHost::CopyPixels(const QRegion& area, const QRect& source, int dx, int dy)
{
    const QRegion wanted = area & source.translated(dx, dy);
    const QRegion target = (area & source).translated(dx, dy) & area;
    if (!CanMove(dx, dy)) {
        fInvalid += wanted;
        return;
    }
    const QRegion stale = (fInvalid & source).translated(dx, dy) & target;
    fInvalid -= target;
    fInvalid += stale;
    fInvalid += wanted - target;
    MovePixels(target, dx, dy);
}

void ViewHost::MovePixels(const QRegion& target, int dx, int dy)
{
    fCanvas.Finish();
    std::vector<QRect> rects(target.begin(), target.end());
    if (rects.size() > 1 && dx != 0 && dy != 0) {
        fInvalid += target; // no order of the parts is right for every pair of them
        return;
    }
    // In an order in which no part is written over before it was read.
    if (dy > 0 || (dy == 0 && dx > 0)) {
        std::reverse(rects.begin(), rects.end());
    }
    for (const QRect& rect : rects) {
        const QRect device = fCanvas.ToDevice(rect);
        fCanvas.Move(device, fCanvas.Edge(dx), fCanvas.Edge(dy));
        fDamage += device;
    }
}

} // namespace kits
