#pragma once

#include <string>

namespace norvane {

/// Whether a command can hold the text: it is not null, and has no line break, behind which another
/// command would begin.
bool IsOneLine(const char* text);

/// A command with its line end; a null `argument` is left out, with its blank.
std::string CommandLine(const char* verb, const char* argument);

} // namespace norvane
