#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

/// Wildcard patterns, as shells have them, of which a name matches any: "*" is any text, "?" any
/// character, "[a-z]" one of these and "[!a-z]" none of these; behind "\" a character is itself.
///
/// Patterns are separated by ";", or by a comma with a blank behind it; blanks around them do not
/// count. Case counts in a pattern with a capital letter alone. One that ends with "/" matches
/// folders only. Plain data.
class NamePatterns
{
public:
    explicit NamePatterns(const std::string& text);

    /// Whether there is none, so that nothing matches.
    bool IsEmpty() const { return fPatterns.empty(); }
    bool Matches(const char* name, bool isFolder) const;

private:
    struct Range
    {
        uint32 first;
        uint32 last;
    };

    struct Token
    {
        enum class Kind : uint8 { kCharacter, kAny, kText, kOneOf, kNoneOf };
        Kind kind;
        uint32 character = 0;
        std::vector<Range> ranges = {};
    };

    struct Pattern
    {
        std::vector<Token> tokens;
        bool isOfFolders = false;
        bool countsCase = false;
    };

    void Add(const std::string& text);
    static const char* TakeSet(const char* text, Token* set);
    static const char* SkipSet(const char* text);
    static bool Fits(const Token& token, uint32 character);
    static bool Matches(const Pattern& pattern, const char* name);

    std::vector<Pattern> fPatterns;
};

} // namespace norvane
