#pragma once

#include <Alert.h>

namespace norvane {

/// Shows the program's general one-button notice and returns when it is dismissed. False when it
/// went unread, since the program ends.
/// Thread: any but the window server's.
bool MsgBox(const char* text, alert_type type);

/// The same with a title and a button of its own.
bool MsgBox(const char* title, const char* text, const char* button, alert_type type);

} // namespace norvane
