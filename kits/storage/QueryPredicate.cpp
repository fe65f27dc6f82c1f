#include "QueryPredicate.h"

#include "QueryParser.h"

#include <array>

namespace kits {

status_t QueryPredicate::SetTo(std::string_view text)
{
    QueryPredicate read;
    const status_t status = QueryParser(text, &read).Parse();
    if (status == B_OK) {
        *this = std::move(read);
    }
    return status;
}

QueryPredicate::Answer QueryPredicate::Match(const Entry& entry) const
{
    // On each level of the text the left sides of an "||" and an "&&" wait for their right ones.
    std::array<Answer, 2 * (QueryParser::kDeepest + 2)> answers; // filled as far as it is read
    size_t count = 0;
    for (const Step& step : fSteps) {
        if (step.action == Action::kTerm) {
            answers[count++] = MatchTerm(fTerms[step.term], entry);
            continue;
        }
        Answer& left = answers[count - (step.action == Action::kNot ? 1 : 2)];
        if (step.action == Action::kNot) {
            if (left != Answer::kUnknown) {
                left = left == Answer::kYes ? Answer::kNo : Answer::kYes;
            }
            continue;
        }
        const Answer right = answers[--count];
        const Answer decides = step.action == Action::kAnd ? Answer::kNo : Answer::kYes;
        if (left == decides || right == decides) {
            left = decides;
        } else if (right == Answer::kUnknown) {
            left = Answer::kUnknown;
        }
    }
    return count == 1 ? answers[0] : Answer::kNo;
}

bool QueryPredicate::Holds(Operator comparison, int order)
{
    switch (comparison) {
    case Operator::kEqual:
        return order == 0;
    case Operator::kNotEqual:
        return order != 0;
    case Operator::kLess:
        return order < 0;
    case Operator::kLessOrEqual:
        return order <= 0;
    case Operator::kGreater:
        return order > 0;
    default:
        return order >= 0;
    }
}

QueryPredicate::Answer QueryPredicate::MatchTerm(const Term& term, const Entry& entry)
{
    switch (term.attribute) {
    case Attribute::kName:
        return MatchName(term, entry.name);
    case Attribute::kSize:
    case Attribute::kModified:
        return MatchNumber(term, entry);
    default:
        return Answer::kNo;
    }
}

QueryPredicate::Answer QueryPredicate::MatchName(const Term& term, std::string_view name)
{
    bool isHit = false;
    if (term.comparison == Operator::kEqual || term.comparison == Operator::kNotEqual) {
        isHit = term.pattern.Matches(name) == (term.comparison == Operator::kEqual);
    } else {
        isHit = Holds(term.comparison, -term.pattern.Compare(name));
    }
    return isHit ? Answer::kYes : Answer::kNo;
}

QueryPredicate::Answer QueryPredicate::MatchNumber(const Term& term, const Entry& entry)
{
    if (!term.number || (term.attribute == Attribute::kSize && entry.isFolder)) {
        return Answer::kNo;
    }
    if (entry.record == nullptr) {
        return Answer::kUnknown;
    }
    if (entry.record->status != B_OK) {
        return Answer::kNo;
    }
    const long double value =
        term.attribute == Attribute::kSize ? entry.record->size : entry.record->modified;
    const int order = value < *term.number ? -1 : (value > *term.number ? 1 : 0);
    return Holds(term.comparison, order) ? Answer::kYes : Answer::kNo;
}

} // namespace kits
