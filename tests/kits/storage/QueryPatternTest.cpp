#include "storage/QueryPattern.h"

#include <CaseName.h>
#include <gtest/gtest.h>

using kits::PatternFromText;
using kits::PatternWithoutCase;
using kits::QueryPattern;

namespace {

struct PatternCase
{
    const char* label;
    std::string pattern;
    std::string name;
    bool matches;
};

class QueryPatternTest : public testing::TestWithParam<PatternCase>
{
};

std::string NameOf(const testing::TestParamInfo<PatternCase>& info)
{
    return CaseName(info.param.label);
}

const PatternCase kCases[] = {
    {"the same text", "plain", "plain", true},
    {"a longer name", "plain", "plainer", false},
    {"nothing", "", "", true},
    {"nothing against a name", "", "a", false},
    {"other letters", "Plain", "plain", false},
    {"star alone", "*", "anything", true},
    {"star against nothing", "*", "", true},
    {"stars together", "***", "x", true},
    {"part in the middle", "*ai*", "plain", true},
    {"part at the end", "*ai*", "pai", true},
    {"part that is missing", "*ia*", "plain", false},
    {"start", "pl*", "plain", true},
    {"start that is elsewhere", "la*", "plain", false},
    {"end", "*in", "plain", true},
    {"end that is elsewhere", "*ai", "plain", false},
    {"start and end", "p*n", "plain", true},
    {"start and end that overlap", "plai*lain", "plain", false},
    {"several stars", "*a*b*c*", "xaxxbxc", true},
    {"several stars in another order", "*a*b*c*", "xcxxbxa", false},
    {"a star that takes less at first", "*ab", "aab", true},
    {"one character", "p?ain", "plain", true},
    {"one character too few", "?????", "plai", false},
    {"one character of several bytes", "?", "\xc3\xa4", true},
    {"one character that is none", "?", "\xff", true},
    {"a cut character and a letter", "??", "\xc3z", true},
    {"four bytes", "a?b",
     "a\xf0\x9f\x98\x80"
     "b",
     true},
    {"set", "[abc]x", "bx", true},
    {"set without it", "[abc]x", "dx", false},
    {"range", "[a-c][0-9]", "b7", true},
    {"range backwards", "[c-a]", "b", true},
    {"range without it", "[a-c]", "d", false},
    {"set of others", "[^a-c]", "d", true},
    {"set of others in another writing", "[!a-c]", "b", false},
    {"bracket first in a set", "[]a]", "]", true},
    {"minus last in a set", "[a-]", "-", true},
    {"escape in a set", "[\\]]", "]", true},
    {"umlauts in a set", "[\xc3\xa4\xc3\xb6]", "\xc3\xb6", true},
    {"set without an end", "[ab", "[ab", true},
    {"set without an end and a star", "[ab*", "[abc", true},
    {"escaped star", "a\\*b", "a*b", true},
    {"escaped star is no wildcard", "a\\*b", "axb", false},
    {"escaped star at the end", "ab\\**", "ab*c", true},
    {"escaped star at the end is needed", "ab\\**", "abc", false},
    {"escaped star at the start", "*\\*b", "a*b", true},
    {"escaped letter", "\\a", "a", true},
    {"lone backslash at the end", "a\\", "a\\", true},
    {"bytes that are no text", "*\xff\xfe*",
     "a\xff\xfe"
     "b",
     true},
    {"line break", "a?b", "a\nb", true},
};

} // namespace

TEST_P(QueryPatternTest, Matches)
{
    const PatternCase& param = GetParam();

    EXPECT_EQ(QueryPattern(param.pattern).Matches(param.name), param.matches);
}

INSTANTIATE_TEST_SUITE_P(Cases, QueryPatternTest, testing::ValuesIn(kCases), NameOf);

TEST(QueryPatternOrderTest, IsThatOfBytes)
{
    EXPECT_LT(QueryPattern("a").Compare("b"), 0);
    EXPECT_EQ(QueryPattern("a").Compare("a"), 0);
    EXPECT_GT(QueryPattern("b").Compare("B"), 0);
    EXPECT_EQ(QueryPattern("a*").Compare("a*"), 0);
    EXPECT_EQ(QueryPattern("a[b]?").Compare("a[b]?"), 0);
}

TEST(QueryPatternTextTest, KeepsWhatAPersonMeant)
{
    EXPECT_EQ(PatternFromText("a*b"), "a*b");
    EXPECT_EQ(PatternFromText("a\\*b"), "a\\*b");
    EXPECT_EQ(PatternFromText("a\\b"), "a\\\\b");
    EXPECT_EQ(PatternFromText("a\\"), "a\\\\");
    EXPECT_EQ(PatternFromText("a\\\\"), "a\\\\");
}

TEST(QueryPatternTextTest, TakesLettersOfBothCases)
{
    EXPECT_EQ(PatternWithoutCase("a1"), "[aA]1");
    EXPECT_EQ(PatternWithoutCase("[a-z]*"), "[aA-zZ]*");
    EXPECT_TRUE(QueryPattern(PatternWithoutCase("\xc3\xa4?")).Matches("\xc3\x84x"));
    EXPECT_TRUE(QueryPattern(PatternWithoutCase("read*")).Matches("README"));
    EXPECT_FALSE(QueryPattern(PatternWithoutCase("read*")).Matches("REALM"));
}

// Each star may take anything: without a bound this takes longer than a person lives.
TEST(QueryPatternCostTest, IsBoundedForManyStars)
{
    std::string pattern;
    for (int i = 0; i < 100; i++) {
        pattern += "a*?";
    }

    EXPECT_FALSE(QueryPattern(pattern + "b").Matches(std::string(255, 'a')));
}
