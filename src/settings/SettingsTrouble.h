#pragma once

#include <SupportDefs.h>

/// What is said of settings that cannot be read or saved; none of it keeps the program from going
/// on.
///
/// Thread: any but the window server's.
namespace norvane {

/// Says that `file` could not be saved and why, and returns when it is dismissed.
void TellUnsavedSettings(const char* file, status_t reason);

/// Says that `file` cannot be read and why; once, however many values are asked for, until
/// SettingsWereRead().
void TellUnreadSettings(const char* file, status_t reason);

/// Says that there is no settings directory; counts as the same trouble with reading.
void TellNoSettingsDirectory();

/// Reading went well: the next trouble is news again.
void SettingsWereRead();

} // namespace norvane
