#include "EscapedPath.h"

#include <cstdint>

namespace kits {

namespace {

bool IsPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_' ||
           byte == '~' || byte == '/';
}

} // namespace

std::string EscapedPath(std::string_view path)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    text.reserve(path.size() + 16);
    for (const char byte : path) {
        if (IsPlain(byte)) {
            text += byte;
            continue;
        }
        const auto value = static_cast<uint8_t>(byte);
        text += '%';
        text += kDigits[value >> 4];
        text += kDigits[value & 15];
    }
    return text;
}

} // namespace kits
