#pragma once

#include <SupportDefs.h>

#include <string>
#include <string_view>
#include <vector>

namespace kits {

/// What names are compared with in a query: text in which "*" stands for any text, "?" for one
/// character, "[abc]", "[a-z]" and "[^a]" for one of (not) these, and "\" has the next character
/// stand for itself. A "[" that nothing ends stands for itself. Bytes that are no UTF-8 count as a
/// character each.
///
/// Matching takes at most the product of both lengths. Thread: any, once made.
class QueryPattern
{
public:
    /// Reads the text; every text is a pattern.
    explicit QueryPattern(std::string_view text);

    bool Matches(std::string_view name) const;
    /// Less than, equal to or greater than 0, as the pattern's text, wildcards being mere
    /// characters, is to `name` in the order of their bytes.
    int Compare(std::string_view name) const;

private:
    enum class Kind : uint8 { kCharacter, kAnyCharacter, kOneOf, kNoneOf, kAnyText };
    enum class Form : uint8 { kExact, kStart, kEnd, kPart, kGeneral };
    struct Range
    {
        uint32 first;
        uint32 last;
    };
    struct Step
    {
        Kind kind;
        uint32 character = 0;
        uint32 firstRange = 0; // into fRanges
        uint32 rangeCount = 0;
    };

    void Read(std::string_view text);
    size_t ReadSet(std::string_view text);
    void FindForm();
    bool Accepts(const Step& step, uint32 character) const;
    bool MatchesSteps(std::string_view name) const;

    std::vector<Step> fSteps;
    std::vector<Range> fRanges;
    std::string fText;    // what stands for itself, and the wildcards
    std::string fLiteral; // the same without "*" at its ends, when that is the whole pattern
    Form fForm = Form::kGeneral;
};

/// A value as a pattern that means what a person typed: its wildcards keep their meaning, and a "\"
/// that stands before none of them is itself.
std::string PatternFromText(std::string_view typed);
/// The pattern for the same text in capital and small letters.
std::string PatternWithoutCase(std::string_view pattern);

} // namespace kits
