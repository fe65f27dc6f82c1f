#pragma once

#include <string>
#include <string_view>

namespace kits {

/// A path as addresses and the Trash's records have it: bytes that are no plain letters, digits or
/// one of "-._~/" are written as "%" and two digits.
std::string EscapedPath(std::string_view path);
/// The path that was written so. False for a "%" without two digits behind it, and for a byte 0.
bool UnescapePath(std::string_view escaped, std::string* path);

} // namespace kits
