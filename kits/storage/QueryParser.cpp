#include "QueryParser.h"

#include <charconv>
#include <limits>

namespace kits {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
// What ends a word that stands in no quotes.
constexpr std::string_view kWordEnds = " \t\r\n()!=<>&|\"'";

std::string WithoutEscapes(std::string_view word)
{
    std::string plain;
    for (size_t at = 0; at < word.size(); ++at) {
        if (word[at] == '\\' && at + 1 < word.size()) {
            ++at;
        }
        plain += word[at];
    }
    return plain;
}

/// A number with or without a fraction; one beyond all that can be told is without bounds.
std::optional<long double> NumberFrom(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool isNegative = text.starts_with('-');
    const size_t first = isNegative ? 1 : 0;
    // No other text that the reader of numbers takes for one ("inf").
    if (first >= text.size() || text.find_first_not_of("0123456789.", first) != text.npos) {
        return std::nullopt;
    }
    long double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end != text.data() + text.size() || error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        constexpr long double kInfinite = std::numeric_limits<long double>::infinity();
        return isNegative ? -kInfinite : kInfinite;
    }
    return number;
}

} // namespace

status_t QueryParser::Parse()
{
    if (!ReadAny()) {
        return B_BAD_VALUE;
    }
    SkipBlanks();
    return fAt == fText.size() ? B_OK : B_BAD_VALUE;
}

bool QueryParser::ReadAny()
{
    if (!ReadAll()) {
        return false;
    }
    while (Take("||")) {
        if (!ReadAll()) {
            return false;
        }
        Add(Action::kOr);
    }
    return true;
}

bool QueryParser::ReadAll()
{
    if (!ReadOne()) {
        return false;
    }
    while (Take("&&") || StartsOne()) {
        if (!ReadOne()) {
            return false;
        }
        Add(Action::kAnd);
    }
    return true;
}

/// Whether another term follows without an operator.
bool QueryParser::StartsOne()
{
    SkipBlanks();
    return fAt < fText.size() && fText[fAt] != ')' && fText[fAt] != '|';
}

bool QueryParser::ReadOne()
{
    const bool isNot = Take("!");
    if (!isNot && !Take("(")) {
        return ReadTerm();
    }
    if (++fDepth > kDeepest) {
        return false;
    }
    const bool isRead = isNot ? ReadOne() : ReadAny() && Take(")");
    --fDepth;
    if (isNot) {
        Add(Action::kNot);
    }
    return isRead;
}

bool QueryParser::ReadTerm()
{
    using Attribute = QueryPredicate::Attribute;
    std::string attribute;
    std::string value;
    QueryPredicate::Operator comparison{};
    if (!ReadWord(&attribute) || !ReadOperator(&comparison) || !ReadWord(&value)) {
        return false;
    }
    const std::string name = WithoutEscapes(attribute);
    Attribute known = Attribute::kUnknown;
    if (name == "name") {
        known = Attribute::kName;
    } else if (name == "size") {
        known = Attribute::kSize;
    } else if (name == "last_modified") {
        known = Attribute::kModified;
    }
    fPredicate.fSteps.push_back({Action::kTerm, static_cast<uint32>(fPredicate.fTerms.size())});
    fPredicate.fTerms.push_back(
        {known, comparison, QueryPattern(value), NumberFrom(WithoutEscapes(value))});
    return true;
}

bool QueryParser::ReadOperator(QueryPredicate::Operator* comparison)
{
    using Operator = QueryPredicate::Operator;
    static constexpr struct
    {
        std::string_view text;
        Operator comparison;
    } kOperators[] = {
        {"==", Operator::kEqual},       {"!=", Operator::kNotEqual},
        {"<=", Operator::kLessOrEqual}, {">=", Operator::kGreaterOrEqual},
        {"=", Operator::kEqual},        {"<", Operator::kLess},
        {">", Operator::kGreater},
    };
    for (const auto& candidate : kOperators) {
        if (Take(candidate.text)) {
            *comparison = candidate.comparison;
            return true;
        }
    }
    return false;
}

bool QueryParser::ReadWord(std::string* word)
{
    SkipBlanks();
    if (fAt < fText.size() && (fText[fAt] == '"' || fText[fAt] == '\'')) {
        return ReadQuoted(fText[fAt++], word);
    }
    while (fAt < fText.size() && kWordEnds.find(fText[fAt]) == std::string_view::npos) {
        if (fText[fAt] == '\\' && fAt + 1 < fText.size()) {
            *word += fText[fAt++];
        }
        *word += fText[fAt++];
    }
    return !word->empty();
}

bool QueryParser::ReadQuoted(char quote, std::string* word)
{
    while (fAt < fText.size() && fText[fAt] != quote) {
        // Escapes stay: to a pattern an escaped "*" is another thing than a bare one.
        if (fText[fAt] == '\\' && fAt + 1 < fText.size()) {
            *word += fText[fAt++];
        }
        *word += fText[fAt++];
    }
    if (fAt == fText.size()) {
        return false;
    }
    ++fAt;
    return true;
}

bool QueryParser::Take(std::string_view token)
{
    SkipBlanks();
    if (!fText.substr(fAt).starts_with(token)) {
        return false;
    }
    fAt += token.size();
    return true;
}

void QueryParser::SkipBlanks()
{
    while (fAt < fText.size() && kBlanks.find(fText[fAt]) != std::string_view::npos) {
        ++fAt;
    }
}

} // namespace kits
