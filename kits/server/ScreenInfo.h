#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <atomic>

namespace kits {

/// What is known of the main screen and the desktop's habits, for any thread to read.
class ScreenInfo
{
public:
    static ScreenInfo& Get();

    /// Asks the system again. Thread: the server's.
    void Refresh();

    BRect Frame() const;
    BRect Available() const;
    float Scale() const;
    bigtime_t ClickSpeed() const;

    /// Whether assistive programs listen.
    std::atomic<bool> isAccessibilityActive{false};
    /// How long a caret is on and off together; 0: it does not blink.
    std::atomic<bigtime_t> caretFlash{1'000'000};

private:
    mutable Mutex fLock;
    // What a program without a screen is told.
    BRect fFrame GUARDED_BY(fLock){0, 0, 1023, 767};
    BRect fAvailable GUARDED_BY(fLock){0, 0, 1023, 767};
    float fScale GUARDED_BY(fLock) = 1;
    bigtime_t fClickSpeed GUARDED_BY(fLock) = 400'000;
};

} // namespace kits
