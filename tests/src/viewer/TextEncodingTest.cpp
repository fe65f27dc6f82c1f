#include "viewer/TextEncoding.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;
using namespace std::literals;

TEST(TextEncodingTest, GuessesByMarksAndContents)
{
    EXPECT_EQ(GuessEncoding("", true), TextEncoding::kUtf8);
    EXPECT_EQ(GuessEncoding("plain text of some length", true), TextEncoding::kUtf8);
    EXPECT_EQ(GuessEncoding("eight ascii \xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80", true),
              TextEncoding::kUtf8);
    EXPECT_EQ(GuessEncoding("\xff\xfe"
                            "a\0"sv,
                            true),
              TextEncoding::kUtf16Le);
    EXPECT_EQ(GuessEncoding("\xfe\xff\0a"sv, true), TextEncoding::kUtf16Be);
    for (const char* other : {"a \xe4 b", "\x80", "\xc0\xaf", "\xe0\x80\x80", "\xed\xa0\x80",
                              "\xf5\x80\x80\x80", "\xf4\x90\x80\x80", "\xf0\x80\x80\x80"}) {
        EXPECT_EQ(GuessEncoding(other, true), TextEncoding::kLatin1) << other;
    }
}

TEST(TextEncodingTest, TheBeginningOfATextMayCutACharacter)
{
    EXPECT_EQ(GuessEncoding("abc\xe2\x82", false), TextEncoding::kUtf8);
    EXPECT_EQ(GuessEncoding("abc\xe2\x82", true), TextEncoding::kLatin1);
}

TEST(TextEncodingTest, ConvertsWithoutTheMark)
{
    EXPECT_EQ(TextOf("\xff\xfe"
                     "a\0\xac\x20"sv,
                     TextEncoding::kUtf16Le, nullptr),
              "a\xe2\x82\xac");
    EXPECT_EQ(TextOf("\xfe\xff\0a\x20\xac"sv, TextEncoding::kUtf16Be, nullptr), "a\xe2\x82\xac");
    EXPECT_EQ(TextOf("\xe4\xff", TextEncoding::kLatin1, nullptr), "\xc3\xa4\xc3\xbf");
    EXPECT_EQ(TextOf("a\xff\0b"sv, TextEncoding::kUtf8, nullptr), "a\xff\0b"sv);
}

TEST(TextEncodingTest, HalfACharacterIsNotTaken)
{
    size_t taken = 0;

    EXPECT_EQ(TextOf("a\0b"sv, TextEncoding::kUtf16Le, &taken), "a");
    EXPECT_EQ(taken, 2u);
    EXPECT_EQ(TextOf("a\0\x3d\xd8"sv, TextEncoding::kUtf16Le, &taken), "a");
    EXPECT_EQ(taken, 2u);
}

TEST(TextEncodingTest, PairsMayLieAcrossPieces)
{
    std::string wide(size_t{64} * 1024 - 2, '\0');
    wide += "\x3d\xd8\0\xde"sv;

    const std::string text = TextOf(wide, TextEncoding::kUtf16Le, nullptr);

    EXPECT_EQ(text.size(), size_t{32} * 1024 - 1 + 4);
    EXPECT_TRUE(text.ends_with("\xf0\x9f\x98\x80"));
}

} // namespace
