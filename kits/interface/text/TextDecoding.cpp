#include "TextDecoding.h"

#include "TextBuffer.h"

#include <algorithm>
#include <atomic>

namespace kits {

namespace {

std::atomic<int64> gDecodedBytes = 0;

constexpr char16_t kDeleteSign = 0x2421;
constexpr char16_t kNewLineSign = 0x2424;

char16_t ShownAscii(uint8 byte, bool showsTabs)
{
    if (byte == 0x7f) {
        return kDeleteSign;
    }
    const bool isSigned = byte < 0x20 && (byte != '\t' || showsTabs);
    return isSigned ? static_cast<char16_t>(0x2400 + byte) : byte;
}

bool IsRightToLeft(char32_t character)
{
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirRLI:
        return true;
    default:
        return false;
    }
}

/// Line ends other than the line feed, at which a line would be broken wherever it is shown.
bool IsLineEnd(QChar unit)
{
    return unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator || unit == QChar(0x85);
}

} // namespace

DecodedText::DecodedText(std::string_view bytes, TextShowing showing)
    : fByteCount(static_cast<int32>(bytes.size()))
{
    gDecodedBytes.fetch_add(fByteCount, std::memory_order_relaxed);
    fText.reserve(fByteCount);
    if (showing == TextShowing::kHidden) {
        Hide(bytes);
    } else {
        Decode(bytes, showing == TextShowing::kSingleLine);
    }
}

void DecodedText::Hide(std::string_view bytes)
{
    for (size_t place = 0; place < bytes.size();) {
        fText += QChar(kBullet);
        fBytes.push_back(static_cast<int32>(place));
        place += static_cast<size_t>(std::max<int32>(Utf8Length(bytes.substr(place)), 1));
    }
    fBytes.push_back(fByteCount);
}

void DecodedText::Decode(std::string_view bytes, bool showsTabs)
{
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(),
                                     [](char byte) { return static_cast<uint8>(byte) < 0x80; });
    if (isAscii) {
        for (const char byte : bytes) {
            fText += QChar(ShownAscii(static_cast<uint8>(byte), showsTabs));
        }
        return;
    }
    for (size_t place = 0; place < bytes.size();) {
        const int32 length = Utf8Length(bytes.substr(place));
        const qsizetype before = fText.size();
        if (length == 0) {
            fText += QChar(QChar::ReplacementCharacter);
        } else if (length == 1) {
            fText += QChar(ShownAscii(static_cast<uint8>(bytes[place]), showsTabs));
        } else {
            fText += QString::fromUtf8(bytes.data() + place, length);
        }
        for (qsizetype unit = before; unit < fText.size(); ++unit) {
            fBytes.push_back(static_cast<int32>(place));
            if (IsLineEnd(fText[unit])) {
                fText[unit] = QChar(kNewLineSign);
            }
        }
        const bool isPair = fText.size() - before == 2 && fText[before].isHighSurrogate();
        const char32_t character = isPair ? QChar::surrogateToUcs4(fText[before], fText[before + 1])
                                          : char32_t{fText[before].unicode()};
        fHasRightToLeft = fHasRightToLeft || IsRightToLeft(character);
        place += static_cast<size_t>(std::max<int32>(length, 1));
    }
    fBytes.push_back(fByteCount);
}

int64 CountDecodedBytes()
{
    return gDecodedBytes.load(std::memory_order_relaxed);
}

int32 DecodedText::UnitOf(int32 byte) const
{
    byte = std::clamp(byte, 0, fByteCount);
    if (fBytes.empty()) {
        return byte;
    }
    return static_cast<int32>(std::lower_bound(fBytes.begin(), fBytes.end(), byte) -
                              fBytes.begin());
}

int32 DecodedText::ByteOf(int32 unit) const
{
    unit = std::clamp<int32>(unit, 0, static_cast<int32>(fText.size()));
    return fBytes.empty() ? unit : fBytes[static_cast<size_t>(unit)];
}

} // namespace kits
