#pragma once

#include <Handler.h>
#include <InterfaceDefs.h>
#include <Rect.h>
#include <ViewConstants.h>
#include <ViewDrawing.h>

#include <vector>

class BBitmap;
class BCursor;
class BMessage;
class BRegion;
class BScrollBar;
class BScrollView;
class BToolTip;
class BWindow;
struct BInputDescription;
struct BViewDescription;

namespace kits {
class ScrollFollower;
class ViewHost;
} // namespace kits

/// A part of a window: a rectangle that draws itself and takes input; may hold further views.
///
/// Coordinates are pixel centres; a rectangle includes its right and bottom edge.
/// Thread: once attached, call with the window locked; hooks run locked on the window's thread.
/// What the views draw outside Draw() is on the screen after the message being handled, or after
/// Flush(). Units: view units, one pixel at scale 1. Ownership: a view owns its children; the
/// window owns the topmost ones. RemoveChild returns to the caller.
class BView : public BHandler, public kits::ViewDrawing
{
public:
    /// Makes a view of a `frame` in its parent's coordinates, rounded to whole units.
    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    /// Leaves its parent and deletes its children.
    ~BView() override;

    // Hooks. They do nothing here unless they say otherwise.

    /// Called once the view is in a window, before its children's.
    virtual void AttachedToWindow();
    /// Called after the children's AttachedToWindow().
    virtual void AllAttached();
    /// Called while the view still is in the window that it is about to leave.
    virtual void DetachedFromWindow();
    /// Called after the children's DetachedFromWindow().
    virtual void AllDetached();
    /// Scrolls by the wheel where a scroll bar targets the view; passes the rest on.
    void MessageReceived(BMessage* message) override;
    /// Draws what lies in `updateRect`; the view colour has been filled in before.
    virtual void Draw(BRect updateRect);
    /// Draws over the children; asked of views with B_DRAW_ON_CHILDREN.
    virtual void DrawAfterChildren(BRect updateRect);
    /// Called when a mouse button goes down inside the view.
    virtual void MouseDown(BPoint where);
    /// Called when a button is released inside the view, or anywhere while its event mask asks.
    virtual void MouseUp(BPoint where);
    /// Called when the pointer enters, moves in or leaves the view (`transit`: B_ENTERED_VIEW...).
    /// While something is dragged `dragMessage` is that, else null; what another program drags is a
    /// B_SIMPLE_DATA without fields until it is dropped. Ownership: borrowed for the call.
    virtual void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage);
    /// Called when the window gets or loses the keyboard.
    virtual void WindowActivated(bool active);
    /// Takes a key while the view has the focus; moves the focus on Tab and passes the rest on.
    virtual void KeyDown(const char* bytes, int32 byteCount);
    /// Called when a key is released while the view has the focus.
    virtual void KeyUp(const char* bytes, int32 byteCount);
    /// Called at the window's pulse rate; asked of views with B_PULSE_NEEDED.
    virtual void Pulse();
    /// Called after the view was moved; asked of views with B_FRAME_EVENTS.
    virtual void FrameMoved(BPoint newPosition);
    /// Called after the view changed its size; asked of views with B_FRAME_EVENTS.
    virtual void FrameResized(float newWidth, float newHeight);
    /// Called by the scroll view that made this view its target.
    virtual void TargetedByScrollView(BScrollView* scrollView);
    /// Says what the view is to assistive programs; its name and whether it can have or has the
    /// focus are filled in before. Asked at most once a frame. An extension of the platform.
    virtual void Describe(BViewDescription* description) const;
    /// Says what input methods are to know; false, as here, for a view that edits no text. Asked
    /// after each frame while the view has the focus. An extension of the platform.
    virtual bool DescribeInput(BInputDescription* description) const;
    /// Whether the key works in the view rather than as a shortcut, for the default button or for
    /// moving the focus: no, as here, but in views that edit text. An extension of the platform.
    virtual bool WantsKey(const BMessage& key) const;
    /// Whether entries that are dragged may be dropped anywhere in the view: no, as here, for most.
    /// What is dropped comes as a message that says WasDropped(), with "be:actions" (int32):
    /// B_COPY_TARGET or B_MOVE_TARGET, whichever was agreed. Asked after each frame. An extension
    /// of the platform.
    virtual bool TakesDrops() const;

    // Tips

    /// Has a text shown below the pointer when that rests over the view; null or "": none. A text
    /// that is the same already stays the same tip.
    void SetToolTip(const char* text);
    /// The same with a tip, to which the view holds a reference from then on; null: none.
    void SetToolTip(BToolTip* tip);
    /// The tip that was set, lent; null for none.
    BToolTip* ToolTip() const { return fToolTip; }
    /// Says which tip is shown at a place of the view, as long as the view lends it; false for
    /// none. Here it is the one that was set. Asked when the pointer rests, and when it moves while
    /// the tip is shown: another tip than before is another thing that it speaks of.
    virtual bool GetToolTipAt(BPoint point, BToolTip** tip);
    /// Shows a tip now, at the pointer; null: the one that was set.
    void ShowToolTip(BToolTip* tip = nullptr);
    /// Takes the view's tip away.
    void HideToolTip();

    // The tree

    /// Adopts `child`, in front of `before` or at the end; does nothing if it has a parent.
    virtual void AddChild(BView* child, BView* before = nullptr);
    /// Returns a child to the caller; false when it is none of this view's.
    virtual bool RemoveChild(BView* child);
    /// Leaves the parent and belongs to the caller then; false when there is none.
    bool RemoveSelf();
    /// How many views lie directly in this one.
    int32 CountChildren() const;
    /// The child at an index; null when there is none.
    BView* ChildAt(int32 index) const;
    /// The view that follows this one in its parent; null for the last.
    BView* NextSibling() const;
    /// The view that precedes this one in its parent; null for the first.
    BView* PreviousSibling() const;
    /// The view around this one; null for those that the window holds itself.
    BView* Parent() const;
    /// Finds the view of that name among this one and those below, in tree order.
    BView* FindView(const char* name) const;
    /// The window that the view is in; null for none.
    BWindow* Window() const;

    // Geometry

    /// What part of its own coordinates the view shows; the left top moves by scrolling.
    BRect Bounds() const;
    /// Where the view lies, in its parent's coordinates.
    BRect Frame() const { return fFrame; }
    /// The frame's left top.
    BPoint LeftTop() const { return fFrame.LeftTop(); }
    /// Moves the view by a distance, rounded to whole units.
    void MoveBy(float dh, float dv);
    /// Moves the frame's left top to a place in the parent, rounded to whole units.
    void MoveTo(BPoint where);
    void MoveTo(float x, float y);
    /// Makes the view larger, or smaller, by these amounts.
    void ResizeBy(float dh, float dv);
    /// Sets the size; one below zero is kept, and the view is then not seen.
    void ResizeTo(float width, float height);
    /// Says how large the view would like to be: as it is, unless overridden.
    virtual void GetPreferredSize(float* width, float* height);
    /// Takes the preferred size.
    virtual void ResizeToPreferred();
    /// Sets how the view follows changes of its parent's size: B_FOLLOW_... .
    virtual void SetResizingMode(uint32 mode);
    /// How the view follows changes of its parent's size.
    uint32 ResizingMode() const { return fResizingMode; }
    /// Sets what the view asks for: B_WILL_DRAW and the like.
    virtual void SetFlags(uint32 flags);
    /// What the view asks for.
    uint32 Flags() const { return fFlags; }

    /// Turns what is in this view's coordinates into the parent's.
    void ConvertToParent(BPoint* point) const;
    BPoint ConvertToParent(BPoint point) const;
    BRect ConvertToParent(BRect rect) const;
    /// Turns what is in the parent's coordinates into this view's.
    void ConvertFromParent(BPoint* point) const;
    BPoint ConvertFromParent(BPoint point) const;
    BRect ConvertFromParent(BRect rect) const;
    /// Turns what is in this view's coordinates into the screen's.
    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;
    /// Turns what is in the screen's coordinates into this view's.
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertFromScreen(BRect rect) const;

    // Showing and scrolling

    /// Undoes one Hide(); the view is seen again when none is left.
    virtual void Show();
    /// Hides the view and those below; the focus leaves them. Calls nest.
    virtual void Hide();
    /// Whether the view or a parent is hidden, up to but not including `lookingFrom`; without one
    /// also whether the window is.
    bool IsHidden() const;
    bool IsHidden(const BView* lookingFrom) const;
    /// Scrolls by a distance.
    void ScrollBy(float dh, float dv);
    /// Makes a place the view's left top; what stays visible is moved, the rest drawn.
    virtual void ScrollTo(BPoint where);
    void ScrollTo(float x, float y);
    /// The scroll bar whose target this view is.
    BScrollBar* ScrollBar(orientation direction) const;
    /// Moves drawn pixels within the view; what cannot be copied becomes invalid.
    void CopyBits(BRect source, BRect destination);

    // Focus and input

    /// Whether keys go to this view while its window has the keyboard.
    bool IsFocus() const;
    /// Takes the focus from the view that has it, or gives it up.
    virtual void MakeFocus(bool focus = true);
    /// Sets which events this view gets wherever they happen in the window, until changed.
    status_t SetEventMask(uint32 mask, uint32 options = 0);
    /// The events that this view gets wherever they happen in the window.
    uint32 EventMask() const { return fEventMask; }
    /// The same from a MouseDown until the last button is released.
    /// Errors: B_ERROR outside a MouseDown.
    status_t SetMouseEventMask(uint32 mask, uint32 options = 0);
    /// Drags `message` (copied) from here, while a button is held, until that is released: then it
    /// arrives where the pointer is, in this program as it is, in others its "refs" as files. Shown
    /// at the pointer is a frame, or `bitmap` with the pointer at its `offset` (units; drawn with
    /// its transparent parts but in B_OP_COPY). Replies go to `replyTo`, else to this view. Nothing
    /// happens without a button, or while something else is dragged. Ownership: adopts `bitmap`.
    void DragMessage(BMessage* message, BRect frame, BHandler* replyTo = nullptr);
    void DragMessage(BMessage* message, BBitmap* bitmap, BPoint offset,
                     BHandler* replyTo = nullptr);
    void DragMessage(BMessage* message, BBitmap* bitmap, drawing_mode mode, BPoint offset,
                     BHandler* replyTo = nullptr);
    /// Says where the pointer is, in this view's coordinates, and what buttons are down.
    void GetMouse(BPoint* location, uint32* buttons, bool checkMessageQueue = true);
    /// Sets what the pointer looks like over this view, and wherever it goes while this view has
    /// the mouse by SetMouseEventMask(). Ownership: borrows `cursor`; null is the ordinary pointer.
    void SetViewCursor(const BCursor* cursor, bool sync = true);

    // Updating

    /// Sets the colour that is filled in before Draw(), and has the view drawn anew.
    virtual void SetViewColor(rgb_color color);
    void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    /// The colour that is filled in before Draw().
    rgb_color ViewColor() const { return fViewColor; }
    /// Has the view, or what of `rect` or `region` lies in it, drawn anew after this message.
    void Invalidate();
    void Invalidate(BRect rect);
    void Invalidate(const BRegion* region);
    /// Brings what was drawn to the screen.
    void Flush() const;
    /// The same: drawing is done when the call that draws returns.
    void Sync() const;

private:
    friend class kits::ViewAccess;
    friend class kits::ViewDrawing;
    friend class kits::ViewHost;

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
    BToolTip* fToolTip = nullptr;                   // a reference of ours
    kits::ScrollFollower* fHorizontalBar = nullptr; // borrowed; follows this view as its target
    kits::ScrollFollower* fVerticalBar = nullptr;
};
