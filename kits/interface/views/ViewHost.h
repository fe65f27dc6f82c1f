#pragma once

#include "ViewPainter.h"
#include "interface/graphics/Canvas.h"

#include "server/WindowLink.h"

#include <Rect.h>

#include <QRegion>

#include <memory>

class BMessage;
class BView;
class BWindow;

namespace kits {

/// Sees a window's messages before its filters and views do: the tracking of open menus.
class InputInterceptor
{
public:
    virtual ~InputInterceptor() = default;
    /// True when the message is done with. May set another interceptor, or none.
    virtual bool Intercept(BMessage* message) = 0;
    /// Ends what it tracks: the window is hidden or quits.
    virtual void Cancel() = 0;
};

/// Leads the window's messages to `interceptor` first; null ends that. Thread: the window's.
void SetInterceptor(BWindow* window, InputInterceptor* interceptor);

/// What paints a tree of views: the topmost view, the canvas, what is invalid, when to paint.
///
/// A window has one, each open menu one of its own. Thread: that of the window it belongs to, or
/// one that holds its lock.
class ViewHost : public DrawingTarget
{
public:
    /// Makes a host whose topmost view fills `frame` (screen units).
    ViewHost(BWindow* owner, const WindowShape& shape);
    ~ViewHost() override;
    ViewHost(const ViewHost&) = delete;
    ViewHost& operator=(const ViewHost&) = delete;

    BWindow* Owner() const { return fOwner; }
    BView* Root() const { return fRoot.get(); }
    WindowLink& Link() { return *fLink; }
    const WindowLink& Link() const { return *fLink; }
    BRect Frame() const { return fFrame; }

    /// Takes another frame; the topmost view gets its size and, with it, its children theirs.
    void SetFrame(BRect frame);
    /// Fetches the density of the screen anew; everything is painted again when it changed.
    void UpdateScale();

    /// Paints the first frame into the front image, so that the window appears with it.
    void PrepareShow();
    void SetHidden() { fIsShown = false; }
    bool IsShown() const { return fIsShown; }

    // What is to be painted

    void Invalidate(const QRegion& area);
    void Invalidate(const BView& view, const QRegion& area);
    bool NeedsPaint() const { return !fInvalid.isEmpty(); }
    /// Whether something is invalid, or drawn and not yet on the screen.
    bool HasWork() const { return fIsShown && fDisabled == 0 && (NeedsPaint() || HasDamage()); }
    void Disable() { fDisabled++; }
    void Enable();
    /// Paints what is invalid and brings it, and what was drawn before, to the screen.
    void Paint();
    /// The same unless less than a frame's time has passed since the last time.
    void PaintIfDue();
    /// When PaintIfDue() will paint; in system_time().
    bigtime_t DueTime() const;
    /// How often something was painted.
    uint64 CountFrames() const { return fFrames; }
    /// Brings what was drawn outside Draw() to the screen.
    void Present();

    // The views

    /// Called when a view was added, removed, moved, resized, scrolled, shown or hidden.
    void LayoutChanged() { fSerial++; }
    /// Called when a view leaves.
    void ViewGone(const BView* view);
    /// The part of the window that the view may draw into: its frame without its children and what
    /// covers it. Window units.
    QRegion VisibleRegion(const BView& view) const;
    /// The same with the children.
    QRegion VisibleTree(const BView& view) const;
    /// The deepest visible view at a point of the window; null outside.
    BView* ViewAt(BPoint where) const;

    // Drawing

    /// Prepares the canvas for a view: its clip and its origin. Null when nothing of it can be
    /// seen.
    Canvas* BeginDrawing(const BView& view);
    /// Where the view may draw now, in window units.
    QRegion DrawingRegion(const BView& view) const;
    void Drawn(const QRect& device) override;
    /// Moves what is seen of `area` (window units) by a distance; what cannot be moved becomes
    /// invalid.
    void Scroll(const QRegion& area, int dx, int dy);
    /// Copies what is seen of `source` by a distance, within `area`; the rest of the target becomes
    /// invalid. Window units.
    void CopyPixels(const QRegion& area, const QRect& source, int dx, int dy);

private:
    bool HasDamage() const { return !fDamage.isEmpty(); }
    bool CanMove(int dx, int dy) const;
    void MovePixels(const QRegion& target, int dx, int dy);
    void EnsureCanvas();
    void PaintView(BView& view, const QRegion& area);
    void PaintChildren(BView& view, const QRegion& area);
    void CallDraw(BView& view, const QRegion& area, bool isAfterChildren);

    BWindow* const fOwner;
    std::unique_ptr<WindowLink> fLink;
    std::unique_ptr<BView> fRoot;
    BRect fFrame;
    float fScale = 1;
    Canvas fCanvas;
    QRegion fInvalid; // window units
    QRegion fDamage;  // device pixels: drawn, not yet in the front image
    bigtime_t fLastPaint = 0;
    uint64 fFrames = 0;
    int32 fDisabled = 0;
    bool fIsShown = false;

    // The view whose Draw() runs, and what it is to draw.
    const BView* fPainted = nullptr;
    QRegion fPaintedArea;
    // What the canvas is prepared for.
    const BView* fPrepared = nullptr;
    uint64 fPreparedSerial = 0;
    bool fIsPreparedEmpty = false;
    uint64 fSerial = 1;
};

} // namespace kits
