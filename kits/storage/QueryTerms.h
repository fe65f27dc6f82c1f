#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace kits {

/// Operands and operators in postfix order, as they are pushed, and the predicate text that they
/// make.
class QueryTerms
{
public:
    void PushAttribute(std::string name);
    /// The text of a number.
    void PushNumber(std::string number);
    /// A text as a person typed it, with its wildcards.
    void PushText(std::string pattern);
    /// The signs that stand between an attribute and a value. `before` and `after` surround the
    /// value, which must be a text when they are not empty.
    void PushComparison(const char* sign, const char* before = "", const char* after = "");
    /// "&&" or "||"; "!" takes one operand.
    void PushAnd() { Join("&&"); }
    void PushOr() { Join("||"); }
    void PushNot();

    bool IsEmpty() const { return fStack.empty() && !fIsBroken; }
    /// The text: what no operator joins stands side by side. Errors: B_BAD_VALUE when an operator
    /// had not the operands that it takes, or an operand has no operator.
    [[nodiscard]] status_t GetText(std::string* text) const;

private:
    enum class Kind : uint8 { kAttribute, kNumber, kText, kTerm };
    struct Operand
    {
        Kind kind;
        std::string text;
    };

    void Join(const char* sign);
    bool HasTerms(size_t count);

    std::vector<Operand> fStack;
    bool fIsBroken = false;
};

} // namespace kits
