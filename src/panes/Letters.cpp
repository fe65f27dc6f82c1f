#include "panes/Letters.h"

#include <cstddef>
#include <locale>
#include <stdexcept>

namespace norvane {

namespace {

constexpr uint32 kStrayBytes = 0x80000000;

/// The letters of all scripts, whatever the user's language; null where the system has no such
/// table.
const std::ctype<wchar_t>* Letters()
{
    static const std::locale* const unicode = [] {
        try {
            return new std::locale("C.UTF-8"); // kept for the program's life
        } catch (const std::runtime_error&) {
            return static_cast<std::locale*>(nullptr);
        }
    }();
    return unicode != nullptr ? &std::use_facet<std::ctype<wchar_t>>(*unicode) : nullptr;
}

bool IsAscii(uint32 character)
{
    return character < 0x80;
}

} // namespace

uint32 TakeCharacter(const char** text)
{
    const auto lead = static_cast<unsigned char>(**text);
    if (lead == 0) {
        return 0;
    }
    ++*text;
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t count = lead >= 0xf0 ? 4 : (lead >= 0xe0 ? 3 : (lead >= 0xc0 ? 2 : 0));
    if (count == 0) {
        return kStrayBytes | lead;
    }
    uint32 character = lead & (0x7fu >> count);
    for (std::size_t i = 1; i < count; i++) {
        const auto byte = static_cast<unsigned char>((*text)[i - 1]); // the end is none either
        if ((byte & 0xc0u) != 0x80u) {
            return kStrayBytes | lead;
        }
        character = (character << 6) | (byte & 0x3fu);
    }
    *text += count - 1;
    return character;
}

bool IsStrayByte(uint32 character)
{
    return (character & kStrayBytes) != 0;
}

uint32 FoldedCase(uint32 character)
{
    if (IsAscii(character)) {
        return character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character;
    }
    const std::ctype<wchar_t>* letters = Letters();
    if (letters == nullptr || IsStrayByte(character)) {
        return character;
    }
    const auto upper = letters->toupper(static_cast<wchar_t>(character));
    return static_cast<uint32>(letters->tolower(upper));
}

bool IsCapital(uint32 character)
{
    if (IsAscii(character)) {
        return character >= 'A' && character <= 'Z';
    }
    const std::ctype<wchar_t>* letters = Letters();
    return letters != nullptr && !IsStrayByte(character) &&
           letters->is(std::ctype_base::upper, static_cast<wchar_t>(character));
}

bool IsLetterOrDigit(uint32 character)
{
    if (IsStrayByte(character)) {
        return false;
    }
    const std::ctype<wchar_t>* letters = Letters();
    if (letters != nullptr) {
        return letters->is(std::ctype_base::alnum, static_cast<wchar_t>(character));
    }
    return character >= 0x80 || (character >= '0' && character <= '9') ||
           (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool HasCapital(const char* text)
{
    while (const uint32 character = TakeCharacter(&text)) {
        if (IsCapital(character)) {
            return true;
        }
    }
    return false;
}

} // namespace norvane
