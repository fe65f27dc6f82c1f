#pragma once

#include <string>
#include <vector>

namespace norvane {

/// Paths as a text, one in each line. A path that a line of text cannot hold as it is, for it is no
/// UTF-8 or has a line break or another control character in it, is written as a "file://" address.
std::string PathsAsText(const std::vector<std::string>& paths);

} // namespace norvane
