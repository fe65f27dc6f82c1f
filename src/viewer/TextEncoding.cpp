#include "viewer/TextEncoding.h"

#include <UTF8.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace norvane {

namespace {

constexpr std::string_view kLowMark = "\xff\xfe";
constexpr std::string_view kHighMark = "\xfe\xff";
constexpr size_t kPieceBytes = size_t{64} * 1024;
// No byte becomes more than two: Latin-1 has no larger ones, and UTF-16 makes three of two.
constexpr size_t kMostGrowth = 2;

size_t SkipAscii(std::string_view bytes, size_t place)
{
    constexpr uint64 kHighBits = 0x8080808080808080;
    uint64 eight = 0;
    while (place + sizeof(eight) <= bytes.size()) {
        std::memcpy(&eight, bytes.data() + place, sizeof(eight));
        if ((eight & kHighBits) != 0) {
            break;
        }
        place += sizeof(eight);
    }
    while (place < bytes.size() && static_cast<uint8>(bytes[place]) < 0x80) {
        place++;
    }
    return place;
}

bool IsFollower(char byte)
{
    return (static_cast<uint8>(byte) & 0xc0) == 0x80;
}

/// How many bytes a character that begins so has; 0 when none does. `second` is what the next byte
/// may be at least and at most.
size_t LengthOf(uint8 first, std::pair<uint8, uint8>* second)
{
    *second = {0x80, 0xbf};
    if (first >= 0xc2 && first < 0xe0) {
        return 2;
    }
    if (first >= 0xe0 && first < 0xf0) {
        second->first = first == 0xe0 ? 0xa0 : 0x80;
        second->second = first == 0xed ? 0x9f : 0xbf;
        return 3;
    }
    if (first >= 0xf0 && first < 0xf5) {
        second->first = first == 0xf0 ? 0x90 : 0x80;
        second->second = first == 0xf4 ? 0x8f : 0xbf;
        return 4;
    }
    return 0;
}

bool IsUtf8(std::string_view bytes, bool isWhole)
{
    for (size_t place = SkipAscii(bytes, 0); place < bytes.size();
         place = SkipAscii(bytes, place)) {
        std::pair<uint8, uint8> second;
        const size_t length = LengthOf(static_cast<uint8>(bytes[place]), &second);
        const std::string_view rest = bytes.substr(place + 1, length > 0 ? length - 1 : 0);
        const bool isRight = rest.empty() || (static_cast<uint8>(rest[0]) >= second.first &&
                                              static_cast<uint8>(rest[0]) <= second.second);
        if (length == 0 || !isRight || !std::all_of(rest.begin(), rest.end(), IsFollower)) {
            return false;
        }
        if (rest.size() + 1 < length) {
            return !isWhole; // the end cuts it
        }
        place += length;
    }
    return true;
}

/// The platform knows UTF-16 with the higher byte first.
void SwapBytes(std::vector<char>& bytes, size_t length)
{
    for (size_t i = 0; i + 1 < length; i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
}

} // namespace

const char* NameOf(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::kUtf16Le:
        return "UTF-16 LE";
    case TextEncoding::kUtf16Be:
        return "UTF-16 BE";
    case TextEncoding::kLatin1:
        return "Latin-1";
    default:
        return "UTF-8";
    }
}

TextEncoding GuessEncoding(std::string_view bytes, bool isWhole)
{
    if (bytes.starts_with(kLowMark)) {
        return TextEncoding::kUtf16Le;
    }
    if (bytes.starts_with(kHighMark)) {
        return TextEncoding::kUtf16Be;
    }
    return IsUtf8(bytes, isWhole) ? TextEncoding::kUtf8 : TextEncoding::kLatin1;
}

std::string TextOf(std::string_view bytes, TextEncoding encoding, size_t* taken)
{
    const bool isLow = encoding == TextEncoding::kUtf16Le;
    const bool isWide = isLow || encoding == TextEncoding::kUtf16Be;
    if (!isWide && encoding != TextEncoding::kLatin1) {
        if (taken != nullptr) {
            *taken = bytes.size();
        }
        return std::string(bytes);
    }
    size_t place = isWide && bytes.starts_with(isLow ? kLowMark : kHighMark) ? 2 : 0;
    std::string text;
    text.reserve(bytes.size());
    std::vector<char> piece(kPieceBytes);
    std::vector<char> converted(kPieceBytes * kMostGrowth);
    while (place < bytes.size()) {
        auto length = static_cast<int32>(bytes.substr(place).copy(piece.data(), kPieceBytes));
        if (isLow) {
            SwapBytes(piece, static_cast<size_t>(length));
        }
        auto count = static_cast<int32>(converted.size());
        convert_to_utf8(isWide ? B_UNICODE_CONVERSION : B_ISO1_CONVERSION, piece.data(), &length,
                        converted.data(), &count, nullptr);
        if (length == 0) {
            break; // half a character
        }
        text.append(converted.data(), static_cast<size_t>(count));
        place += static_cast<size_t>(length);
    }
    if (taken != nullptr) {
        *taken = place;
    }
    return text;
}

} // namespace norvane
