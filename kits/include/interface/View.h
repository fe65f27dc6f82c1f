#pragma once

#include <Font.h>
#include <GraphicsDefs.h>
#include <Handler.h>
#include <InterfaceDefs.h>
#include <Rect.h>

#include <memory>
#include <string>
#include <vector>

class BBitmap;
class BMessage;
class BRegion;
class BScrollBar;
class BWindow;

namespace kits {
class ViewAccess;
class ViewHost;
struct ViewState;
} // namespace kits

// View flags.
constexpr uint32 B_FULL_UPDATE_ON_RESIZE = 0x80000000;
constexpr uint32 B_WILL_DRAW = 0x20000000;
constexpr uint32 B_PULSE_NEEDED = 0x10000000;
constexpr uint32 B_NAVIGABLE_JUMP = 0x08000000;
constexpr uint32 B_FRAME_EVENTS = 0x04000000;
constexpr uint32 B_NAVIGABLE = 0x02000000;
constexpr uint32 B_SUBPIXEL_PRECISE = 0x01000000;
constexpr uint32 B_DRAW_ON_CHILDREN = 0x00800000;
constexpr uint32 B_INPUT_METHOD_AWARE = 0x00400000;

// Resizing modes: for each side of the view, the side of the parent that it follows.
constexpr uint32 kViewTop = 1;
constexpr uint32 kViewLeft = 2;
constexpr uint32 kViewBottom = 3;
constexpr uint32 kViewRight = 4;
constexpr uint32 kViewCenter = 5;

constexpr uint32 FollowRule(uint32 top, uint32 left, uint32 bottom, uint32 right)
{
    return (top << 12) | (left << 8) | (bottom << 4) | right;
}

constexpr uint32 B_FOLLOW_NONE = 0;
constexpr uint32 B_FOLLOW_ALL_SIDES = FollowRule(kViewTop, kViewLeft, kViewBottom, kViewRight);
constexpr uint32 B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES;
constexpr uint32 B_FOLLOW_LEFT = FollowRule(0, kViewLeft, 0, kViewLeft);
constexpr uint32 B_FOLLOW_RIGHT = FollowRule(0, kViewRight, 0, kViewRight);
constexpr uint32 B_FOLLOW_LEFT_RIGHT = FollowRule(0, kViewLeft, 0, kViewRight);
constexpr uint32 B_FOLLOW_H_CENTER = FollowRule(0, kViewCenter, 0, kViewCenter);
constexpr uint32 B_FOLLOW_TOP = FollowRule(kViewTop, 0, kViewTop, 0);
constexpr uint32 B_FOLLOW_BOTTOM = FollowRule(kViewBottom, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_TOP_BOTTOM = FollowRule(kViewTop, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_V_CENTER = FollowRule(kViewCenter, 0, kViewCenter, 0);

// For SetEventMask and SetMouseEventMask.
enum : uint32 { B_POINTER_EVENTS = 0x00000001, B_KEYBOARD_EVENTS = 0x00000002 };
enum : uint32 {
    B_LOCK_WINDOW_FOCUS = 0x00000001,
    B_SUSPEND_VIEW_FOCUS = 0x00000002,
    B_NO_POINTER_HISTORY = 0x00000004,
    B_FULL_POINTER_HISTORY = 0x00000008,
};

enum cap_mode { B_ROUND_CAP = 0, B_BUTT_CAP = 3, B_SQUARE_CAP = 4 };
enum join_mode { B_ROUND_JOIN = 0, B_MITER_JOIN, B_BEVEL_JOIN, B_BUTT_JOIN, B_SQUARE_JOIN };

/// A part of a window: a rectangle that draws itself and takes input; may hold further views.
///
/// Coordinates are pixel centres; a rectangle includes its right and bottom edge.
/// Thread: once attached, call with the window locked; hooks run locked on the window's thread.
/// What the views draw outside Draw() is on the screen after the message being handled, or after
/// Flush(). Units: view units, one pixel at scale 1. Ownership: a view owns its children; the
/// window owns the topmost ones. RemoveChild returns to the caller.
class BView : public BHandler
{
public:
    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    ~BView() override;

    // Hooks

    virtual void AttachedToWindow();
    /// Called after the children's AttachedToWindow().
    virtual void AllAttached();
    virtual void DetachedFromWindow();
    virtual void AllDetached();
    void MessageReceived(BMessage* message) override;

    /// Draws what lies in `updateRect`; the view colour has been filled in before.
    virtual void Draw(BRect updateRect);
    /// Draws over the children; asked of views with B_DRAW_ON_CHILDREN.
    virtual void DrawAfterChildren(BRect updateRect);
    virtual void MouseDown(BPoint where);
    virtual void MouseUp(BPoint where);
    virtual void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage);
    virtual void WindowActivated(bool active);
    virtual void KeyDown(const char* bytes, int32 byteCount);
    virtual void KeyUp(const char* bytes, int32 byteCount);
    virtual void Pulse();
    /// Asked of views with B_FRAME_EVENTS.
    virtual void FrameMoved(BPoint newPosition);
    virtual void FrameResized(float newWidth, float newHeight);
    /// Called by the scroll view that made this view its target.
    virtual void TargetedByScrollView(class BScrollView* scrollView);

    // The tree

    /// Adopts `child`, in front of `before` or at the end.
    virtual void AddChild(BView* child, BView* before = nullptr);
    virtual bool RemoveChild(BView* child);
    bool RemoveSelf();
    int32 CountChildren() const;
    BView* ChildAt(int32 index) const;
    BView* NextSibling() const;
    BView* PreviousSibling() const;
    /// The view around this one; null for those that the window holds itself.
    BView* Parent() const;
    /// Finds the view of that name among this one and those below, in tree order.
    BView* FindView(const char* name) const;
    BWindow* Window() const;

    // Geometry

    BRect Bounds() const;
    BRect Frame() const { return fFrame; }
    BPoint LeftTop() const { return fFrame.LeftTop(); }
    void MoveBy(float dh, float dv);
    void MoveTo(BPoint where);
    void MoveTo(float x, float y);
    void ResizeBy(float dh, float dv);
    /// A width or height below zero is kept; the view is then not seen.
    void ResizeTo(float width, float height);
    virtual void GetPreferredSize(float* width, float* height);
    virtual void ResizeToPreferred();
    virtual void SetResizingMode(uint32 mode);
    uint32 ResizingMode() const { return fResizingMode; }
    virtual void SetFlags(uint32 flags);
    uint32 Flags() const { return fFlags; }

    void ConvertToParent(BPoint* point) const;
    BPoint ConvertToParent(BPoint point) const;
    void ConvertFromParent(BPoint* point) const;
    BPoint ConvertFromParent(BPoint point) const;
    BRect ConvertToParent(BRect rect) const;
    BRect ConvertFromParent(BRect rect) const;
    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertFromScreen(BRect rect) const;

    virtual void Show();
    virtual void Hide();
    /// Whether the view, a parent or the window is hidden.
    bool IsHidden() const;
    bool IsHidden(const BView* lookingFrom) const;

    // Scrolling

    void ScrollBy(float dh, float dv);
    void ScrollTo(float x, float y);
    /// Makes `where` the view's left top; what stays visible is moved, the rest drawn.
    virtual void ScrollTo(BPoint where);
    /// The scroll bar whose target this view is.
    BScrollBar* ScrollBar(orientation direction) const;
    /// Moves drawn pixels within the view; what cannot be copied becomes invalid.
    void CopyBits(BRect source, BRect destination);

    // Focus and input

    bool IsFocus() const;
    virtual void MakeFocus(bool focus = true);
    /// Events that this view gets wherever they happen in the window, until changed.
    status_t SetEventMask(uint32 mask, uint32 options = 0);
    uint32 EventMask() const { return fEventMask; }
    /// The same from a MouseDown until the last button is released.
    status_t SetMouseEventMask(uint32 mask, uint32 options = 0);
    /// Where the pointer is, in this view's coordinates, and what buttons are down.
    void GetMouse(BPoint* location, uint32* buttons, bool checkMessageQueue = true);

    // Drawing state

    void PushState();
    void PopState();
    virtual void SetViewColor(rgb_color color);
    void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    rgb_color ViewColor() const { return fViewColor; }
    virtual void SetHighColor(rgb_color color);
    void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    rgb_color HighColor() const;
    virtual void SetLowColor(rgb_color color);
    void SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    rgb_color LowColor() const;
    virtual void SetDrawingMode(drawing_mode mode);
    drawing_mode DrawingMode() const;
    void SetBlendingMode(source_alpha source, alpha_function alpha);
    virtual void SetPenSize(float size);
    float PenSize() const;
    void SetLineMode(cap_mode cap, join_mode join, float miterLimit = 10);
    virtual void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
    void GetFont(BFont* font) const;
    void SetFontSize(float size);
    void GetFontHeight(font_height* height) const;
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const;
    void TruncateString(BString* text, uint32 mode, float width) const;
    /// Where drawing may happen at this moment, in view coordinates.
    void GetClippingRegion(BRegion* region) const;
    /// Limits drawing to `region` as well; null lifts that.
    virtual void ConstrainClippingRegion(BRegion* region);

    // Drawing

    void MovePenTo(BPoint point);
    void MovePenTo(float x, float y);
    void MovePenBy(float x, float y);
    BPoint PenLocation() const;
    void StrokeLine(BPoint to, ::pattern p = B_SOLID_HIGH);
    void StrokeLine(BPoint from, BPoint to, ::pattern p = B_SOLID_HIGH);
    void BeginLineArray(int32 count);
    void AddLine(BPoint from, BPoint to, rgb_color color);
    void EndLineArray();
    void StrokeRect(BRect rect, ::pattern p = B_SOLID_HIGH);
    void FillRect(BRect rect, ::pattern p = B_SOLID_HIGH);
    void FillRegion(BRegion* region, ::pattern p = B_SOLID_HIGH);
    void InvertRect(BRect rect);
    void StrokeRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    void FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    void StrokeEllipse(BRect rect, ::pattern p = B_SOLID_HIGH);
    void StrokeEllipse(BPoint center, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    void FillEllipse(BRect rect, ::pattern p = B_SOLID_HIGH);
    void FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    void StrokeTriangle(BPoint a, BPoint b, BPoint c, ::pattern p = B_SOLID_HIGH);
    void FillTriangle(BPoint a, BPoint b, BPoint c, ::pattern p = B_SOLID_HIGH);
    void StrokePolygon(const BPoint* points, int32 count, bool closed = true,
                       ::pattern p = B_SOLID_HIGH);
    void FillPolygon(const BPoint* points, int32 count, ::pattern p = B_SOLID_HIGH);
    /// Draws from the pen's place, the base line's start, and moves the pen to the end.
    void DrawString(const char* string);
    void DrawString(const char* string, int32 length);
    void DrawString(const char* string, BPoint location);
    void DrawString(const char* string, int32 length, BPoint location);
    void DrawBitmap(const BBitmap* bitmap);
    void DrawBitmap(const BBitmap* bitmap, BPoint where);
    void DrawBitmap(const BBitmap* bitmap, BRect destination);
    void DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination);
    void DrawBitmapAsync(const BBitmap* bitmap, BPoint where);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect destination);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect source, BRect destination);

    // Updating

    void Invalidate();
    void Invalidate(BRect rect);
    void Invalidate(const BRegion* region);
    /// Brings what was drawn to the screen.
    void Flush() const;
    void Sync() const;

private:
    friend class kits::ViewAccess;
    friend class kits::ViewHost;

    friend class BScrollBar; // tells which bar scrolls the view

    void AttachTree(kits::ViewHost* host);
    void SetHost(kits::ViewHost* host);
    void TellAttached();
    void TellAllAttached();
    void DetachTree();
    void TellDetached();
    void TellAllDetached();
    void LeaveHost();
    void SetFrame(BRect frame);
    void FollowParent(float dh, float dv);
    void ScrollToExact(double x, double y);
    void VisibilityChanged();
    void CheckLock() const;

    BRect fFrame; // in the parent's coordinates
    // Where Bounds().LeftTop() lies; kept wider than float so that a million rows stay exact.
    double fScrollX = 0;
    double fScrollY = 0;
    uint32 fFlags;
    uint32 fResizingMode;
    uint32 fEventMask = 0;
    uint32 fMouseEventMask = 0;
    int32 fHideLevel = 0;
    rgb_color fViewColor = {255, 255, 255, 255};
    BView* fParent = nullptr;
    std::vector<BView*> fChildren; // owned
    kits::ViewHost* fHost = nullptr;
    BScrollBar* fHorizontalBar = nullptr;
    BScrollBar* fVerticalBar = nullptr;
    std::unique_ptr<kits::ViewState> fState; // what PushState saves
};
