#include "interface/text/TextLines.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

// Every byte is one unit wide.
Lines Wrap(const std::string& text, float width)
{
    return kits::WrapText(text, width,
                          [](const std::string& part) { return static_cast<float>(part.size()); });
}

TEST(TextLinesTest, ShortTextIsOneLine)
{
    EXPECT_EQ(Wrap("abc", 10), Lines({"abc"}));
}

TEST(TextLinesTest, EmptyTextIsOneEmptyLine)
{
    EXPECT_EQ(Wrap("", 10), Lines({""}));
}

TEST(TextLinesTest, LineBreaksAreKept)
{
    EXPECT_EQ(Wrap("a\n\nb\n", 10), Lines({"a", "", "b", ""}));
}

TEST(TextLinesTest, BreaksAtTheLastBlankThatFits)
{
    EXPECT_EQ(Wrap("one two three", 8), Lines({"one two", "three"}));
    EXPECT_EQ(Wrap("one two three", 7), Lines({"one two", "three"}));
}

TEST(TextLinesTest, LongWordIsBrokenInside)
{
    EXPECT_EQ(Wrap("abcdefghij", 4), Lines({"abcd", "efgh", "ij"}));
}

TEST(TextLinesTest, CharactersOfSeveralBytesStayWhole)
{
    EXPECT_EQ(Wrap("\xc3\xa4\xc3\xb6\xc3\xbc", 3), Lines({"\xc3\xa4", "\xc3\xb6", "\xc3\xbc"}));
}

TEST(TextLinesTest, WidthBelowOneLetterStillEnds)
{
    EXPECT_EQ(Wrap("abc", 0), Lines({"a", "b", "c"}));
}

TEST(TextLinesTest, TabCountsAsFourBlanks)
{
    EXPECT_EQ(Wrap("\tx", 10), Lines({"    x"}));
}

TEST(TextLinesTest, IndentedNameTooLongForTheLineKeepsItsIndent)
{
    EXPECT_EQ(Wrap("\tabcdefgh", 8), Lines({"    abcd", "efgh"}));
}

} // namespace
