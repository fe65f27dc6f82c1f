#pragma once

#include <InterfaceDefs.h>
#include <Looper.h>
#include <Rect.h>

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

enum window_type {
    B_UNTYPED_WINDOW = 0,
    B_TITLED_WINDOW = 1,
    B_MODAL_WINDOW = 3,
    B_DOCUMENT_WINDOW = 11,
    B_BORDERED_WINDOW = 20,
    B_FLOATING_WINDOW = 21,
};

enum window_look {
    B_BORDERED_WINDOW_LOOK = 20,
    B_NO_BORDER_WINDOW_LOOK = 19,
    B_TITLED_WINDOW_LOOK = 1,
    B_DOCUMENT_WINDOW_LOOK = 11,
    B_MODAL_WINDOW_LOOK = 3,
    B_FLOATING_WINDOW_LOOK = 7,
};

enum window_feel {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_SUBSET_WINDOW_FEEL = 2,
    B_MODAL_APP_WINDOW_FEEL = 1,
    B_MODAL_ALL_WINDOW_FEEL = 3,
    B_FLOATING_SUBSET_WINDOW_FEEL = 5,
    B_FLOATING_APP_WINDOW_FEEL = 4,
    B_FLOATING_ALL_WINDOW_FEEL = 6,
};

// Window flags.
constexpr uint32 B_NOT_MOVABLE = 0x00000001;
constexpr uint32 B_NOT_CLOSABLE = 0x00000020;
constexpr uint32 B_NOT_ZOOMABLE = 0x00000040;
constexpr uint32 B_NOT_MINIMIZABLE = 0x00004000;
constexpr uint32 B_NOT_H_RESIZABLE = 0x00000004;
constexpr uint32 B_NOT_V_RESIZABLE = 0x00000008;
constexpr uint32 B_NOT_RESIZABLE = 0x00000002;
constexpr uint32 B_AVOID_FRONT = 0x00000080;
constexpr uint32 B_AVOID_FOCUS = 0x00002000;
constexpr uint32 B_WILL_ACCEPT_FIRST_CLICK = 0x00000010;
constexpr uint32 B_OUTLINE_RESIZE = 0x00001000;
constexpr uint32 B_NO_WORKSPACE_ACTIVATION = 0x00000100;
constexpr uint32 B_NOT_ANCHORED_ON_ACTIVATE = 0x00020000;
constexpr uint32 B_ASYNCHRONOUS_CONTROLS = 0x00080000;
constexpr uint32 B_QUIT_ON_WINDOW_CLOSE = 0x00100000;

constexpr uint32 B_CURRENT_WORKSPACE = 0;
constexpr uint32 B_ALL_WORKSPACES = 0xffffffff;

/// A window on the screen, with a thread and a message loop of its own, and a tree of views in it.
///
/// It is made hidden, with its thread not running; the first Show() starts that. Frames are those
/// of the client area, in screen units. Thread: call with the window locked, unless a function says
/// "any thread". Ownership: create with `new`; it deletes itself in Quit().
class BWindow : public BLooper
{
public:
    BWindow(BRect frame, const char* title, window_type type, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    ~BWindow() override;

    // BLooper
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* target) override;
    bool QuitRequested() override;
    void Quit() override;
    thread_id Run() override;

    // Hooks

    virtual void FrameMoved(BPoint newPosition);
    virtual void FrameResized(float newWidth, float newHeight);
    virtual void WindowActivated(bool active);
    virtual void MenusBeginning();
    virtual void MenusEnded();
    virtual void ScreenChanged(BRect screenFrame, color_space mode);
    virtual void WorkspaceActivated(int32 workspace, bool active);

    // Showing

    /// Undoes one Hide(); the window appears when none is left. The first call starts the thread.
    virtual void Show();
    virtual void Hide();
    bool IsHidden() const;
    virtual void Minimize(bool minimize);
    bool IsMinimized() const;
    /// Grows to the zoom limits, or goes back.
    virtual void Zoom(BPoint leftTop, float width, float height);
    void Zoom();
    void SetZoomLimits(float maxWidth, float maxHeight);
    void Activate(bool active = true);
    bool IsActive() const;
    bool IsFront() const;

    // Frame

    BRect Bounds() const;
    BRect Frame() const;
    void MoveBy(float dx, float dy);
    void MoveTo(BPoint where);
    void MoveTo(float x, float y);
    void ResizeBy(float dx, float dy);
    void ResizeTo(float width, float height);
    void CenterIn(BRect frame);
    void CenterOnScreen();
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight);
    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertFromScreen(BRect rect) const;

    // Kind

    const char* Title() const;
    void SetTitle(const char* title);
    window_look Look() const;
    status_t SetLook(window_look look);
    window_feel Feel() const;
    status_t SetFeel(window_feel feel);
    uint32 Flags() const;
    status_t SetFlags(uint32 flags);
    bool IsModal() const;
    bool IsFloating() const;
    status_t SetType(window_type type);
    window_type Type() const;
    uint32 Workspaces() const { return B_CURRENT_WORKSPACE; }

    // Views

    void AddChild(BView* child, BView* before = nullptr);
    bool RemoveChild(BView* child);
    int32 CountChildren() const;
    BView* ChildAt(int32 index) const;
    BView* FindView(const char* name) const;
    BView* FindView(BPoint where) const;
    BView* CurrentFocus() const;
    BView* LastMouseMovedView() const;

    // Keys

    BButton* DefaultButton() const;
    /// Makes `button` answer Enter; null for none.
    void SetDefaultButton(BButton* button);
    BMenuBar* KeyMenuBar() const;
    void SetKeyMenuBar(BMenuBar* menuBar);
    /// Ownership: adopts `message`. The Command key is added to the modifiers.
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message);
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target);
    void RemoveShortcut(uint32 key, uint32 modifiers);
    void SetPulseRate(bigtime_t rate);
    bigtime_t PulseRate() const;

    // Updating

    /// Paints what is invalid now, at most once per 1/60 s: what comes sooner is painted later.
    void UpdateIfNeeded();
    bool NeedsUpdate() const;
    void EnableUpdates();
    void DisableUpdates();
    void Flush() const;
    /// Paints what is invalid and brings it to the screen.
    void Sync() const;
    void BeginViewTransaction();
    void EndViewTransaction();
    bool InViewTransaction() const;

    // Extensions of the platform

    /// Names the window that this one belongs to: it stays above it, is placed by it in the task
    /// bar, and gives the focus back to it. Before Show(). Ownership: borrows, by token.
    void SetOpener(BWindow* opener);
    /// Takes answers (default button, Cancel, Space and Enter on controls, clicks on buttons) only
    /// `afterFirstFrame` after its first frame was on the screen, and only when no key was pressed
    /// for `afterLastKey` (0: not asked); answers that come sooner are dropped.
    void SetAnswerDelay(bigtime_t afterFirstFrame, bigtime_t afterLastKey);
    /// Whether the message being handled may answer: see SetAnswerDelay().
    bool TakesAnswers() const;
    /// Whether showing it takes the focus; true unless changed. Each Show() looks at it.
    void SetTakesFocus(bool takesFocus);
    /// False for a window that shows progress: keys typed before a person chose it go on to its opener
    /// (kits::ShowRequest::takesKeys). True unless changed. Before Show().
    void SetTakesKeys(bool takesKeys);

protected:
    void QueueEmpty() override;
    bigtime_t NextWakeUp() override;
    BHandler* TargetOf(BMessage* message, BHandler* target) override;

private:
    friend class kits::WindowAccess;

    void DispatchRest(BMessage* message, BHandler* target);

    std::unique_ptr<kits::WindowState> fState;
};
