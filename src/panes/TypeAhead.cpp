#include "panes/TypeAhead.h"

#include "panes/DirListItem.h"
#include "panes/Letters.h"

#include <string>

namespace norvane {

namespace {

/// Of a key's bytes; 0 when there are none.
uint32 FirstCharacter(const char* bytes, int32 byteCount)
{
    const std::string text(bytes, byteCount > 0 ? static_cast<std::size_t>(byteCount) : 0);
    const char* rest = text.c_str();
    return TakeCharacter(&rest);
}

bool BeginsWith(const DirListItem& row, uint32 folded)
{
    const char* name = row.GetEntryName();
    return FoldedCase(TakeCharacter(&name)) == folded;
}

} // namespace

bool IsTypeAheadKey(const char* bytes, int32 byteCount)
{
    const uint32 character = FirstCharacter(bytes, byteCount);
    return character == '.' || (character != 0 && IsLetterOrDigit(character));
}

int32 FindByFirstCharacter(const RowSequence& rows, const char* bytes, int32 byteCount,
                           int32 selected)
{
    const int32 count = rows.CountRows();
    if (count == 0 || byteCount <= 0) {
        return -1;
    }
    const uint32 typed = FoldedCase(FirstCharacter(bytes, byteCount));
    if (IsStrayByte(typed)) {
        return -1;
    }
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
