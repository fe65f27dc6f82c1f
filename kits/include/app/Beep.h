#pragma once

#include <SupportDefs.h>

/// Makes the desktop's short sound, which says that something was not done. Where the desktop has
/// none nothing is heard. Returns at once. Thread: any. Errors: B_ERROR without a display.
status_t beep();
