#pragma once

#include <InterfaceDefs.h>
#include <Looper.h>
#include <Rect.h>
#include <WindowConstants.h>

#include <memory>
#include <string>

class BButton;
class BMenuBar;
class BView;

namespace kits {
class InputInterceptor;
class WindowAccess;
struct WindowState;
} // namespace kits

/// A window on the screen, with a thread and a message loop of its own, and a tree of views in it.
///
/// It is made hidden, with its thread not running; the first Show() starts that. Frames are those
/// of the client area, in screen units. Thread: call with the window locked, unless a function says
/// "any thread". Ownership: create with `new`; it deletes itself in Quit().
class BWindow : public BLooper
{
public:
    /// Makes a window of a client `frame`; a dialog belongs to the window whose thread makes it.
    BWindow(BRect frame, const char* title, window_type type, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    /// Deletes the views.
    ~BWindow() override;

    // BLooper

    /// Takes the messages that no view wanted.
    void MessageReceived(BMessage* message) override;
    /// Hands input to the views, shortcuts and the default button; the rest to `target`.
    void DispatchMessage(BMessage* message, BHandler* target) override;
    /// Asked before the window closes; true unless overridden.
    bool QuitRequested() override;
    /// Takes the window from the screen, ends its thread and deletes it. Thread: any thread.
    void Quit() override;
    /// Starts the thread; Show() does.
    thread_id Run() override;

    // Hooks. They do nothing here.

    /// Called after the window was moved, by a person or the program.
    virtual void FrameMoved(BPoint newPosition);
    /// Called after the window changed its size, by a person or the program.
    virtual void FrameResized(float newWidth, float newHeight);
    /// Called when the window gets or loses the keyboard.
    virtual void WindowActivated(bool active);
    /// Called before the first menu opens: the window may change its menus now.
    virtual void MenusBeginning();
    /// Called once all menus are closed and what was chosen has done its work.
    virtual void MenusEnded();
    /// Called when the screen that shows the window changes.
    virtual void ScreenChanged(BRect screenFrame, color_space mode);
    /// Kept for overriding: there is one workspace, so nothing calls it.
    virtual void WorkspaceActivated(int32 workspace, bool active);

    // Showing

    /// Undoes one Hide(); the window appears when none is left. The first call starts the thread.
    /// Thread: any thread.
    virtual void Show();
    /// Takes the window and its menus from the screen. Calls nest. Thread: any thread.
    virtual void Hide();
    /// Whether the window is hidden; it is before the first Show().
    bool IsHidden() const;
    /// Makes the window an icon, or brings it back. Thread: any thread.
    virtual void Minimize(bool minimize);
    /// Whether the window is an icon.
    bool IsMinimized() const;
    /// Grows to the screen's room or the zoom limits, or goes back when it has grown. It moves no
    /// further than it must to be seen whole.
    void Zoom();
    /// Takes the place and size that zooming chose.
    virtual void Zoom(BPoint leftTop, float width, float height);
    /// Limits how large zooming makes the window.
    void SetZoomLimits(float maxWidth, float maxHeight);
    /// Asks for the keyboard and the front; false does nothing. Thread: any thread.
    void Activate(bool active = true);
    /// Whether the window has the keyboard.
    bool IsActive() const;
    /// The same: no window manager tells what is in front.
    bool IsFront() const;

    // Frame

    /// The client area, with (0, 0) as its left top.
    BRect Bounds() const;
    /// The client area on the screen.
    BRect Frame() const;
    /// Moves the window by a distance. Thread: any thread.
    void MoveBy(float dx, float dy);
    /// Moves the client area's left top, rounded to whole units. Thread: any thread.
    void MoveTo(BPoint where);
    void MoveTo(float x, float y);
    /// Makes the window larger, or smaller, by these amounts. Thread: any thread.
    void ResizeBy(float dx, float dy);
    /// Sets the size, rounded and within the size limits. Thread: any thread.
    void ResizeTo(float width, float height);
    /// Moves the window to the middle of a frame. Thread: any thread.
    void CenterIn(BRect frame);
    /// Moves the window to the middle of its screen's room. Thread: any thread.
    void CenterOnScreen();
    /// Limits the size and applies it at once; a minimum above its maximum changes nothing.
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    /// Tells the limits of the size.
    void GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight);
    /// Turns what is in the window's coordinates into the screen's.
    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;
    /// Turns what is in the screen's coordinates into the window's.
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertFromScreen(BRect rect) const;

    // Kind

    /// The title; lent until it is set anew.
    const char* Title() const;
    /// Sets the title; null is an empty one. Thread: any thread.
    void SetTitle(const char* title);
    /// How the window's border looks.
    window_look Look() const;
    /// Sets how the window's border looks.
    status_t SetLook(window_look look);
    /// How the window stands to others: modal, floating or neither.
    window_feel Feel() const;
    /// Sets how the window stands to others.
    status_t SetFeel(window_feel feel);
    /// What a person can do with the window, and what it asks for.
    uint32 Flags() const;
    /// Sets what a person can do with the window, and what it asks for.
    status_t SetFlags(uint32 flags);
    /// Whether other windows take no input while this one is shown.
    bool IsModal() const;
    /// Whether the window stays above others.
    bool IsFloating() const;
    /// Sets the look and feel of a type.
    status_t SetType(window_type type);
    /// The type with the window's look and feel; B_UNTYPED_WINDOW for none.
    window_type Type() const;

    // Views

    /// Adopts `child`, in front of `before` or at the end.
    void AddChild(BView* child, BView* before = nullptr);
    /// Returns a view to the caller; false when the window does not hold it itself.
    bool RemoveChild(BView* child);
    /// How many views the window holds itself.
    int32 CountChildren() const;
    /// The view at an index; null when there is none.
    BView* ChildAt(int32 index) const;
    /// Finds the view of that name, or the innermost one seen at a place; null for none.
    BView* FindView(const char* name) const;
    BView* FindView(BPoint where) const;
    /// The view that has the focus; null for none.
    BView* CurrentFocus() const;
    /// The view that the pointer is over; null for none.
    BView* LastMouseMovedView() const;

    // Keys

    /// The button that answers Enter; null for none.
    BButton* DefaultButton() const;
    /// Makes `button` answer Enter; null for none.
    void SetDefaultButton(BButton* button);
    /// The menu bar that keys open; null for none.
    BMenuBar* KeyMenuBar() const;
    /// Chooses the menu bar that keys open.
    void SetKeyMenuBar(BMenuBar* menuBar);
    /// Sends `message` to `target`, or to the window, for a key; the Command key is added to the
    /// modifiers. Ownership: adopts `message`; null only removes what the key did.
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message);
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target);
    /// Takes back what AddShortcut() did for the key.
    void RemoveShortcut(uint32 key, uint32 modifiers);

    // Updating

    /// Sets how often views get Pulse(); 0 for never. Units: microseconds.
    void SetPulseRate(bigtime_t rate);
    /// How often views get Pulse().
    bigtime_t PulseRate() const;
    /// Paints what is invalid now, at most once per 1/60 s: what comes sooner is painted later.
    /// Thread: any thread.
    void UpdateIfNeeded();
    /// Whether something is invalid.
    bool NeedsUpdate() const;
    /// Undoes one DisableUpdates().
    void EnableUpdates();
    /// Holds painting back until EnableUpdates(). Calls nest.
    void DisableUpdates();
    /// Brings what was drawn to the screen.
    void Flush() const;
    /// Paints what is invalid and brings it to the screen.
    void Sync() const;

    // Extensions of the platform

    /// Names the window that this one belongs to: it stays above it, is placed by it in the task
    /// bar, and gives the focus back to it. Before Show(). Ownership: borrows, by token.
    void SetOpener(BWindow* opener);
    /// Takes answers (default button, Cancel, Space and Enter on controls, clicks on buttons) only
    /// `afterFirstFrame` after its first frame was on the screen, and answering keys only once no
    /// key was pressed for `afterLastKey` since then; what comes sooner is dropped. Once that was
    /// so, it is over until the window is shown again.
    void SetAnswerDelay(bigtime_t afterFirstFrame, bigtime_t afterLastKey);
    /// Whether the message being handled may answer: see SetAnswerDelay().
    bool TakesAnswers() const;
    /// Whether showing it takes the focus; true unless changed. Each Show() looks at it.
    void SetTakesFocus(bool takesFocus);
    /// False for a window that shows progress: keys typed before a person chose it go on to its
    /// opener (kits::ShowRequest::takesKeys). True unless changed. Before Show().
    void SetTakesKeys(bool takesKeys);

protected:
    // BLooper
    void QueueEmpty() override;
    bigtime_t NextWakeUp() override;
    BHandler* TargetOf(BMessage* message, BHandler* target) override;

private:
    friend class kits::WindowAccess;

    void DispatchRest(BMessage* message, BHandler* target);

    std::unique_ptr<kits::WindowState> fState;
};
