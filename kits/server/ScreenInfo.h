#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <atomic>
#include <vector>

namespace kits {

/// What is known of the screens and the desktop's habits, for any thread to read.
class ScreenInfo
{
public:
    static ScreenInfo& Get();

    /// Asks the system again. Thread: the server's.
    void Refresh();

    /// Number 0 is the main screen, which takes the place of those that are not there.
    BRect Frame(int32 screen = 0) const;
    BRect Available(int32 screen = 0) const;
    float Scale(int32 screen = 0) const;
    int32 CountScreens() const;
    /// The screen that shows most of a frame, or is the nearest one when none shows it.
    int32 ScreenOf(BRect frame) const;
    bigtime_t ClickSpeed() const;

    /// Whether assistive programs listen.
    std::atomic<bool> isAccessibilityActive{false};
    /// How long a caret is on and off together; 0: it does not blink.
    std::atomic<bigtime_t> caretFlash{1'000'000};

private:
    struct Screen
    {
        BRect frame{0, 0, 1023, 767};
        BRect available{0, 0, 1023, 767};
        float scale = 1;
    };

    Screen At(int32 screen) const;

    mutable Mutex fLock;
    // At least one: what a program without a screen is told.
    std::vector<Screen> fScreens GUARDED_BY(fLock) = std::vector<Screen>(1);
    bigtime_t fClickSpeed GUARDED_BY(fLock) = 400'000;
};

} // namespace kits
