#pragma once

#include <SupportDefs.h>

#include <limits>
#include <string>
#include <string_view>

namespace norvane {

/// How the bytes of a file of some size lie in rows: an offset, the bytes as hexadecimal digits in
/// groups of four, and the same bytes as characters. Values only.
struct HexRows
{
    /// As many bytes in a row, 16, 8 or 4, as fit `columns` letters.
    static HexRows Fitting(int64 fileSize, int32 columns);

    /// How many rows the file has.
    int64 Count() const
    {
        return fileSize / bytesInRow + (fileSize % bytesInRow != 0 ? 1 : 0); // no sum to overflow
    }
    /// Where a row begins, in bytes from the file's start; the greatest offset of all for rows
    /// behind it.
    int64 OffsetOf(int64 row) const
    {
        constexpr int64 kMost = std::numeric_limits<int64>::max();
        return row <= kMost / bytesInRow ? row * bytesInRow : kMost;
    }
    /// How many letters a row has.
    int32 Columns() const;
    /// Where the digits of a row's n-th byte begin, and its character is, in letters.
    int32 DigitsAt(int32 byte) const;
    int32 CharacterAt(int32 byte) const;

    /// A row's offset; the digits and the characters of what is known of its bytes: blank behind.
    std::string Offset(int64 row) const;
    std::string Digits(std::string_view bytes) const;
    static std::string Characters(std::string_view bytes);

    int64 fileSize = 0;     // bytes
    int32 bytesInRow = 16;  // a power of two
    int32 offsetDigits = 8; // more for a file beyond 4 GiB
};

/// The offset that a text says, decimal or with "0x" in front; negative when it says none.
int64 OffsetIn(std::string_view text);

} // namespace norvane
