#include "RenameMany/NewNames.h"

#include <LetterCase.h>
#include <TextPattern.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace rename_many {

namespace {

constexpr size_t kPlaceholderBytes = 3;
constexpr int32 kMostDigits = 20;

/// The letter of the placeholder that the text begins with, 0 for none.
char PlaceholderAt(std::string_view text)
{
    if (text.size() < kPlaceholderBytes || text[0] != '[' || text[2] != ']') {
        return '\0';
    }
    const char letter = static_cast<char>(text[1] & ~0x20); // small ones will do
    return std::string_view("NECD").find(letter) != std::string_view::npos ? letter : '\0';
}

std::string DateOf(time_t seconds)
{
    tm parts = {};
    char text[32] = "";
    if (localtime_r(&seconds, &parts) != nullptr) {
        std::strftime(text, sizeof(text), "%Y-%m-%d", &parts);
    }
    return text;
}

std::string InLetters(std::string_view text, Letters letters)
{
    switch (letters) {
    case Letters::kSmall:
        return to_lower_case(text);
    case Letters::kCapitals:
        return to_upper_case(text);
    case Letters::kTitle:
        return to_title_case(text);
    case Letters::kKept:
        break;
    }
    return std::string(text);
}

} // namespace

NameParts SplitName(std::string_view name, bool isFolder)
{
    constexpr std::string_view kArchive = ".tar";
    size_t dot = name.rfind('.');
    if (isFolder || dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) {
        return {name, {}};
    }
    if (dot > kArchive.size() &&
        to_lower_case(name.substr(dot - kArchive.size(), kArchive.size())) == kArchive) {
        dot -= kArchive.size();
    }
    return {name.substr(0, dot), name.substr(dot)};
}

NewNames::NewNames(Rules rules) : fRules(std::move(rules))
{
    if (fRules.isExpression && !fRules.search.empty()) {
        fExpression = std::make_unique<BTextPattern>(fRules.search);
    }
}

NewNames::~NewNames() = default;

std::string NewNames::Error() const
{
    return fExpression != nullptr ? fExpression->Error() : std::string();
}

status_t NewNames::Make(const Entry& entry, size_t place, std::string* name) const
{
    std::string made = FromPattern(entry, place);
    const status_t status = Replace(&made);
    if (status != B_OK) {
        return status;
    }
    ChangeLetters(entry.isFolder, &made);
    *name = std::move(made);
    return B_OK;
}

std::string NewNames::FromPattern(const Entry& entry, size_t place) const
{
    const NameParts parts = SplitName(entry.name, entry.isFolder);
    std::string made;
    for (std::string_view rest = fRules.pattern; !rest.empty();) {
        const char letter = PlaceholderAt(rest);
        switch (letter) {
        case 'N':
            made += parts.name;
            break;
        case 'E':
            made += parts.ending;
            break;
        case 'C':
            made += Counter(place);
            break;
        case 'D':
            made += DateOf(entry.modified);
            break;
        default:
            made += rest[0];
        }
        rest.remove_prefix(letter != '\0' ? kPlaceholderBytes : 1);
    }
    return made;
}

std::string NewNames::Counter(size_t place) const
{
    const int64 value = fRules.start + fRules.step * static_cast<int64>(place);
    std::string digits = std::to_string(std::llabs(value));
    const auto least = static_cast<size_t>(std::clamp<int32>(fRules.digits, 1, kMostDigits));
    if (digits.size() < least) {
        digits.insert(0, least - digits.size(), '0');
    }
    return value < 0 ? "-" + digits : digits;
}

status_t NewNames::Replace(std::string* name) const
{
    if (fRules.search.empty()) {
        return B_OK;
    }
    if (fExpression != nullptr) {
        const std::string text = *name;
        return fExpression->Replace(text, fRules.replacement, name);
    }
    for (size_t place = 0; (place = name->find(fRules.search, place)) != std::string::npos;) {
        name->replace(place, fRules.search.size(), fRules.replacement);
        place += fRules.replacement.size();
    }
    return B_OK;
}

void NewNames::ChangeLetters(bool isFolder, std::string* name) const
{
    if (fRules.letters == Letters::kKept) {
        return;
    }
    const NameParts parts = SplitName(*name, isFolder);
    // An ending is no word: it does not begin with a capital.
    const Letters ofEnding = fRules.letters == Letters::kTitle ? Letters::kSmall : fRules.letters;
    std::string changed = InLetters(parts.name, fRules.letters);
    changed += fRules.changesEnding ? InLetters(parts.ending, ofEnding) : std::string(parts.ending);
    *name = std::move(changed);
}

} // namespace rename_many
