#pragma once

#include "QueryPattern.h"

#include <EntryRecord.h>

#include <optional>
#include <string_view>
#include <vector>

namespace kits {

/// What a query asks of entries, read from the platform's predicate text:
///
///     ((name=="*.txt")&&(size>=1024))||!(last_modified<1000000000)
///
/// Terms are attribute, operator ("==" or "=", "!=", "<", "<=", ">", ">=") and value; both may
/// stand in quotes of either kind. "!" binds stronger than "&&", that stronger than "||"; terms
/// side by side must all hold. Names are compared with patterns (QueryPattern) by "==" and "!=",
/// else in the order of their bytes. "size" is in bytes, and folders have none; "last_modified" is
/// in seconds since 1970. A term of any other attribute, or of a number that is none, holds for no
/// entry.
///
/// Thread: any, once made.
class QueryPredicate
{
public:
    /// What is known of an entry.
    struct Entry
    {
        std::string_view name;
        bool isFolder = false;
        const BEntryRecord* record = nullptr; // null: not looked at yet
    };
    enum class Answer : uint8 { kNo, kYes, kUnknown };

    /// Reads a text. Errors: B_BAD_VALUE for one that is no predicate, or is nested more than 256
    /// deep; nothing is changed then.
    [[nodiscard]] status_t SetTo(std::string_view text);
    /// Whether the entry is a hit; kUnknown only when that takes its record.
    Answer Match(const Entry& entry) const;

private:
    friend class QueryParser;

    enum class Attribute : uint8 { kName, kSize, kModified, kUnknown };
    enum class Operator : uint8 {
        kEqual,
        kNotEqual,
        kLess,
        kLessOrEqual,
        kGreater,
        kGreaterOrEqual
    };
    struct Term
    {
        Attribute attribute;
        Operator comparison;
        QueryPattern pattern;              // of names
        std::optional<long double> number; // of the others; none: the value is no number
    };
    enum class Action : uint8 { kTerm, kAnd, kOr, kNot };
    struct Step
    {
        Action action;
        uint32 term = 0;
    };

    static Answer MatchName(const Term& term, std::string_view name);
    static Answer MatchNumber(const Term& term, const Entry& entry);
    static Answer MatchTerm(const Term& term, const Entry& entry);
    static bool Holds(Operator comparison, int order);

    std::vector<Term> fTerms;
    std::vector<Step> fSteps; // in postfix order
};

} // namespace kits
