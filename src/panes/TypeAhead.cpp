#include "panes/TypeAhead.h"

#include "panes/DirListItem.h"

#include <cstring>
#include <locale>
#include <stdexcept>

namespace norvane {

namespace {

constexpr uint32 kNoCharacter = 0xffffffff;

/// The first character of UTF-8 text, kNoCharacter when its bytes are none.
uint32 FirstCharacter(const char* text, std::size_t length)
{
    if (length == 0) {
        return kNoCharacter;
    }
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t count = lead >= 0xf0 ? 4 : (lead >= 0xe0 ? 3 : (lead >= 0xc0 ? 2 : 0));
    if (count == 0 || count > length) {
        return kNoCharacter;
    }
    uint32 character = lead & (0x7fu >> count);
    for (std::size_t i = 1; i < count; i++) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xc0u) != 0x80u) {
            return kNoCharacter;
        }
        character = (character << 6) | (byte & 0x3fu);
    }
    return character;
}

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

uint32 Folded(uint32 character)
{
    const std::ctype<wchar_t>* letters = Letters();
    if (letters == nullptr) {
        return character >= 'a' && character <= 'z' ? character - 'a' + 'A' : character;
    }
    const auto upper = letters->toupper(static_cast<wchar_t>(character));
    return static_cast<uint32>(letters->tolower(upper));
}

bool IsLetterOrDigit(uint32 character)
{
    const std::ctype<wchar_t>* letters = Letters();
    if (letters != nullptr) {
        return letters->is(std::ctype_base::alnum, static_cast<wchar_t>(character));
    }
    return character >= 0x80 || (character >= '0' && character <= '9') ||
           (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool BeginsWith(const DirListItem& row, uint32 folded)
{
    const char* name = row.GetEntryName();
    const uint32 first = FirstCharacter(name, std::strlen(name));
    return first != kNoCharacter && Folded(first) == folded;
}

} // namespace

bool IsTypeAheadKey(const char* bytes, int32 byteCount)
{
    const uint32 character =
        FirstCharacter(bytes, byteCount > 0 ? static_cast<std::size_t>(byteCount) : 0);
    return character != kNoCharacter && (character == '.' || IsLetterOrDigit(character));
}

int32 FindByFirstCharacter(const RowSequence& rows, const char* bytes, int32 byteCount,
                           int32 selected)
{
    const int32 count = rows.CountRows();
    if (count == 0 || byteCount <= 0) {
        return -1;
    }
    const uint32 typed = Folded(FirstCharacter(bytes, static_cast<std::size_t>(byteCount)));
    const bool goesOn =
        selected >= 0 && selected < count - 1 && BeginsWith(*rows.RowAt(selected), typed);
    const int32 start = goesOn ? selected + 1 : 0;
    for (int32 step = 0; step < count; step++) {
        const int32 index = (start + step) % count;
        if (BeginsWith(*rows.RowAt(index), typed)) {
            return index;
        }
    }
    return -1;
}

} // namespace norvane
