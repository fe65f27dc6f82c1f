#pragma once

#include <SupportDefs.h>

#include <QString>

#include <string_view>
#include <vector>

namespace kits {

/// What a line is written along.
enum class TextDirection : uint8 { kUnknown, kLeftToRight, kRightToLeft };

/// How the bytes of a text are shown.
enum class TextShowing : uint8 {
    kLines,      // of a text of several lines: a tab is room
    kSingleLine, // a tab is a sign
    kHidden,     // every character is a bullet
};

constexpr char16_t kBullet = 0x2022;

/// A line's bytes as what is shown, and the way from one to the other.
///
/// Bytes that are not UTF-8 become U+FFFD each, control characters but the tab their signs
/// (U+2400 on), as do the line ends of Unicode: only a line feed ends a line here.
/// Units: "units" are those of UTF-16.
class DecodedText
{
public:
    DecodedText(std::string_view bytes, TextShowing showing);

    const QString& Text() const { return fText; }
    /// Whether some of it is written from right to left.
    bool HasRightToLeft() const { return fHasRightToLeft; }
    int32 CountBytes() const { return fByteCount; }
    int32 UnitOf(int32 byte) const;
    int32 ByteOf(int32 unit) const;

private:
    void Decode(std::string_view bytes, bool showsTabs);
    void Hide(std::string_view bytes);

    QString fText;
    std::vector<int32> fBytes; // for each unit and the end; empty when both count alike
    int32 fByteCount;
    bool fHasRightToLeft = false;
};

/// How many bytes of text were decoded so far, by all threads together. All that is shaped,
/// measured or searched for the limits of words is decoded first: tests bound the work of an event
/// by it.
int64 CountDecodedBytes();

} // namespace kits
