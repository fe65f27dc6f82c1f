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

/// The value of a hexadecimal digit; -1 of anything else.
int DigitValue(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

bool UnescapePath(std::string_view escaped, std::string* path)
{
    path->clear();
    while (!escaped.empty()) {
        char byte = escaped[0];
        size_t length = 1;
        if (byte == '%') {
            const int high = escaped.size() > 2 ? DigitValue(escaped[1]) : -1;
            const int low = escaped.size() > 2 ? DigitValue(escaped[2]) : -1;
            if (high < 0 || low < 0) {
                return false;
            }
            byte = static_cast<char>(high * 16 + low);
            length = 3;
        }
        if (byte == '\0') {
            return false;
        }
        *path += byte;
        escaped.remove_prefix(length);
    }
    return true;
}

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
