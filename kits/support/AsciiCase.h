#pragma once

namespace kits {

// Case without regard to the locale: bytes of UTF-8 sequences stay as they are.

constexpr bool IsUpperAscii(char character)
{
    return character >= 'A' && character <= 'Z';
}

constexpr bool IsLowerAscii(char character)
{
    return character >= 'a' && character <= 'z';
}

constexpr char ToLowerAscii(char character)
{
    return IsUpperAscii(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char ToUpperAscii(char character)
{
    return IsLowerAscii(character) ? static_cast<char>(character - 'a' + 'A') : character;
}

} // namespace kits
