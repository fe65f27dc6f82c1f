#include "viewer/HexRows.h"

#include <charconv>
#include <cstdio>

namespace norvane {

namespace {

constexpr int32 kGroup = 4; // so many bytes stand closer together
constexpr int32 kGap = 2;   // letters between the columns
constexpr int32 kMostInRow = 16;
constexpr char kHexDigits[] = "0123456789abcdef";

int32 DigitsOf(int64 offset)
{
    int32 digits = 1;
    while ((offset >>= 4) > 0) {
        digits++;
    }
    return digits;
}

} // namespace

HexRows HexRows::Fitting(int64 fileSize, int32 columns)
{
    HexRows rows;
    rows.fileSize = fileSize;
    rows.offsetDigits = std::max(8, DigitsOf(fileSize));
    rows.bytesInRow = kMostInRow;
    while (rows.bytesInRow > kGroup && rows.Columns() > columns) {
        rows.bytesInRow /= 2;
    }
    return rows;
}

int32 HexRows::DigitsAt(int32 byte) const
{
    return offsetDigits + kGap + byte * 3 + byte / kGroup;
}

int32 HexRows::CharacterAt(int32 byte) const
{
    return DigitsAt(bytesInRow - 1) + 2 + kGap + byte;
}

int32 HexRows::Columns() const
{
    return CharacterAt(bytesInRow);
}

std::string HexRows::Offset(int64 row) const
{
    char text[32];
    const int64 offset = OffsetOf(row);
    std::snprintf(text, sizeof(text), "%0*llx", offsetDigits,
                  static_cast<unsigned long long>(offset));
    return text;
}

std::string HexRows::Digits(std::string_view bytes) const
{
    std::string text;
    for (int32 i = 0; i < static_cast<int32>(bytes.size()); i++) {
        text.resize(static_cast<size_t>(DigitsAt(i) - DigitsAt(0)), ' ');
        const auto byte = static_cast<uint8>(bytes[static_cast<size_t>(i)]);
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 15];
    }
    return text;
}

std::string HexRows::Characters(std::string_view bytes)
{
    std::string text(bytes);
    for (char& letter : text) {
        if (letter < ' ' || letter > '~') {
            letter = '.';
        }
    }
    return text;
}

int64 OffsetIn(std::string_view text)
{
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = isHex ? text.substr(2) : text;
    int64 offset = -1;
    const char* end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, offset, isHex ? 16 : 10);
    return read.ec == std::errc() && read.ptr == end && offset >= 0 ? offset : -1;
}

} // namespace norvane
