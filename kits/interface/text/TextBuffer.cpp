#include "TextBuffer.h"

#include <algorithm>
#include <utility>

namespace kits {

namespace {

// Parts up to this size are copied in no time, and a small one does not keep a large text alive.
constexpr size_t kCopiedBytes = size_t{256} * 1024;

bool IsContinuation(char byte)
{
    return (static_cast<uint8>(byte) & 0xc0) == 0x80;
}

// The second byte's limits: they keep out overlong forms, surrogates and what lies above U+10FFFF.
bool IsSecondByte(uint8 first, uint8 second)
{
    switch (first) {
    case 0xe0:
        return second >= 0xa0 && second <= 0xbf;
    case 0xed:
        return second >= 0x80 && second <= 0x9f;
    case 0xf0:
        return second >= 0x90 && second <= 0xbf;
    case 0xf4:
        return second >= 0x80 && second <= 0x8f;
    default:
        return second >= 0x80 && second <= 0xbf;
    }
}

} // namespace

int32 Utf8Length(std::string_view bytes)
{
    if (bytes.empty()) {
        return 0;
    }
    const uint8 first = static_cast<uint8>(bytes[0]);
    if (first < 0x80) {
        return 1;
    }
    int32 length = 0;
    if (first >= 0xc2 && first <= 0xdf) {
        length = 2;
    } else if (first >= 0xe0 && first <= 0xef) {
        length = 3;
    } else if (first >= 0xf0 && first <= 0xf4) {
        length = 4;
    }
    if (length == 0 || bytes.size() < static_cast<size_t>(length) ||
        !IsSecondByte(first, static_cast<uint8>(bytes[1]))) {
        return 0;
    }
    for (int32 i = 2; i < length; ++i) {
        if (!IsContinuation(bytes[static_cast<size_t>(i)])) {
            return 0;
        }
    }
    return length;
}

std::string_view CutAtCharacter(std::string_view text, int32 length)
{
    size_t place = 0;
    const size_t limit = static_cast<size_t>(std::max<int32>(length, 0));
    while (place < text.size()) {
        const size_t next =
            place + static_cast<size_t>(std::max<int32>(1, Utf8Length(text.substr(place))));
        if (next > limit) {
            break;
        }
        place = next;
    }
    return text.substr(0, place);
}

void TextBuffer::SetText(std::string_view text)
{
    fBytes = std::make_shared<std::string>(text);
    fIsShared = false;
    fLines.Build(fIsSingleLine ? std::string_view() : Bytes());
}

void TextBuffer::TakeText(std::string&& text)
{
    fBytes = std::make_shared<std::string>(std::move(text));
    fIsShared = false;
    fLines.Build(fIsSingleLine ? std::string_view() : Bytes());
}

void TextBuffer::TakeFrom(TextBuffer& other)
{
    fBytes = std::exchange(other.fBytes, std::make_shared<std::string>());
    fIsShared = std::exchange(other.fIsShared, false);
    fLines = std::exchange(other.fLines, TextLineIndex());
    if (fIsSingleLine) {
        fLines.Build({});
    }
}

std::shared_ptr<const std::string> TextBuffer::ShareAll()
{
    fIsShared = true;
    return fBytes;
}

void TextBuffer::Replace(int32 from, int32 to, std::string_view inserted)
{
    // The first key in a large text would copy all of it to a larger place.
    const size_t needed = fBytes->size() - static_cast<size_t>(to - from) + inserted.size();
    if (fIsShared || needed > fBytes->capacity()) {
        auto larger = std::make_shared<std::string>();
        larger->reserve(needed + needed / 8);
        larger->append(*fBytes, 0, static_cast<size_t>(from));
        larger->append(inserted);
        larger->append(*fBytes, static_cast<size_t>(to), std::string::npos);
        fBytes = std::move(larger);
        fIsShared = false;
    } else {
        fBytes->replace(static_cast<size_t>(from), static_cast<size_t>(to - from), inserted);
    }
    if (!fIsSingleLine) {
        fLines.Replace(from, to - from, inserted);
    }
}

void TextBuffer::SetSingleLine(bool isSingle)
{
    fIsSingleLine = isSingle;
    fLines.Build(isSingle ? std::string_view() : Bytes());
}

TextShowing TextBuffer::Showing() const
{
    if (fHidesText) {
        return TextShowing::kHidden;
    }
    return fIsSingleLine ? TextShowing::kSingleLine : TextShowing::kLines;
}

std::string_view TextBuffer::Part(int32 from, int32 to) const
{
    return std::string_view(*fBytes).substr(static_cast<size_t>(from),
                                            static_cast<size_t>(to - from));
}

SharedText TextBuffer::Share(int32 from, int32 to)
{
    const std::string_view part = Part(from, to);
    if (part.size() <= kCopiedBytes) {
        return SharedText(std::string(part));
    }
    // Whether others still hold it cannot be seen safely from here: the next change makes a new
    // one.
    fIsShared = true;
    return SharedText(fBytes, static_cast<size_t>(from), part.size());
}

int32 TextBuffer::Clamp(int32 offset) const
{
    offset = std::clamp(offset, 0, Length());
    // A character has at most three bytes behind its first.
    for (int32 back = 1; back <= 3 && back <= offset && offset < Length(); ++back) {
        if (!IsContinuation((*fBytes)[static_cast<size_t>(offset)])) {
            break;
        }
        if (Utf8Length(std::string_view(*fBytes).substr(static_cast<size_t>(offset - back))) >
            back) {
            return offset - back;
        }
    }
    return offset;
}

int32 TextBuffer::LineEnd(int32 line) const
{
    return line + 1 < CountLines() ? LineStart(line + 1) - 1 : Length();
}

} // namespace kits
