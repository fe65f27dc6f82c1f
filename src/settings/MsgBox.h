#pragma once

#include <Alert.h>

namespace norvane {

/// Shows the program's general one-button notice and returns when it is dismissed.
/// Thread: any but the window server's.
void MsgBox(const char* text, alert_type type);

/// The same with a title and a button of its own.
void MsgBox(const char* title, const char* text, const char* button, alert_type type);

} // namespace norvane
