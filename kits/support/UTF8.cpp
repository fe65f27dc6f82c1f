#include <UTF8.h>

namespace {

/// A character at the beginning of what is converted.
struct Character
{
    uint32 code = 0;
    int32 length = 0; // bytes of the source; 0: there is no whole one
    bool isLone = false;
};

bool IsHigh(uint32 unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

bool IsLow(uint32 unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}

uint32 Byte(const char* bytes, int32 index)
{
    return static_cast<uint8>(bytes[index]);
}

Character ReadLatin(const char* bytes, int32 length)
{
    return length > 0 ? Character{Byte(bytes, 0), 1, false} : Character();
}

Character ReadUnicode(const char* bytes, int32 length)
{
    if (length < 2) {
        return {};
    }
    const uint32 unit = Byte(bytes, 0) << 8 | Byte(bytes, 1);
    if (!IsHigh(unit)) {
        return {unit, 2, IsLow(unit)};
    }
    if (length < 4) {
        return {};
    }
    const uint32 next = Byte(bytes, 2) << 8 | Byte(bytes, 3);
    if (!IsLow(next)) {
        return {unit, 2, true};
    }
    return {0x10000 + ((unit - 0xd800) << 10) + (next - 0xdc00), 4, false};
}

/// Writes at most four bytes; how many.
int32 Write(uint32 code, char* target)
{
    if (code < 0x80) {
        target[0] = static_cast<char>(code);
        return 1;
    }
    const int32 rest = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr uint32 kFirst[] = {0, 0xc0, 0xe0, 0xf0};
    target[0] = static_cast<char>(kFirst[rest] | code >> (6 * rest));
    for (int32 i = 1; i <= rest; i++) {
        target[i] = static_cast<char>(0x80 | (code >> (6 * (rest - i)) & 0x3f));
    }
    return rest + 1;
}

} // namespace

status_t convert_to_utf8(uint32 sourceEncoding, const char* source, int32* sourceLength,
                         char* target, int32* targetLength, int32*, char substitute)
{
    const bool isLatin = sourceEncoding == B_ISO1_CONVERSION;
    const bool isKnown = isLatin || sourceEncoding == B_UNICODE_CONVERSION;
    if (!isKnown || source == nullptr || sourceLength == nullptr || target == nullptr ||
        targetLength == nullptr) {
        return B_BAD_VALUE;
    }
    int32 taken = 0;
    int32 written = 0;
    for (;;) {
        const int32 left = *sourceLength - taken;
        const Character found =
            isLatin ? ReadLatin(source + taken, left) : ReadUnicode(source + taken, left);
        if (found.length == 0) {
            break;
        }
        char bytes[4] = {substitute};
        const int32 count = found.isLone ? 1 : Write(found.code, bytes);
        if (written + count > *targetLength) {
            break;
        }
        for (int32 i = 0; i < count; i++) {
            target[written + i] = bytes[i];
        }
        taken += found.length;
        written += count;
    }
    *sourceLength = taken;
    *targetLength = written;
    return B_OK;
}
