#include <String.h>

#include "support/AsciiCase.h"

#include <algorithm>
#include <cstring>

// Removing by content, sets of bytes, case and escapes.

namespace {

bool IsInSet(char byte, const char* set)
{
    return set != nullptr && byte != '\0' && std::strchr(set, byte) != nullptr;
}

} // namespace

BString& BString::RemoveFirst(const BString& text)
{
    const int32 found = text.IsEmpty() ? B_ERROR : FindFirst(text);
    return found < 0 ? *this : Remove(found, text.Length());
}

BString& BString::RemoveLast(const BString& text)
{
    const int32 found = text.IsEmpty() ? B_ERROR : FindLast(text);
    return found < 0 ? *this : Remove(found, text.Length());
}

BString& BString::RemoveAll(const BString& text)
{
    return ReplaceAll(text.String(), "");
}

BString& BString::RemoveSet(const char* setOfBytes)
{
    if (setOfBytes != nullptr) {
        char* end = std::remove_if(fText, fText + fLength,
                                   [setOfBytes](char byte) { return IsInSet(byte, setOfBytes); });
        Truncate(static_cast<int32>(end - fText));
    }
    return *this;
}

BString& BString::ReplaceSet(const char* setOfBytes, char with)
{
    std::replace_if(
        fText, fText + fLength, [setOfBytes](char byte) { return IsInSet(byte, setOfBytes); },
        with);
    return *this;
}

BString& BString::ReplaceSet(const char* setOfBytes, const char* with)
{
    if (setOfBytes == nullptr) {
        return *this;
    }
    BString result;
    bool isInRun = false;
    for (int32 i = 0; i < fLength; i++) {
        const bool isReplaced = IsInSet(fText[i], setOfBytes);
        if (!isReplaced) {
            result.Append(fText[i], 1);
        } else if (!isInRun) {
            result.Append(with);
        }
        isInRun = isReplaced;
    }
    return Adopt(result);
}

BString& BString::ToLower()
{
    std::transform(fText, fText + fLength, fText, kits::ToLowerAscii);
    return *this;
}

BString& BString::ToUpper()
{
    std::transform(fText, fText + fLength, fText, kits::ToUpperAscii);
    return *this;
}

BString& BString::Capitalize()
{
    ToLower();
    if (fLength > 0) {
        fText[0] = kits::ToUpperAscii(fText[0]);
    }
    return *this;
}

BString& BString::CapitalizeEachWord()
{
    ToLower();
    bool isInWord = false;
    for (int32 i = 0; i < fLength; i++) {
        // Letters beyond ASCII belong to words, too.
        const bool isLetter =
            kits::IsLowerAscii(fText[i]) || static_cast<unsigned char>(fText[i]) >= 0x80;
        if (isLetter && !isInWord) {
            fText[i] = kits::ToUpperAscii(fText[i]);
        }
        isInWord = isLetter;
    }
    return *this;
}

BString& BString::CharacterEscape(const char* setOfBytes, char escapeWith)
{
    const BString original(*this);
    return CharacterEscape(original.String(), setOfBytes, escapeWith);
}

BString& BString::CharacterEscape(const char* original, const char* setOfBytes, char escapeWith)
{
    BString result;
    for (const char* byte = original; byte != nullptr && *byte != '\0'; byte++) {
        if (IsInSet(*byte, setOfBytes)) {
            result.Append(escapeWith, 1);
        }
        result.Append(*byte, 1);
    }
    return Adopt(result);
}

BString& BString::CharacterDeescape(char escapeCharacter)
{
    const BString original(*this);
    return CharacterDeescape(original.String(), escapeCharacter);
}

BString& BString::CharacterDeescape(const char* original, char escapeCharacter)
{
    BString result;
    for (const char* byte = original; byte != nullptr && *byte != '\0'; byte++) {
        if (*byte == escapeCharacter && byte[1] != '\0') {
            byte++;
        }
        result.Append(*byte, 1);
    }
    return Adopt(result);
}
