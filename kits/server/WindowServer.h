#pragma once

#include "FrameNews.h"

#include <Rect.h>
#include <SupportDefs.h>
#include <WindowConstants.h>

#include <functional>
#include <memory>
#include <string>

class BLooper;
class QImage;

namespace kits {

class FrontImage;
class NativeWindow;
struct Published;

/// Everything the native window is told, sent whole; the server applies what differs.
struct WindowShape
{
    enum class Kind : uint8 {
        kWindow,
        kPopUp, // a menu: no frame, takes no focus, transient for its opener, kept off nothing
    };

    Kind kind = Kind::kWindow;
    std::string title;
    // The client area, in screen units; right and bottom included. Of a window that is there
    // already only what was asked for anew is heeded: its place, its size or both.
    BRect frame;
    FrameAsks asks;
    window_look look = B_TITLED_WINDOW_LOOK;
    window_feel feel = B_NORMAL_WINDOW_FEEL;
    uint32 flags = 0;
    // As BWindow::SetSizeLimits: widths and heights of frames (pixels - 1).
    float minWidth = 0;
    float maxWidth = 32768;
    float minHeight = 0;
    float maxHeight = 32768;
};

enum class PointerShape : uint8 {
    kArrow,
    kText,
    kResizeHorizontal,
    kResizeVertical,
    kHand,
    kWait,
};

/// How a window comes onto the screen.
struct ShowRequest
{
    // The window that opened it: kept below it, gets the focus back when this one goes. 0: none.
    int32 opener = 0;
    // False: shown without activation (an operation window that comes back after a question).
    bool takesFocus = true;
    // Takes all input of the program's windows while it is shown; alerts and the overwrite
    // question.
    bool isModal = false;
    // A modal window that does not block this one (alerts never block alerts).
    bool isExemptFromModal = false;
    // Keys typed before it had the focus, and keys typed while it has it only because it was shown,
    // go on to the opener (a progress window). A click on it, or coming back to it later, makes
    // it take them.
    bool takesKeys = true;
};

/// A window's end of its native window. The native window is made by the first Show().
///
/// Thread: any thread but the server's; calls of one link are made under its looper's lock.
/// Show, Hide and the destructor wait for the server; the rest is queued and returns at once.
/// Ownership: the window owns its link; destroying it deletes the native window.
class WindowLink
{
public:
    /// Input and window messages (see InputMessages.h) are posted to `looper`, held by token: what
    /// comes after it is gone is dropped. For a pop-up `looper` is the window that owns the menu.
    WindowLink(BLooper* looper, const WindowShape& shape);
    ~WindowLink();
    WindowLink(const WindowLink&) = delete;
    WindowLink& operator=(const WindowLink&) = delete;

    /// Names this native window in ShowRequest::opener and in messages ("window"); never reused,
    /// never 0.
    int32 Token() const { return fToken; }

    void SetShape(const WindowShape& shape);
    /// The first frame must be in the front image already: the window appears with it.
    void Show(const ShowRequest& request);
    void Hide();
    void Activate();
    void Minimize(bool minimize);
    /// Asks for the front image's damage to be shown. Posted only when FrontImage::Update said so.
    void Present();
    /// While on, every mouse event of all our windows, and of the screen where the system allows
    /// it, goes to this window's looper with "screen_where" and the token of the window below
    /// ("window"). For menus.
    void SetMouseCapture(bool on);
    /// The pointer's shape over this window; an arrow until told otherwise.
    void SetCursor(PointerShape shape);
    void Publish(std::shared_ptr<const Published> published);

    FrontImage& Front() { return *fFront; }
    /// Where the screen puts what kFrameChanged tells of.
    FrameNews& News() { return *fNews; }
    /// Device pixels per unit of the screen the window is on; of the main screen before it is
    /// shown.
    float Scale() const;

private:
    friend class WindowServer;
    int32 fToken;
    std::shared_ptr<FrontImage> fFront;
    std::shared_ptr<FrameNews> fNews;
    std::shared_ptr<NativeWindow> fNative; // server thread only, apart from copying the pointer
};

/// The thread that owns the QGuiApplication and every native window.
///
/// It never takes a looper's lock and never waits for a window; windows may wait for it.
class WindowServer
{
public:
    static WindowServer& Get();

    /// Starts the thread and waits until the application object exists.
    /// Errors: B_ERROR when there is no display; B_NO_MORE_THREADS.
    [[nodiscard]] status_t Start();
    /// Ends the thread; every WindowLink is gone by then.
    void Stop();
    bool IsRunning() const;

    /// Runs `task` on the server thread, in order. Thread: any; never blocks.
    void Post(std::function<void()> task);
    /// The same and waits for its end. Thread: any but the server's.
    void Call(const std::function<void()>& task);
    bool IsServerThread() const;

    /// The main screen's whole frame and what panels leave of it, in units. Thread: any.
    BRect ScreenFrame() const;
    BRect AvailableFrame() const;
    /// The same of each screen; number 0 is the main one. Of one that is not there: of the main
    /// one.
    BRect ScreenFrame(int32 screen) const;
    BRect AvailableFrame(int32 screen) const;
    int32 CountScreens() const;
    /// The screen that shows most of a frame, or is the nearest one when none shows it.
    int32 ScreenOf(BRect frame) const;
    float ScreenScale() const;
    /// Where the pointer is (screen units) and the buttons held, as last seen by the server.
    /// Thread: any; never blocks.
    void GetMouse(BPoint* where, uint32* buttons) const;
    uint32 Modifiers() const;
    /// The desktop's double-click interval. Thread: any.
    bigtime_t ClickSpeed() const;
    /// Whether an assistive program listens: windows publish their nodes only then. Thread: any.
    bool IsAccessibilityActive() const;
    /// The theme's icon of that name, drawn for `size` units at `scale`; null when there is none.
    /// Cached, absent names too.
    /// Thread: any but the server's; may wait.
    QImage ThemeIcon(const std::string& name, int32 size, float scale);
};

} // namespace kits
