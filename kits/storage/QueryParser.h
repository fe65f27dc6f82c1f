#pragma once

#include "QueryPredicate.h"

#include <string>

namespace kits {

/// Reads the text of a predicate; used once.
class QueryParser
{
public:
    static constexpr size_t kDeepest = 256; // how many parentheses and "!" stand in each other

    /// `text` is borrowed for the object's life, `predicate` is filled.
    QueryParser(std::string_view text, QueryPredicate* predicate)
        : fText(text), fPredicate(*predicate)
    {
    }

    /// Errors: B_BAD_VALUE; what was filled in is of no use then.
    [[nodiscard]] status_t Parse();

private:
    using Action = QueryPredicate::Action;

    bool ReadAny();
    bool ReadAll();
    bool ReadOne();
    bool ReadTerm();
    bool ReadOperator(QueryPredicate::Operator* comparison);
    bool ReadWord(std::string* word);
    bool ReadQuoted(char quote, std::string* word);
    bool StartsOne();
    bool Take(std::string_view token);
    void SkipBlanks();
    void Add(Action action) { fPredicate.fSteps.push_back({action}); }

    std::string_view fText;
    size_t fAt = 0;
    size_t fDepth = 0;
    QueryPredicate& fPredicate;
};

} // namespace kits
