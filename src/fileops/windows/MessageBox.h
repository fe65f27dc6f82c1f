#pragma once

#include <SupportDefs.h>

namespace norvane {

/// Shows an alert with one to three buttons and returns the index of the one pressed (0, 1 or 2).
/// Null labels mean no such button.
int32 MessageBox(const char* text, const char* title, const char* button1,
                 const char* button2 = nullptr, const char* button3 = nullptr);

} // namespace norvane
