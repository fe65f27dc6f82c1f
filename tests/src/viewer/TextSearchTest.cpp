#include "viewer/TextSearch.h"

#include <gtest/gtest.h>

namespace {

using norvane::StartOfLine;
using norvane::TextSearch;

constexpr size_t kNowhere = TextSearch::kNowhere;

TEST(TextSearchTest, FindsFromAPlaceOn)
{
    const TextSearch search("abab");
    const std::string text = "xabababx abab";

    EXPECT_EQ(search.Find(text, 0), size_t{1});
    EXPECT_EQ(search.Find(text, 1), size_t{1});
    EXPECT_EQ(search.Find(text, 2), size_t{3});
    EXPECT_EQ(search.Find(text, 4), size_t{9});
    EXPECT_EQ(search.Find(text, 10), kNowhere);
    EXPECT_EQ(search.Find(text, 100), kNowhere);
}

TEST(TextSearchTest, FindsTheLastOneBeforeAPlace)
{
    const TextSearch search("abab");
    const std::string text = "xabababx abab";

    EXPECT_EQ(search.FindBefore(text, text.size()), size_t{9});
    EXPECT_EQ(search.FindBefore(text, 9), size_t{3});
    EXPECT_EQ(search.FindBefore(text, 3), size_t{1});
    EXPECT_EQ(search.FindBefore(text, 1), kNowhere);
}

TEST(TextSearchTest, SmallLettersStandForCapitalOnes)
{
    EXPECT_EQ(TextSearch("error").Find("some ERROR", 0), size_t{5});
    EXPECT_EQ(TextSearch("Error").Find("some ERROR, Error", 0), size_t{12});
    EXPECT_EQ(TextSearch("error").FindBefore("some ERROR", 10), size_t{5});
}

TEST(TextSearchTest, FindsWhateverBytesThereAre)
{
    const std::string text("a\0b\xffz", 5);

    EXPECT_EQ(TextSearch(std::string("\0b", 2)).Find(text, 0), size_t{1});
    EXPECT_EQ(TextSearch("\xffz").Find(text, 0), size_t{3});
    EXPECT_EQ(TextSearch("z").Find(text, 0), size_t{4});
}

TEST(TextSearchTest, NothingIsFoundNowhere)
{
    EXPECT_EQ(TextSearch("").Find("abc", 0), kNowhere);
    EXPECT_EQ(TextSearch("").FindBefore("abc", 3), kNowhere);
    EXPECT_EQ(TextSearch("abcd").Find("abc", 0), kNowhere);
    EXPECT_EQ(TextSearch("abcd").FindBefore("abc", 3), kNowhere);
    EXPECT_EQ(TextSearch("a").Find("", 0), kNowhere);
}

TEST(TextSearchTest, KnowsWhereLinesBegin)
{
    const std::string text = "one\ntwo\n\nfour";

    EXPECT_EQ(StartOfLine(text, 0), size_t{0});
    EXPECT_EQ(StartOfLine(text, 1), size_t{0});
    EXPECT_EQ(StartOfLine(text, 2), size_t{4});
    EXPECT_EQ(StartOfLine(text, 3), size_t{8});
    EXPECT_EQ(StartOfLine(text, 4), size_t{9});
    EXPECT_EQ(StartOfLine(text, 400), size_t{9});
}

} // namespace
