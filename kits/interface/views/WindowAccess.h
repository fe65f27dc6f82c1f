#pragma once

#include <Window.h>

namespace kits {

/// What other parts of the kit need of windows beyond their public face. Thread: the window's,
/// unless a function says otherwise.
class WindowAccess
{
public:
    static WindowState& State(const BWindow& window) { return *window.fState; }
    /// Leads all mouse events of the program, and of the screen where that is possible, to the
    /// window.
    static void SetMouseCapture(BWindow* window, bool on);
    /// Names the window in the server's messages ("window"); 0 for one that is gone. Any thread.
    static int32 TokenOf(const BWindow* window);
    /// From now on keys wait, in their order, until ReleaseKeys() was called as often: what they do
    /// depends on something that is on its way. Locked.
    static void HoldKeys(BWindow& window);
    static void ReleaseKeys(BWindow& window);
};

} // namespace kits
