#include "RenameMany/NewNames.h"

#include <Errors.h>

#include <gtest/gtest.h>

namespace rename_many {

namespace {

std::string Made(const Rules& rules, const char* name, size_t place = 0)
{
    Entry entry;
    entry.name = name;
    entry.modified = 1'700'000'000; // 2023-11-14 in UTC
    std::string made = "(none)";
    return NewNames(rules).Make(entry, place, &made) == B_OK ? made : "(error)";
}

std::string WithPattern(const char* pattern, const char* name, size_t place = 0)
{
    Rules rules;
    rules.pattern = pattern;
    return Made(rules, name, place);
}

Rules Replacing(const char* search, const char* replacement, bool isExpression)
{
    Rules rules;
    rules.search = search;
    rules.replacement = replacement;
    rules.isExpression = isExpression;
    return rules;
}

Rules InLetters(Letters letters, bool changesEnding)
{
    Rules rules;
    rules.letters = letters;
    rules.changesEnding = changesEnding;
    return rules;
}

} // namespace

TEST(NewNamesTest, SplitsNamesAtTheirEnding)
{
    const auto split = [](const char* name, bool isFolder = false) {
        const NameParts parts = SplitName(name, isFolder);
        return std::string(parts.name) + "|" + std::string(parts.ending);
    };
    EXPECT_EQ(split("photo.jpg"), "photo|.jpg");
    EXPECT_EQ(split("a.b.c"), "a.b|.c");
    EXPECT_EQ(split("src.tar.gz"), "src|.tar.gz");
    EXPECT_EQ(split(".tar.gz"), ".tar|.gz");
    EXPECT_EQ(split("name"), "name|");
    EXPECT_EQ(split(".hidden"), ".hidden|");
    EXPECT_EQ(split("dot."), "dot.|");
    EXPECT_EQ(split("my.folder", true), "my.folder|");
    EXPECT_EQ(split(""), "|");
}

TEST(NewNamesTest, KeepsNamesUnlessTold)
{
    for (const char* name : {"photo.jpg", "name", ".hidden", "a.tar.gz", "\xff\xfe.\x01", "a\nb"}) {
        EXPECT_EQ(Made(Rules(), name), name);
    }
}

TEST(NewNamesTest, FillsInPlaceholders)
{
    EXPECT_EQ(WithPattern("Trip [C][E]", "x.jpg", 2), "Trip 3.jpg");
    EXPECT_EQ(WithPattern("[D] [N]", "x.jpg"), "2023-11-14 x");
    EXPECT_EQ(WithPattern("[n]-[n][e]", "x.jpg"), "x-x.jpg");
    EXPECT_EQ(WithPattern("[[N]] [X] [", "x.jpg"), "[x] [X] [");
    EXPECT_EQ(WithPattern("", "x.jpg"), "");
    EXPECT_EQ(WithPattern("[C][E]", "\xff.\xfe"), "1.\xfe");
}

TEST(NewNamesTest, Counts)
{
    Rules rules;
    rules.pattern = "[C]";
    rules.start = 8;
    rules.step = 2;
    rules.digits = 3;
    EXPECT_EQ(Made(rules, "a", 0), "008");
    EXPECT_EQ(Made(rules, "a", 1), "010");
    EXPECT_EQ(Made(rules, "a", 1000), "2008");
    rules.step = -5;
    EXPECT_EQ(Made(rules, "a", 3), "-007");
}

TEST(NewNamesTest, ReplacesText)
{
    EXPECT_EQ(Made(Replacing("a", "aa", false), "banana.a"), "baanaanaa.aa");
    EXPECT_EQ(Made(Replacing(".", "", false), "a.b.c"), "abc");
    EXPECT_EQ(Made(Replacing("\\d", "x", false), "1\\d"), "1x");
    EXPECT_EQ(Made(Replacing("a", "b", false), "\xff"
                                               "a"),
              "\xff"
              "b");
}

TEST(NewNamesTest, ReplacesWhatAnExpressionFinds)
{
    EXPECT_EQ(Made(Replacing("IMG_(\\d+)", "Photo \\1", true), "IMG_0012.JPG"), "Photo 0012.JPG");
    EXPECT_EQ(Made(Replacing("\\.jpeg$", ".jpg", true), "a.jpeg"), "a.jpg");
    EXPECT_EQ(Made(Replacing("x", "y", true), "\xff"
                                              "x\xfe"),
              "\xff"
              "y\xfe");
    EXPECT_FALSE(NewNames(Replacing("(", "", true)).Error().empty());
    EXPECT_EQ(Made(Replacing("(", "", true), "a"), "(error)");
    EXPECT_EQ(NewNames(Replacing("(", "", false)).Error(), "");
}

TEST(NewNamesTest, ChangesLetters)
{
    EXPECT_EQ(Made(InLetters(Letters::kSmall, false), "ÄBC.JPG"), "äbc.JPG");
    EXPECT_EQ(Made(InLetters(Letters::kSmall, true), "ÄBC.JPG"), "äbc.jpg");
    EXPECT_EQ(Made(InLetters(Letters::kCapitals, true), "äbc.jpg"), "ÄBC.JPG");
    EXPECT_EQ(Made(InLetters(Letters::kTitle, true), "the OLD song.MP3"), "The Old Song.mp3");
    EXPECT_EQ(Made(InLetters(Letters::kSmall, true), "A\xff"
                                                     "B"),
              "a\xff"
              "b");
}

} // namespace rename_many
