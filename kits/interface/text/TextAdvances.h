#pragma once

#include <SupportDefs.h>

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace kits {

struct TextStyle;

/// Knows how wide plain text is without shaping it: a MiB takes a millisecond.
///
/// Plain are ASCII and the letters of Latin scripts, in pieces of long lines: there they are set
/// without kerning and ligatures, so that their widths add up. Keeps numbers for one style, and
/// nothing that belongs to a thread.
class TextAdvances
{
public:
    TextAdvances() { Clear(); }

    /// The style is another one.
    void Clear();
    /// The width of a piece of a line; nothing when some of it has to be shaped.
    std::optional<double> WidthOf(std::string_view bytes, const TextStyle& style);

private:
    std::optional<int64> SumByCharacters(std::string_view bytes, const TextStyle& style);

    // In 64ths, which is what fonts count in: sums are exact.
    std::array<int64, 256> fAscii; // for each byte; so much that a sum shows it where not known
    std::vector<int64> fOthers;    // for two-byte characters; below zero: not known
};

} // namespace kits
