#include "panes/NamePatterns.h"

#include "panes/Letters.h"

#include <algorithm>
#include <cstddef>

namespace norvane {

namespace {

bool IsSeparator(const char* text)
{
    return text[0] == ';' || (text[0] == ',' && (text[1] == ' ' || text[1] == '\0'));
}

/// Without the blanks around it; one behind "\" is meant.
std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(' ');
    const bool isMeant = text[last] == '\\' && last + 1 < text.size();
    return text.substr(first, last - first + (isMeant ? 2 : 1));
}

} // namespace

NamePatterns::NamePatterns(const std::string& text)
{
    const char* begin = text.c_str();
    for (const char* at = begin;;) {
        if (*at == '\0' || IsSeparator(at)) {
            Add(Trimmed(std::string(begin, at)));
            if (*at == '\0') {
                return;
            }
            begin = ++at;
        } else if (*at == '[') {
            at = SkipSet(at);
        } else {
            at += at[0] == '\\' && at[1] != '\0' ? 2 : 1;
        }
    }
}

/// Behind a set, or behind the bracket alone when nothing closes it.
const char* NamePatterns::SkipSet(const char* text)
{
    Token set{Token::Kind::kOneOf};
    const char* end = TakeSet(text, &set);
    return end != nullptr ? end : text + 1;
}

/// Reads a set that begins here; null when there is none.
const char* NamePatterns::TakeSet(const char* text, Token* set)
{
    text++; // the bracket
    set->kind = Token::Kind::kOneOf;
    if (*text == '!' || *text == '^') {
        set->kind = Token::Kind::kNoneOf;
        text++;
    }
    // A bracket that stands first is one of the characters.
    for (bool isFirst = true; isFirst || *text != ']'; isFirst = false) {
        if (text[0] == '\\' && text[1] != '\0') {
            text++;
        }
        const uint32 first = TakeCharacter(&text);
        uint32 last = first;
        if (text[0] == '-' && text[1] != ']' && text[1] != '\0') {
            text++;
            last = TakeCharacter(&text);
        }
        if (first == 0) {
            return nullptr;
        }
        set->ranges.push_back({first, last});
    }
    return text + 1;
}

void NamePatterns::Add(const std::string& text)
{
    Pattern pattern;
    std::string kept = text;
    if (!kept.empty() && kept.back() == '/') {
        pattern.isOfFolders = true;
        kept.pop_back();
    }
    pattern.countsCase = HasCapital(kept.c_str());
    using Kind = Token::Kind;
    for (const char* at = kept.c_str(); *at != '\0';) {
        Token token{Kind::kCharacter};
        const char* end = *at == '[' ? TakeSet(at, &token) : nullptr;
        if (end != nullptr) {
            at = end;
        } else if (*at == '*' || *at == '?') {
            token = {*at == '*' ? Kind::kText : Kind::kAny};
            at++;
        } else {
            at += at[0] == '\\' && at[1] != '\0' ? 1 : 0;
            token = {Kind::kCharacter, TakeCharacter(&at)};
            token.character = pattern.countsCase ? token.character : FoldedCase(token.character);
        }
        pattern.tokens.push_back(std::move(token));
    }
    if (!pattern.tokens.empty()) {
        fPatterns.push_back(std::move(pattern));
    }
}

bool NamePatterns::Fits(const Token& token, uint32 character)
{
    const auto holds = [character](const Range& range) {
        return character >= range.first && character <= range.last;
    };
    switch (token.kind) {
    case Token::Kind::kCharacter:
        return token.character == character;
    case Token::Kind::kOneOf:
        return std::any_of(token.ranges.begin(), token.ranges.end(), holds);
    case Token::Kind::kNoneOf:
        return std::none_of(token.ranges.begin(), token.ranges.end(), holds);
    default:
        return true;
    }
}

/// What "*" stands for grows by a character whenever what follows it does not fit.
bool NamePatterns::Matches(const Pattern& pattern, const char* name)
{
    const std::vector<Token>& tokens = pattern.tokens;
    std::size_t next = 0;
    std::size_t behindStar = 0; // 0: there was none
    const char* retry = name;
    while (*name != '\0') {
        if (next < tokens.size() && tokens[next].kind == Token::Kind::kText) {
            behindStar = ++next;
            retry = name;
            continue;
        }
        const char* rest = name;
        const uint32 character = TakeCharacter(&rest);
        if (next < tokens.size() &&
            Fits(tokens[next], pattern.countsCase ? character : FoldedCase(character))) {
            next++;
            name = rest;
        } else if (behindStar > 0) {
            TakeCharacter(&retry);
            name = retry;
            next = behindStar;
        } else {
            return false;
        }
    }
    return std::all_of(tokens.begin() + static_cast<std::ptrdiff_t>(next), tokens.end(),
                       [](const Token& token) { return token.kind == Token::Kind::kText; });
}

bool NamePatterns::Matches(const char* name, bool isFolder) const
{
    return std::any_of(fPatterns.begin(), fPatterns.end(), [&](const Pattern& pattern) {
        return (isFolder || !pattern.isOfFolders) && Matches(pattern, name);
    });
}

} // namespace norvane
