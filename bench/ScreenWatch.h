#pragma once

#include <SupportDefs.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>

#include <functional>
#include <string>

/// Watches a whole X screen for changes, as the person in front of it does.
///
/// Times are in milliseconds of the monotonic clock.
class ScreenWatch
{
public:
    ScreenWatch();
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;

    bool IsOpen() const { return fDisplay != nullptr; }

    static double Now();

    /// From now on only what is painted into this window counts as a change.
    void WatchOnly(Window window);

    /// When the screen changes next; -1 when it does not within `limitMs`.
    double FirstChange(double limitMs);
    /// When the screen changed last, once it has been still for `quietMs`; -1 when it never changed
    /// within `limitMs`, or never came to rest.
    double LastChange(double quietMs, double limitMs);
    /// Forgets the changes so far.
    void Drain();

    /// Presses and releases a key given by its X name, such as "Return".
    bool Press(const std::string& keyName);

    /// Waits until a mapped window has this title, alone or with " - " and progress after it; None
    /// when none came within `limitMs`, or `isTooLate` said so. Asks again and again: meant for
    /// moments.
    Window WaitForWindow(const std::string& title, double limitMs,
                         const std::function<bool()>& isTooLate);
    bool IsShown(Window window);
    /// Waits until the window is unmapped or gone, costing nothing meanwhile; false when it is
    /// there after `limitMs`.
    bool WaitForEnd(Window window, double limitMs);

private:
    bool NextChange(double untilMs);
    Window FindWindow(Window parent, const std::string& title);

    Display* fDisplay;
    Damage fDamage = 0;
    int fDamageEvent = 0;
};
