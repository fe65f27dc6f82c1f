#pragma once

#include <string>
#include <string_view>

namespace kits {

/// A path as addresses and the Trash's records have it: bytes that are no plain letters, digits or
/// one of "-._~/" are written as "%" and two digits.
std::string EscapedPath(std::string_view path);

} // namespace kits
