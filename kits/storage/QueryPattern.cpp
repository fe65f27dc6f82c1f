#include "QueryPattern.h"

#include <QString>

#include <algorithm>
#include <cstring>

namespace kits {

namespace {

// Bytes that are no UTF-8 are characters of their own, behind all real ones.
constexpr uint32 kStrayByte = 0x110000;
constexpr std::string_view kSpecial = "*?[]\\";

uint8 ByteAt(std::string_view text, size_t at)
{
    return static_cast<uint8>(text[at]);
}

/// How many bytes the character that begins with `first` takes; 1 also for what begins none.
size_t LengthFrom(uint8 first)
{
    if (first >= 0xf0 && first <= 0xf4) {
        return 4;
    }
    if (first >= 0xe0) {
        return first <= 0xef ? 3 : 1;
    }
    return first >= 0xc2 ? 2 : 1;
}

uint32 TakeCharacter(std::string_view text, size_t* at)
{
    const uint8 first = ByteAt(text, *at);
    const size_t length = LengthFrom(first);
    uint32 character = first;
    if (length > 1) {
        character = first & (0x7fu >> length);
        for (size_t i = 1; i < length; ++i) {
            if (*at + i >= text.size() || (ByteAt(text, *at + i) & 0xc0) != 0x80) {
                ++*at;
                return kStrayByte + first;
            }
            character = (character << 6) | (ByteAt(text, *at + i) & 0x3fu);
        }
    } else if (first >= 0x80) {
        character = kStrayByte + first;
    }
    *at += length;
    return character;
}

std::string CharacterText(uint32 character)
{
    const char32_t one[1] = {character};
    return QString::fromUcs4(one, 1).toStdString();
}

} // namespace

QueryPattern::QueryPattern(std::string_view text)
{
    Read(text);
    fText = fLiteral;
    FindForm();
}

void QueryPattern::Read(std::string_view text)
{
    for (size_t at = 0; at < text.size();) {
        const char byte = text[at];
        const size_t start = at;
        if (byte == '*') {
            ++at;
            if (!fSteps.empty() && fSteps.back().kind == Kind::kAnyText) {
                continue;
            }
            fSteps.push_back({Kind::kAnyText});
        } else if (byte == '?') {
            ++at;
            fSteps.push_back({Kind::kAnyCharacter});
        } else if (const size_t set = byte == '[' ? ReadSet(text.substr(at)) : 0; set > 0) {
            at += set;
        } else {
            if (byte == '\\' && at + 1 < text.size()) {
                ++at;
            }
            const size_t character = at;
            fSteps.push_back({Kind::kCharacter, TakeCharacter(text, &at)});
            fLiteral.append(text, character, at - character);
            continue;
        }
        fLiteral.append(text, start, at - start);
    }
}

/// Reads "[...]" at the start of `text`; returns its length, 0 when nothing ends it.
size_t QueryPattern::ReadSet(std::string_view text)
{
    const bool isNegated = text.size() > 1 && (text[1] == '^' || text[1] == '!');
    Step step{isNegated ? Kind::kNoneOf : Kind::kOneOf};
    step.firstRange = static_cast<uint32>(fRanges.size());
    const size_t begin = isNegated ? 2 : 1;
    size_t at = begin;
    const auto take = [&] {
        if (text[at] == '\\' && at + 1 < text.size()) {
            ++at;
        }
        return TakeCharacter(text, &at);
    };
    // A "]" that comes first is one of the characters.
    while (at < text.size() && (text[at] != ']' || at == begin)) {
        const uint32 first = take();
        uint32 last = first;
        if (at + 1 < text.size() && text[at] == '-' && text[at + 1] != ']') {
            ++at;
            last = take();
        }
        fRanges.push_back({std::min(first, last), std::max(first, last)});
    }
    if (at >= text.size()) {
        fRanges.resize(step.firstRange);
        return 0;
    }
    step.rangeCount = static_cast<uint32>(fRanges.size()) - step.firstRange;
    fSteps.push_back(step);
    return at + 1;
}

/// Most patterns are a text with or without "*" around it, for which there are fast searches.
void QueryPattern::FindForm()
{
    const bool startsOpen = !fSteps.empty() && fSteps.front().kind == Kind::kAnyText;
    const bool endsOpen = !fSteps.empty() && fSteps.back().kind == Kind::kAnyText;
    const auto begin = fSteps.begin() + (startsOpen ? 1 : 0);
    const auto end = fSteps.end() - (endsOpen && fSteps.size() > 1 ? 1 : 0);
    if (!std::all_of(begin, end, [](const Step& step) { return step.kind == Kind::kCharacter; })) {
        return;
    }
    if (startsOpen) {
        fForm = endsOpen ? Form::kPart : Form::kEnd;
        fLiteral.erase(0, 1);
    } else {
        fForm = endsOpen ? Form::kStart : Form::kExact;
    }
    if (end != fSteps.end()) {
        fLiteral.pop_back();
    }
}

bool QueryPattern::Matches(std::string_view name) const
{
    switch (fForm) {
    case Form::kExact:
        return name == fLiteral;
    case Form::kStart:
        return name.starts_with(fLiteral);
    case Form::kEnd:
        return name.ends_with(fLiteral);
    case Form::kPart:
        return ::memmem(name.data(), name.size(), fLiteral.data(), fLiteral.size()) != nullptr;
    default:
        return MatchesSteps(name);
    }
}

int QueryPattern::Compare(std::string_view name) const
{
    return fText.compare(name);
}

bool QueryPattern::Accepts(const Step& step, uint32 character) const
{
    if (step.kind == Kind::kCharacter) {
        return step.character == character;
    }
    if (step.kind == Kind::kAnyCharacter) {
        return true;
    }
    const auto begin = fRanges.begin() + step.firstRange;
    const bool isFound = std::any_of(begin, begin + step.rangeCount, [&](const Range& range) {
        return range.first <= character && character <= range.last;
    });
    return isFound == (step.kind == Kind::kOneOf);
}

bool QueryPattern::MatchesSteps(std::string_view name) const
{
    // Where the last "*" was met, and how much of the name it stands for so far.
    size_t starStep = SIZE_MAX;
    size_t starAt = 0;
    size_t step = 0;
    size_t at = 0;
    while (at < name.size()) {
        if (step < fSteps.size() && fSteps[step].kind == Kind::kAnyText) {
            starStep = step++;
            starAt = at;
            continue;
        }
        size_t next = at;
        if (step < fSteps.size() && Accepts(fSteps[step], TakeCharacter(name, &next))) {
            ++step;
            at = next;
            continue;
        }
        if (starStep == SIZE_MAX) {
            return false;
        }
        TakeCharacter(name, &starAt);
        step = starStep + 1;
        at = starAt;
    }
    while (step < fSteps.size() && fSteps[step].kind == Kind::kAnyText) {
        ++step;
    }
    return step == fSteps.size();
}

std::string PatternFromText(std::string_view typed)
{
    std::string pattern;
    for (size_t at = 0; at < typed.size(); ++at) {
        pattern += typed[at];
        if (typed[at] != '\\') {
            continue;
        }
        const bool isEscape =
            at + 1 < typed.size() && kSpecial.find(typed[at + 1]) != std::string_view::npos;
        pattern += isEscape ? typed[++at] : '\\';
    }
    return pattern;
}

std::string PatternWithoutCase(std::string_view pattern)
{
    std::string folded;
    bool isInSet = false;
    for (size_t at = 0; at < pattern.size();) {
        const size_t start = at;
        if (pattern[at] == '\\' && at + 1 < pattern.size()) {
            ++at;
        } else if (pattern[at] == '[' && !isInSet) {
            isInSet = pattern.find(']', at + 2) != std::string_view::npos;
        } else if (pattern[at] == ']') {
            isInSet = false;
        }
        const uint32 character = TakeCharacter(pattern, &at);
        const std::string_view bytes = pattern.substr(start, at - start);
        const bool isReal = character < kStrayByte;
        const uint32 small = isReal ? QChar::toLower(character) : character;
        const uint32 capital = isReal ? QChar::toUpper(character) : character;
        if (small == capital) {
            folded += bytes;
            continue;
        }
        folded += isInSet ? "" : "[";
        folded += CharacterText(small);
        folded += CharacterText(capital);
        folded += isInSet ? "" : "]";
    }
    return folded;
}

} // namespace kits
