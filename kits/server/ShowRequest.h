#pragma once

#include <SupportDefs.h>

namespace kits {

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

} // namespace kits
