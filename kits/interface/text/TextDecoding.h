#pragma once

#include <SupportDefs.h>

#include <QString>

#include <string_view>
#include <vector>

namespace kits {

/// What a line is written along.
enum class TextDirection : uint8 { kUnknown, kLeftToRight, kRightToLeft };

/// A line's bytes as what is shown, and the way from one to the other.
///
/// Bytes that are not UTF-8 become U+FFFD each, control characters but the tab their signs
/// (U+2400 on), as do the line ends of Unicode: only a line feed ends a line here.
/// Units: "units" are those of UTF-16.
class DecodedText
{
public:
    /// `showsTabs`: a tab becomes a sign too.
    DecodedText(std::string_view bytes, bool showsTabs);

    const QString& Text() const { return fText; }
    /// Whether some of it is written from right to left.
    bool HasRightToLeft() const { return fHasRightToLeft; }
    int32 CountBytes() const { return fByteCount; }
    int32 UnitOf(int32 byte) const;
    int32 ByteOf(int32 unit) const;

private:
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
