#include "viewer/PatternSearch.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

std::string Found(const FoundPlace& found)
{
    return found.status == B_OK ? std::to_string(found.start) + "-" + std::to_string(found.end)
                                : "none";
}

std::string Forward(const char* expression, const std::string& text, size_t from = 0)
{
    const BTextPattern pattern(expression, CaseOf(expression));
    return Found(FindForward(pattern, text, from, [] { return true; }));
}

std::string Backward(const char* expression, const std::string& text, size_t from)
{
    const BTextPattern pattern(expression, CaseOf(expression));
    return Found(FindBackward(pattern, text, from, [] { return true; }));
}

/// 20,000 lines of ten bytes, in many pieces.
std::string Lines()
{
    std::string text;
    for (int i = 0; i < 20000; i++) {
        text += "line" + std::to_string(10000 + i) + "\n";
    }
    return text;
}

TEST(PatternSearchTest, FindsWhatFitsTheExpression)
{
    EXPECT_EQ(Forward("b+", "abbc"), "1-3");
    EXPECT_EQ(Forward("^c.$", "ab\ncd\n"), "3-5");
    EXPECT_EQ(Forward("x", "abc"), "none");
    EXPECT_EQ(Forward("(", "a(b"), "none");
    EXPECT_EQ(Forward("x*", "abxx"), "2-4");
}

TEST(PatternSearchTest, CountsInBytes)
{
    EXPECT_EQ(Forward("b", "\xc3\xa4\xf0\x9f\x98\x80\xff"
                           "b"),
              "7-8");
    EXPECT_EQ(Forward("\xf0\x9f\x98\x80", "\xc3\xa4\xf0\x9f\x98\x80"
                                          "b"),
              "2-6");
    EXPECT_EQ(Forward("a",
                      "a\xe4"
                      "a",
                      1),
              "2-3");
}

TEST(PatternSearchTest, SmallLettersStandForCapitalOnes)
{
    EXPECT_EQ(Forward("line", "a LINE"), "2-6");
    EXPECT_EQ(Forward("Line", "a LINE Line"), "7-11");
    EXPECT_EQ(Forward("\\Sine", "a LINE"), "2-6");
}

TEST(PatternSearchTest, GoesThroughAllPiecesAndRound)
{
    const std::string text = Lines();

    EXPECT_EQ(Forward("^line29999$", text), "199990-199999");
    EXPECT_EQ(Forward("e1.000\n", text, 1), "3-10");
    EXPECT_EQ(Forward("e10000\n", text, 50000), "3-10");
    EXPECT_EQ(Forward("e2345\\d", text, 134560), "134563-134569");
}

TEST(PatternSearchTest, FindsTheLastOneBeforeAPlace)
{
    const std::string text = Lines();

    EXPECT_EQ(Backward("e\\d+", text, 100000), "99993-99999");
    EXPECT_EQ(Backward("^line10000", text, 150000), "0-9");
    EXPECT_EQ(Backward("line29999", text, 50), "199990-199999");
    EXPECT_EQ(Backward("none", text, 50), "none");
}

TEST(PatternSearchTest, GoesThroughALineWithoutEnd)
{
    std::string text(300000, '.');
    text.replace(199998, 4, "here");

    EXPECT_EQ(Forward("he..", text), "199998-200002");
    EXPECT_EQ(Backward("he..", text, 300000), "199998-200002");
}

TEST(PatternSearchTest, EndsInTimeWhereThereAreTooManyWays)
{
    const BTextPattern pattern("(a+)+$");
    const std::string text = std::string(40, 'a') + "b";

    EXPECT_NE(FindForward(pattern, text, 0, [] { return true; }).status, B_OK);
}

TEST(PatternSearchTest, EndsWhenNobodyWantsItAnyMore)
{
    const BTextPattern pattern("line29999");
    int asked = 0;

    const FoundPlace found = FindForward(pattern, Lines(), 0, [&] { return ++asked <= 1; });

    EXPECT_EQ(found.status, B_ENTRY_NOT_FOUND);
    EXPECT_LE(asked, 3);
}

TEST(PatternSearchTest, SaysWhatIsWrongWithAnExpression)
{
    const BTextPattern wrong("a(b");
    const BTextPattern right("a(b)");

    EXPECT_EQ(wrong.InitCheck(), B_BAD_VALUE);
    EXPECT_NE(wrong.Error(), "");
    EXPECT_EQ(right.InitCheck(), B_OK);
    EXPECT_EQ(right.Error(), "");
}

} // namespace
