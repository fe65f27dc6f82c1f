#pragma once

#include <Font.h>

#include <string>
#include <vector>

namespace kits {

/// A text in lines that are at most `width` wide: broken at blanks, and within words that are wider
/// (paths), never within a letter. "\n" ends a line. Empty text: one empty line.
std::vector<std::string> TipLines(const BFont& font, const std::string& text, float width);

} // namespace kits
