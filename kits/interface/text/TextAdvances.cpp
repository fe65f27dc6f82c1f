#include "TextAdvances.h"

#include "TextBuffer.h"
#include "TextLayout.h"

#include <cmath>

namespace kits {

namespace {

constexpr double kUnits = 64;
// More than all that is known of a text of 2 GiB adds up to.
constexpr int64 kUnknown = int64{1} << 54;
constexpr size_t kPlainEnd = 0x250;  // behind the Latin letters
constexpr size_t kSoftHyphen = 0xad; // shown or not

// The code of a character of two bytes when it is plain, else 0.
size_t PlainCode(std::string_view character)
{
    const size_t code = (static_cast<uint8>(character[0]) & size_t{0x1f}) << 6 |
                        (static_cast<uint8>(character[1]) & size_t{0x3f});
    return code > 0xa0 && code < kPlainEnd && code != kSoftHyphen ? code : 0;
}

int64 Measure(std::string_view character, const TextStyle& style)
{
    const TextLayout layout(character, style, nullptr, TextDirection::kLeftToRight);
    return std::llround(layout.Advance() * kUnits);
}

} // namespace

void TextAdvances::Clear()
{
    fAscii.fill(kUnknown);
    fOthers.clear();
}

std::optional<double> TextAdvances::WidthOf(std::string_view bytes, const TextStyle& style)
{
    // Mostly all of it is ASCII that was measured before.
    int64 sum = 0;
    for (const char byte : bytes) {
        sum += fAscii[static_cast<uint8>(byte)];
        if (sum >= kUnknown) {
            break;
        }
    }
    if (sum >= kUnknown) {
        const std::optional<int64> found = SumByCharacters(bytes, style);
        if (!found.has_value()) {
            return std::nullopt;
        }
        sum = *found;
    }
    return static_cast<double>(sum) / kUnits;
}

std::optional<int64> TextAdvances::SumByCharacters(std::string_view bytes, const TextStyle& style)
{
    fOthers.resize(kPlainEnd, -1);
    int64 sum = 0;
    for (size_t place = 0; place < bytes.size();) {
        const size_t length = static_cast<size_t>(Utf8Length(bytes.substr(place)));
        const std::string_view character = bytes.substr(place, length);
        if (length == 1) {
            int64& width = fAscii[static_cast<uint8>(character[0])];
            if (character[0] == '\t' && style.showing == TextShowing::kLines) {
                return std::nullopt; // as wide as its place makes it
            }
            width = width == kUnknown ? Measure(character, style) : width;
            sum += width;
        } else if (length == 2 && PlainCode(character) != 0) {
            int64& width = fOthers[PlainCode(character)];
            width = width < 0 ? Measure(character, style) : width;
            sum += width;
        } else {
            return std::nullopt;
        }
        place += length;
    }
    return sum;
}

} // namespace kits
