#pragma once

#include <string>

namespace kits {

/// Whether a file is a program that the system runs itself: in the machine's own form, with the
/// right to be run by this person. A script is none, nor is a library.
bool IsProgramFile(const std::string& path);

/// Whether what a program needs to be read is there: true but for a script whose first line names an
/// interpreter that is none.
bool HasInterpreter(const std::string& path);

} // namespace kits
