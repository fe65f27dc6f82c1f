#include <TextPattern.h>

#include "TextBuffer.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

// A match that tries more than so many ways from one place is given up.
constexpr char kLimit[] = "(*LIMIT_MATCH=200000)";

bool IsAscii(std::string_view text)
{
    constexpr uint64 kHighBits = 0x8080808080808080;
    uint64 eight = 0;
    size_t place = 0;
    for (; place + sizeof(eight) <= text.size(); place += sizeof(eight)) {
        std::memcpy(&eight, text.data() + place, sizeof(eight));
        if ((eight & kHighBits) != 0) {
            return false;
        }
    }
    return std::all_of(text.begin() + static_cast<ptrdiff_t>(place), text.end(),
                       [](char byte) { return static_cast<uint8>(byte) < 0x80; });
}

/// How the text lies in its units of UTF-16: a byte that is not UTF-8 is one of them.
struct Step
{
    size_t bytes;
    qsizetype units;
};

Step StepAt(std::string_view text, size_t place)
{
    const int32 length = kits::Utf8Length(text.substr(place, 4));
    return {static_cast<size_t>(std::max<int32>(1, length)), length == 4 ? 2 : 1};
}

QString Decoded(std::string_view text)
{
    if (IsAscii(text)) {
        return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    }
    QString decoded;
    decoded.reserve(static_cast<qsizetype>(text.size()));
    for (size_t place = 0; place < text.size();) {
        const auto first = static_cast<uint8>(text[place]);
        const Step step = StepAt(text, place);
        if (first < 0x80) {
            decoded += QChar(first);
        } else if (step.bytes == 1) {
            decoded += QChar(QChar::ReplacementCharacter);
        } else {
            decoded += QString::fromUtf8(text.data() + place, static_cast<qsizetype>(step.bytes));
        }
        place += step.bytes;
    }
    return decoded;
}

size_t ByteOf(std::string_view text, qsizetype unit)
{
    size_t place = 0;
    for (qsizetype passed = 0; passed < unit && place < text.size();) {
        const Step step = StepAt(text, place);
        passed += step.units;
        place += step.bytes;
    }
    return place;
}

qsizetype UnitOf(std::string_view text, size_t byte)
{
    qsizetype units = 0;
    for (size_t place = 0; place < byte && place < text.size();) {
        const Step step = StepAt(text, place);
        units += step.units;
        place += step.bytes;
    }
    return units;
}

/// Where the units of a decoded text lie in its bytes; asked from the left to the right.
class UnitPlaces
{
public:
    explicit UnitPlaces(std::string_view text) : fText(text) {}

    size_t ByteOf(qsizetype unit)
    {
        if (unit < fUnit) {
            fUnit = 0;
            fByte = 0;
        }
        while (fUnit < unit && fByte < fText.size()) {
            const Step step = StepAt(fText, fByte);
            fUnit += step.units;
            fByte += step.bytes;
        }
        return fByte;
    }

private:
    std::string_view fText;
    qsizetype fUnit = 0;
    size_t fByte = 0;
};

/// Behind the letter at `place`, which may be two units.
qsizetype NextPlace(const QString& text, qsizetype place)
{
    const bool isPair = place < text.size() && text[place].isHighSurrogate();
    return place + (isPair ? 2 : 1);
}

/// Adds the replacement of one match.
void AddReplacement(std::string_view replacement, std::string_view text,
                    const QRegularExpressionMatch& match, std::string* result)
{
    for (size_t place = 0; place < replacement.size(); place++) {
        const char byte = replacement[place];
        const char next = place + 1 < replacement.size() ? replacement[place + 1] : '\0';
        if (byte != '\\' && byte != '$') {
            *result += byte;
        } else if (next >= '0' && next <= '9') {
            const int group = next - '0';
            UnitPlaces places(text);
            if (match.capturedStart(group) >= 0) {
                const size_t start = places.ByteOf(match.capturedStart(group));
                *result += text.substr(start, places.ByteOf(match.capturedEnd(group)) - start);
            }
            place++;
        } else {
            *result += byte;
            place += next == byte ? 1 : 0;
        }
    }
}

} // namespace

class BTextPattern::Expression
{
public:
    Expression(const std::string& expression, Case letters)
        : fPlain(QString::fromStdString(expression)),
          fBounded(QLatin1String(kLimit) + QString::fromStdString(expression))
    {
        QRegularExpression::PatternOptions options =
            QRegularExpression::MultilineOption | QRegularExpression::UseUnicodePropertiesOption;
        if (letters == Case::kFolded) {
            options |= QRegularExpression::CaseInsensitiveOption;
        }
        fPlain.setPatternOptions(options);
        fBounded.setPatternOptions(options);
        if (fPlain.isValid()) {
            fBounded.optimize();
        }
    }

    QRegularExpression fPlain; // for what is said of it
    QRegularExpression fBounded;
};

BTextPattern::BTextPattern(const std::string& expression, Case letters)
    : fExpression(std::make_unique<Expression>(expression, letters))
{
}

BTextPattern::~BTextPattern() = default;

status_t BTextPattern::InitCheck() const
{
    return fExpression->fPlain.isValid() && fExpression->fBounded.isValid() ? B_OK : B_BAD_VALUE;
}

std::string BTextPattern::Error() const
{
    return InitCheck() == B_OK ? std::string() : fExpression->fPlain.errorString().toStdString();
}

status_t BTextPattern::Find(std::string_view text, size_t from, size_t* start, size_t* end) const
{
    if (InitCheck() != B_OK) {
        return B_BAD_VALUE;
    }
    const QString decoded = Decoded(text);
    const bool isPlain = decoded.size() == static_cast<qsizetype>(text.size()) && IsAscii(text);
    qsizetype place = isPlain ? static_cast<qsizetype>(from) : UnitOf(text, from);
    while (place <= decoded.size()) {
        const QRegularExpressionMatch match =
            fExpression->fBounded.match(decoded, place, QRegularExpression::NormalMatch,
                                        QRegularExpression::DontCheckSubjectStringMatchOption);
        if (!match.isValid()) {
            return B_BUSY;
        }
        if (!match.hasMatch()) {
            break;
        }
        if (match.capturedLength() > 0) {
            const qsizetype first = match.capturedStart();
            const qsizetype last = match.capturedEnd();
            *start = isPlain ? static_cast<size_t>(first) : ByteOf(text, first);
            *end = isPlain ? static_cast<size_t>(last) : ByteOf(text, last);
            return B_OK;
        }
        place = match.capturedStart() + 1;
    }
    return B_ENTRY_NOT_FOUND;
}

status_t BTextPattern::Replace(std::string_view text, std::string_view replacement,
                               std::string* result) const
{
    if (InitCheck() != B_OK) {
        return B_BAD_VALUE;
    }
    const QString decoded = Decoded(text);
    std::string replaced;
    UnitPlaces places(text);
    size_t kept = 0;        // how much of the text has been dealt with
    qsizetype lastEnd = -1; // of the match before
    for (qsizetype place = 0; place <= decoded.size();) {
        const QRegularExpressionMatch match =
            fExpression->fBounded.match(decoded, place, QRegularExpression::NormalMatch,
                                        QRegularExpression::DontCheckSubjectStringMatchOption);
        if (!match.isValid()) {
            return B_BUSY;
        }
        if (!match.hasMatch()) {
            break;
        }
        const qsizetype end = match.capturedEnd();
        if (match.capturedLength() > 0 || end != lastEnd) {
            const size_t start = places.ByteOf(match.capturedStart());
            replaced += text.substr(kept, start - kept);
            AddReplacement(replacement, text, match, &replaced);
            kept = places.ByteOf(end);
            lastEnd = end;
        }
        place = match.capturedLength() > 0 ? end : NextPlace(decoded, end);
    }
    replaced += text.substr(kept);
    *result = std::move(replaced);
    return B_OK;
}
