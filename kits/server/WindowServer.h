#pragma once

#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <functional>
#include <string>

class QImage;

namespace kits {

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
    /// Where it is now, also when it was last moved over windows of others, as far as the system
    /// tells. Thread: any but the server's; waits for it.
    BPoint PointerPlace();
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
