#include <LetterCase.h>

#include <gtest/gtest.h>

#include <string>

TEST(LetterCaseTest, ChangesLettersOfAllScripts)
{
    EXPECT_EQ(to_lower_case("ABC ÄÖÜ ΣΩ ЖЮ 123"), "abc äöü σω жю 123");
    EXPECT_EQ(to_upper_case("abc äöü σω жю 123"), "ABC ÄÖÜ ΣΩ ЖЮ 123");
    EXPECT_EQ(to_upper_case("\U00010428"), "\U00010400"); // four bytes
}

TEST(LetterCaseTest, KeepsWhatOneLetterCannotStandFor)
{
    EXPECT_EQ(to_upper_case("straße"), "STRAßE");
    EXPECT_EQ(to_lower_case("日本 🎵"), "日本 🎵");
}

TEST(LetterCaseTest, BeginsWordsWithCapitals)
{
    EXPECT_EQ(to_title_case("the QUICK brown-fox_jumps"), "The Quick Brown-Fox_Jumps");
    EXPECT_EQ(to_title_case("don't 2nd ünder l’été"), "Don't 2nd Ünder L’été");
    EXPECT_EQ(to_title_case("'quoted' name"), "'Quoted' Name");
}

TEST(LetterCaseTest, KeepsBytesThatAreNotUtf8)
{
    // Lone, cut off, too long, a surrogate, beyond the last.
    const std::string odd = "\xff"
                            "A\xc3"
                            "B\xe2\x82"
                            "C\xc0\x80"
                            "D\xed\xa0\x80"
                            "E\xf4\x90\x80\x80";
    const std::string small = "\xff"
                              "a\xc3"
                              "b\xe2\x82"
                              "c\xc0\x80"
                              "d\xed\xa0\x80"
                              "e\xf4\x90\x80\x80";
    EXPECT_EQ(to_lower_case(odd), small);
    EXPECT_EQ(to_upper_case(small), odd);
    EXPECT_EQ(to_title_case("\xc3"), "\xc3");
    EXPECT_EQ(to_lower_case(""), "");
}
