#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kits {

/// Breaks a text into lines that are at most `width` wide: at line breaks, else at blanks, else
/// inside a word. Blanks at a break are left out; a tab counts as four blanks. `measure` tells the
/// width of a text.
std::vector<std::string> WrapText(const std::string& text, float width,
                                  const std::function<float(const std::string&)>& measure);

} // namespace kits
