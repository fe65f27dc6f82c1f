#include <String.h>

#include <algorithm>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

/// The length of a text; longer than a BString can be counts as the longest.
int32 LengthOf(const char* text)
{
    return text == nullptr ? 0 : static_cast<int32>(::strnlen(text, INT32_MAX - 1));
}

int32 LengthWithin(const char* text, int32 maxLength)
{
    if (text == nullptr || maxLength <= 0) {
        return 0;
    }
    return static_cast<int32>(::strnlen(text, static_cast<size_t>(maxLength)));
}

int32 Clamp(int32 value, int32 high)
{
    return std::clamp<int32>(value, 0, high);
}

} // namespace

char BString::sEmpty[1] = "";

BString::BString(const char* text)
{
    SetTo(text);
}

BString::BString(const BString& other)
{
    SetTo(other);
}

BString::BString(BString&& other) noexcept
{
    Adopt(other);
}

BString::BString(const char* text, int32 maxLength)
{
    SetTo(text, maxLength);
}

BString::~BString()
{
    if (fCapacity > 0) {
        std::free(fText);
    }
}

int32 BString::CountChars() const
{
    return static_cast<int32>(std::count_if(fText, fText + fLength, [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

BString& BString::operator=(const BString& other)
{
    return this == &other ? *this : SetTo(other);
}

BString& BString::operator=(BString&& other) noexcept
{
    return Adopt(other);
}

BString& BString::operator=(const char* text)
{
    return SetTo(text);
}

BString& BString::operator=(char character)
{
    return SetTo(character, 1);
}

BString& BString::SetTo(const char* text)
{
    return SetTo(text, INT32_MAX - 1);
}

BString& BString::SetTo(const char* text, int32 maxLength)
{
    const int32 length = LengthWithin(text, maxLength);
    if (length == 0) {
        return Truncate(0);
    }
    // A part of this very text: it fits already, and must not move before it is copied.
    if (text >= fText && text <= fText + fLength) {
        std::memmove(fText, text, static_cast<size_t>(length));
        return Truncate(length);
    }
    if (Reserve(length) != nullptr) {
        std::memcpy(fText, text, static_cast<size_t>(length));
        fLength = length;
        fText[length] = '\0';
    }
    return *this;
}

BString& BString::SetTo(const BString& other)
{
    return SetTo(other, other.fLength);
}

BString& BString::SetTo(const BString& other, int32 maxLength)
{
    const int32 length = Clamp(maxLength, other.fLength);
    if (&other == this) {
        return Truncate(length);
    }
    if (length == 0) {
        return Truncate(0);
    }
    // Not by way of the text: it may hold zero bytes, put there through operator[].
    if (Reserve(length) != nullptr) {
        std::memcpy(fText, other.fText, static_cast<size_t>(length));
        fLength = length;
        fText[length] = '\0';
    }
    return *this;
}

BString& BString::SetTo(char character, int32 count)
{
    if (count <= 0) {
        return Truncate(0);
    }
    if (Reserve(count) != nullptr) {
        std::memset(fText, character, static_cast<size_t>(count));
        fLength = count;
        fText[count] = '\0';
    }
    return *this;
}

BString& BString::Adopt(BString& from)
{
    if (&from != this) {
        std::swap(fText, from.fText);
        std::swap(fLength, from.fLength);
        std::swap(fCapacity, from.fCapacity);
        from.Truncate(0, false);
    }
    return *this;
}

BString& BString::Adopt(BString& from, int32 maxLength)
{
    return Adopt(from).Truncate(std::max<int32>(maxLength, 0));
}

BString& BString::SetToFormat(const char* format, ...)
{
    char* formatted = nullptr;
    va_list arguments;
    va_start(arguments, format);
    // Into memory of its own: the arguments may point into this text.
    const int length = ::vasprintf(&formatted, format, arguments);
    va_end(arguments);
    if (length >= 0) {
        SetTo(formatted, length);
        std::free(formatted);
    }
    return *this;
}

BString& BString::CopyInto(BString& into, int32 fromOffset, int32 length) const
{
    const int32 from = Clamp(fromOffset, fLength);
    const int32 count = Clamp(length, fLength - from);
    into.SetTo(fText + from, count);
    return into;
}

void BString::CopyInto(char* into, int32 fromOffset, int32 length) const
{
    if (into != nullptr) {
        const int32 from = Clamp(fromOffset, fLength);
        std::memcpy(into, fText + from, static_cast<size_t>(Clamp(length, fLength - from)));
    }
}

BString& BString::MoveInto(BString& into, int32 from, int32 length)
{
    CopyInto(into, from, length);
    if (&into != this) {
        Remove(from, length);
    }
    return into;
}

void BString::MoveInto(char* into, int32 from, int32 length)
{
    CopyInto(into, from, length);
    Remove(from, length);
}

BString& BString::operator+=(const BString& other)
{
    return Insert(other, fLength);
}

BString& BString::operator+=(const char* text)
{
    return Insert(text, fLength);
}

BString& BString::operator+=(char character)
{
    return Insert(character, 1, fLength);
}

BString& BString::Append(const BString& other)
{
    return Insert(other, fLength);
}

BString& BString::Append(const BString& other, int32 maxLength)
{
    return Insert(other, maxLength, fLength);
}

BString& BString::Append(const char* text)
{
    return Insert(text, fLength);
}

BString& BString::Append(const char* text, int32 maxLength)
{
    return Insert(text, maxLength, fLength);
}

BString& BString::Append(char character, int32 count)
{
    return Insert(character, count, fLength);
}

BString& BString::Prepend(const BString& other)
{
    return Insert(other, 0);
}

BString& BString::Prepend(const BString& other, int32 maxLength)
{
    return Insert(other, maxLength, 0);
}

BString& BString::Prepend(const char* text)
{
    return Insert(text, 0);
}

BString& BString::Prepend(const char* text, int32 maxLength)
{
    return Insert(text, maxLength, 0);
}

BString& BString::Prepend(char character, int32 count)
{
    return Insert(character, count, 0);
}

BString& BString::Insert(const BString& other, int32 position)
{
    return InsertBytes(other.fText, other.fLength, position);
}

BString& BString::Insert(const BString& other, int32 maxLength, int32 position)
{
    return InsertBytes(other.fText, Clamp(maxLength, other.fLength), position);
}

BString& BString::Insert(const BString& other, int32 fromOffset, int32 maxLength, int32 position)
{
    const int32 from = Clamp(fromOffset, other.fLength);
    return InsertBytes(other.fText + from, Clamp(maxLength, other.fLength - from), position);
}

BString& BString::Insert(const char* text, int32 position)
{
    return InsertBytes(text, LengthOf(text), position);
}

BString& BString::Insert(const char* text, int32 maxLength, int32 position)
{
    return InsertBytes(text, LengthWithin(text, maxLength), position);
}

BString& BString::Insert(const char* text, int32 fromOffset, int32 maxLength, int32 position)
{
    const int32 from = LengthWithin(text, fromOffset);
    return text == nullptr ? *this : Insert(text + from, maxLength, position);
}

BString& BString::Insert(char character, int32 count, int32 position)
{
    char* gap = count > 0 ? OpenGap(position, count) : nullptr;
    if (gap != nullptr) {
        std::memset(gap, character, static_cast<size_t>(count));
    }
    return *this;
}

BString& BString::Truncate(int32 newLength, bool lazy)
{
    const int32 length = Clamp(newLength, fLength);
    if (fCapacity == 0) {
        return *this;
    }
    fLength = length;
    fText[length] = '\0';
    if (lazy || length == fCapacity) {
        return *this;
    }
    if (length == 0) {
        std::free(fText);
        fText = sEmpty;
        fCapacity = 0;
    } else if (void* shrunk = std::realloc(fText, static_cast<size_t>(length) + 1)) {
        fText = static_cast<char*>(shrunk);
        fCapacity = length;
    }
    return *this;
}

BString& BString::Remove(int32 from, int32 length)
{
    const int32 start = Clamp(from, fLength);
    const int32 count = Clamp(length, fLength - start);
    if (count > 0) {
        std::memmove(fText + start, fText + start + count,
                     static_cast<size_t>(fLength - start - count));
        Truncate(fLength - count);
    }
    return *this;
}

char BString::ByteAt(int32 index) const
{
    return index >= 0 && index < fLength ? fText[index] : '\0';
}

char* BString::LockBuffer(int32 maxLength)
{
    // One byte at least, so that what is lent is never the shared empty text.
    return Reserve(std::max({maxLength, fLength, int32{1}}));
}

BString& BString::UnlockBuffer(int32 length)
{
    if (fCapacity == 0) {
        return *this; // LockBuffer() failed
    }
    if (length < 0) {
        length = static_cast<int32>(::strnlen(fText, static_cast<size_t>(fCapacity)));
    }
    fLength = Clamp(length, fCapacity);
    fText[fLength] = '\0';
    return *this;
}

BString& BString::operator<<(const char* text)
{
    return Append(text);
}

BString& BString::operator<<(const BString& other)
{
    return Append(other);
}

BString& BString::operator<<(char character)
{
    return Append(character, 1);
}

BString& BString::operator<<(int32 value)
{
    return *this << int64{value};
}

BString& BString::operator<<(uint32 value)
{
    return *this << uint64{value};
}

BString& BString::operator<<(int64 value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%" PRId64, value);
    return Append(text);
}

BString& BString::operator<<(uint64 value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%" PRIu64, value);
    return Append(text);
}

BString& BString::operator<<(float value)
{
    char text[64]; // the largest float has 39 digits before its point
    std::snprintf(text, sizeof(text), "%.2f", static_cast<double>(value));
    return Append(text);
}

/// Makes room for `capacity` bytes, which is more than 0, and a zero byte; null when memory runs
/// out.
char* BString::Reserve(int32 capacity)
{
    if (capacity <= fCapacity) {
        return fText;
    }
    // Half as much again, so that appending letter by letter stays cheap.
    int64 wanted = std::max<int64>(capacity, fCapacity + int64{fCapacity} / 2);
    wanted = std::min<int64>((wanted + 1 + 15) / 16 * 16 - 1, INT32_MAX - 1);
    if (wanted < capacity) {
        return nullptr;
    }
    void* grown = std::realloc(fCapacity > 0 ? fText : nullptr, static_cast<size_t>(wanted) + 1);
    if (grown == nullptr) {
        return nullptr;
    }
    fText = static_cast<char*>(grown);
    fText[fLength] = '\0'; // new memory after the empty text
    fCapacity = static_cast<int32>(wanted);
    return fText;
}

/// Moves what is at `position` behind a gap of `length` bytes and returns the gap.
char* BString::OpenGap(int32 position, int32 length)
{
    const int32 place = Clamp(position, fLength);
    if (length > INT32_MAX - 1 - fLength || Reserve(fLength + length) == nullptr) {
        return nullptr;
    }
    char* gap = fText + place;
    std::memmove(gap + length, gap, static_cast<size_t>(fLength - place) + 1);
    fLength += length;
    return gap;
}

BString& BString::InsertBytes(const char* bytes, int32 length, int32 position)
{
    if (length <= 0) {
        return *this;
    }
    if (bytes >= fText && bytes <= fText + fLength) {
        // Inserting a part of this text: it would move away while it is copied.
        BString copy;
        if (copy.Reserve(length) != nullptr) {
            std::memcpy(copy.fText, bytes, static_cast<size_t>(length));
            copy.fLength = length;
            copy.fText[length] = '\0';
            InsertBytes(copy.fText, length, position);
        }
        return *this;
    }
    if (char* gap = OpenGap(position, length)) {
        std::memcpy(gap, bytes, static_cast<size_t>(length));
    }
    return *this;
}
