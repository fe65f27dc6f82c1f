#pragma once

#include <string>

namespace kits {

/// Whether a command starts this very program, maybe by another one (`env A=b PROGRAM`): it is no
/// help to a person who looks for another.
bool IsOwnCommand(const std::string& command);

} // namespace kits
