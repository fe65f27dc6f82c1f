#pragma once

#include <SupportDefs.h>

#include <string>

namespace kits {

/// Whether a file is a program that the system runs itself: in the machine's own form, with the
/// right to be run by this person. A script is none, nor is a library.
bool IsProgramFile(const std::string& path);

/// Whether what a program needs to be read is there: true but for a script whose first line names
/// an interpreter that is none.
bool HasInterpreter(const std::string& path);

/// Whether a file can be loaded as a library: for this machine, and with all the bytes that its
/// table speaks of. Loading one that was cut short would end the program. Errors: B_ENTRY_NOT_FOUND
/// ..., B_NOT_AN_EXECUTABLE.
[[nodiscard]] status_t CheckLibraryFile(const std::string& path);

/// Whether the system may be asked to run a file: a program of the machine's form or a script, with
/// the right to be run by this person. Errors: B_ENTRY_NOT_FOUND, B_PERMISSION_DENIED,
/// B_NOT_AN_EXECUTABLE ...
[[nodiscard]] status_t CheckRunnable(const std::string& path);

} // namespace kits
