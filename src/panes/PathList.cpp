#include "panes/PathList.h"

#include <SupportDefs.h>

#include <algorithm>
#include <string_view>

namespace norvane {

namespace {

bool IsControl(char byte)
{
    const auto value = static_cast<uint8>(byte);
    return value < 0x20 || value == 0x7f;
}

/// How many bytes the UTF-8 character at the text's start has; 0 when there is none.
std::size_t CharacterLength(std::string_view text)
{
    const auto first = static_cast<uint8>(text[0]);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length) {
        return 0;
    }
    uint32 character = first & (0xffU >> (length + 1));
    for (std::size_t i = 1; i < length; i++) {
        const auto next = static_cast<uint8>(text[i]);
        if ((next & 0xc0) != 0x80) {
            return 0;
        }
        character = (character << 6) | (next & 0x3fU);
    }
    constexpr uint32 kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xd800 && character < 0xe000;
    return character < kLeast[length] || character > 0x10ffff || isSurrogate ? 0 : length;
}

bool IsText(std::string_view path)
{
    while (!path.empty()) {
        const std::size_t length = CharacterLength(path);
        if (length == 0 || IsControl(path[0])) {
            return false;
        }
        path.remove_prefix(length);
    }
    return true;
}

bool IsPlain(char byte)
{
    const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    constexpr std::string_view kOthers = "0123456789-._~/";
    return isLetter || kOthers.find(byte) != std::string_view::npos;
}

std::string AsAddress(const std::string& path)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string address = "file://";
    for (const char byte : path) {
        if (IsPlain(byte)) {
            address += byte;
        } else {
            const auto value = static_cast<uint8>(byte);
            address += {'%', kDigits[value >> 4], kDigits[value & 15]};
        }
    }
    return address;
}

} // namespace

std::string PathsAsText(const std::vector<std::string>& paths)
{
    std::string text;
    for (const std::string& path : paths) {
        if (!text.empty()) {
            text += '\n';
        }
        text += IsText(path) ? path : AsAddress(path);
    }
    return text;
}

} // namespace norvane
