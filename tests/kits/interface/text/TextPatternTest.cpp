#include <TextPattern.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Replaced(const char* expression, std::string_view text, std::string_view replacement)
{
    std::string result = "(unchanged)";
    const status_t status = BTextPattern(expression).Replace(text, replacement, &result);
    return status == B_OK ? result : "(error) " + result;
}

} // namespace

TEST(TextPatternTest, ReplacesEachMatch)
{
    EXPECT_EQ(Replaced("a+", "baanana", "o"), "bonono");
    EXPECT_EQ(Replaced("x", "banana", "o"), "banana");
    EXPECT_EQ(Replaced("a", "", "o"), "");
    EXPECT_EQ(Replaced("n", "banana", ""), "baaa");
}

TEST(TextPatternTest, PutsGroupsIntoTheReplacement)
{
    EXPECT_EQ(Replaced("(\\w+)-(\\w+)", "one-two", "$2-\\1"), "two-one");
    EXPECT_EQ(Replaced("o", "foo", "[$0]"), "f[o][o]");
    EXPECT_EQ(Replaced("(a)|(b)", "ab", "<$1$2>"), "<a><b>");
    EXPECT_EQ(Replaced("a", "a", "$9"), "");
}

TEST(TextPatternTest, TakesSignsForThemselves)
{
    EXPECT_EQ(Replaced("a", "a", "$$1 \\\\1 $ \\"), "$1 \\1 $ \\");
    EXPECT_EQ(Replaced("a", "a", "$x\\y"), "$x\\y");
}

TEST(TextPatternTest, ReplacesEmptyMatches)
{
    EXPECT_EQ(Replaced("^", "name", "new "), "new name");
    EXPECT_EQ(Replaced("$", "name", "!"), "name!");
    EXPECT_EQ(Replaced("x*", "ab", "-"), "-a-b-");
}

TEST(TextPatternTest, KeepsBytesOutsideOfMatches)
{
    EXPECT_EQ(Replaced("b",
                       "\xff"
                       "b\xc3"
                       "b\xe2\x82",
                       "ä"),
              "\xff"
              "ä\xc3"
              "ä\xe2\x82");
    EXPECT_EQ(Replaced("(.)b",
                       "\xff"
                       "b🎵b",
                       "$1c"),
              "\xff"
              "c🎵c");
}

TEST(TextPatternTest, SaysWhyNothingIsReplaced)
{
    std::string result = "before";
    EXPECT_EQ(BTextPattern("(").Replace("a", "b", &result), B_BAD_VALUE);
    EXPECT_EQ(BTextPattern("(a+)+$").Replace(std::string(60, 'a') + "b", "", &result), B_BUSY);
    EXPECT_EQ(result, "before");
}
