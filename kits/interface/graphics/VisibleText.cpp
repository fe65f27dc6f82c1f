#include "VisibleText.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kits {

namespace {

constexpr char16_t kOpening = 0x2039; // single angle quotation marks: every font has them
constexpr char16_t kClosing = 0x203A;

struct Range
{
    char32_t first;
    char32_t last;
};

/// What has no shape and changes how others are read, or hides between them; sorted.
constexpr std::array<Range, 18> kUnseen = {{
    {0x01, 0x1F},       // control characters
    {0x7F, 0x9F},       // delete and more of them, NEL among these
    {0xAD, 0xAD},       // soft hyphen
    {0x034F, 0x034F},   // grapheme joiner
    {0x061C, 0x061C},   // Arabic letter mark
    {0x115F, 0x1160},   // Hangul fillers
    {0x180E, 0x180E},   // Mongolian vowel separator
    {0x200B, 0x200B},   // zero width space
    {0x200E, 0x200F},   // direction marks
    {0x2028, 0x202E},   // line and paragraph end, embeddings and overrides
    {0x2060, 0x206F},   // word joiner, invisible operators, isolates
    {0x3164, 0x3164},   // Hangul filler
    {0xFEFF, 0xFEFF},   // zero width no-break space
    {0xFFA0, 0xFFA0},   // halfwidth Hangul filler
    {0xFFF9, 0xFFFB},   // annotation marks
    {0x1D173, 0x1D17A}, // musical beams and slurs
    {0xE0001, 0xE0001}, // language tag
    {0xE0020, 0xE007F}, // tags
}};

bool IsIn(char32_t character, const Range& range)
{
    return character >= range.first && character <= range.last;
}

bool IsUnseen(char32_t character)
{
    return std::any_of(kUnseen.begin(), kUnseen.end(),
                       [&](const Range& range) { return IsIn(character, range); });
}

bool IsJoiner(char32_t character)
{
    return character == 0x200C || character == 0x200D;
}

/// Latin, Greek, Cyrillic and Armenian letters are not joined, and nothing beside them.
bool IsJoined(char32_t character)
{
    return character >= 0x0590;
}

bool IsTag(char32_t character)
{
    return IsIn(character, {0xE0020, 0xE007F});
}

constexpr char32_t kBlackFlag = 0x1F3F4; // the flags of regions are this and tags

void AppendCode(QString* text, char32_t character)
{
    *text += QChar(kOpening);
    *text += QString::number(static_cast<uint>(character), 16).toUpper().rightJustified(2, u'0');
    *text += QChar(kClosing);
}

bool IsPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) {
        return static_cast<uint8_t>(byte) >= 0x20 && static_cast<uint8_t>(byte) < 0x7F;
    });
}

class Signs
{
public:
    explicit Signs(const QString& text) : fText(text.toUcs4()) {}

    QString Put()
    {
        QString shown;
        for (qsizetype place = 0; place < fText.size(); place++) {
            const char32_t character = fText[place];
            if (NeedsCode(place)) {
                AppendCode(&shown, character);
            } else {
                shown += QChar::fromUcs4(character);
            }
        }
        return shown;
    }

private:
    char32_t At(qsizetype place) const
    {
        return place >= 0 && place < fText.size() ? fText[place] : 0;
    }

    bool NeedsCode(qsizetype place)
    {
        const char32_t character = fText[place];
        const bool isFlag = IsTag(character) && fIsInFlag;
        fIsInFlag = character == kBlackFlag || isFlag;
        if (IsJoiner(character)) {
            return !IsJoined(At(place - 1)) || !IsJoined(At(place + 1)) || IsJoiner(At(place - 1));
        }
        return IsUnseen(character) && !isFlag;
    }

    QList<uint> fText;
    bool fIsInFlag = false;
};

} // namespace

QString VisibleText(std::string_view text)
{
    const auto length = static_cast<qsizetype>(text.size());
    return IsPlain(text) ? QString::fromLatin1(text.data(), length)
                         : Signs(QString::fromUtf8(text.data(), length)).Put();
}

} // namespace kits
