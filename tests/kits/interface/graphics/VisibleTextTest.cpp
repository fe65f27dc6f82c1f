#include "ApplicationEnvironment.h"

#include <Font.h>
#include <String.h>

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <string>

namespace {

std::string Visible(const std::string& text)
{
    return BFont::VisibleText(text.c_str()).String();
}

TEST(VisibleTextTest, LeavesLettersAlone)
{
    for (const char* text : {"", "plain name.txt", " ~!@", "é ß Ж λ", "مرحبا بالعالم", "नमस्ते",
                             "你好", "שלום", "e\xcc\x81", "🎉", "㈱", "a\xc2\xa0z"}) {
        EXPECT_EQ(Visible(text), text);
    }
}

TEST(VisibleTextTest, ShowsControlCharactersAsNumbers)
{
    EXPECT_EQ(Visible("a\nb"), "a‹0A›b");
    EXPECT_EQ(Visible("\t\r\x1b\x01"), "‹09›‹0D›‹1B›‹01›");
    EXPECT_EQ(Visible("\x7f"), "‹7F›");
    EXPECT_EQ(Visible("é\n"), "é‹0A›");
    EXPECT_EQ(Visible("\xc2\x80\xc2\x85\xc2\x9f\xc2\xa0"), "‹80›‹85›‹9F›\xc2\xa0");
}

TEST(VisibleTextTest, ShowsDirectionsAndLineEndsAsNumbers)
{
    EXPECT_EQ(Visible("photo\u202Egpj.exe"), "photo‹202E›gpj.exe");
    EXPECT_EQ(Visible("\u200E\u200F\u061C\u202A\u2066\u2069"),
              "‹200E›‹200F›‹61C›‹202A›‹2066›‹2069›");
    EXPECT_EQ(Visible("\u2028\u2029"), "‹2028›‹2029›");
    EXPECT_EQ(Visible("\u2027\u202F"), "\u2027\u202F"); // beside them
}

TEST(VisibleTextTest, ShowsWhatHasNoShape)
{
    EXPECT_EQ(Visible("a\u00ADb\u200Bc\uFEFF\u2060"), "a‹AD›b‹200B›c‹FEFF›‹2060›");
    EXPECT_EQ(Visible("\u3164\U000E0041"), "‹3164›‹E0041›");
}

TEST(VisibleTextTest, JoinersStayWhereTheyJoin)
{
    for (const char* text : {"👩‍👩‍👧", "می‌خواهم", "क्‍ष",
                             "🏴\U000E0067\U000E0062\U000E007F", "❤️‍🔥"}) {
        EXPECT_EQ(Visible(text), text);
    }
    EXPECT_EQ(Visible("a\u200Db"), "a‹200D›b");
    EXPECT_EQ(Visible("\u200Cab\u200C"), "‹200C›ab‹200C›");
    EXPECT_EQ(Visible("می\u200C"), "می‹200C›");
    EXPECT_EQ(Visible("می\u200C\u200Cخ"), "می\u200C‹200C›خ"); // one is enough
    EXPECT_EQ(Visible("🏴x\U000E0067"), "🏴x‹E0067›");
}

TEST(VisibleTextTest, BytesThatAreNotUtf8AreReplaced)
{
    EXPECT_EQ(Visible("a\xff\xfez"), "a\uFFFD\uFFFDz");
    EXPECT_EQ(Visible("\xed\xa0\x80\xf4\x90\x80\x80"),
              "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(VisibleTextTest, TakesAsManyBytesAsAreSaid)
{
    EXPECT_EQ(BFont::VisibleText("a\nb", 2), "a‹0A›");
    EXPECT_EQ(BFont::VisibleText("ab", 10), "ab");
    EXPECT_EQ(BFont::VisibleText(nullptr), "");
}

TEST(VisibleTextTest, NoTwoUnseenCharactersLookAlike)
{
    std::set<std::string> seen;
    int count = 0;
    for (char32_t character = 1; character < 0x3000; character++) {
        std::string text;
        if (character < 0x80) {
            text = static_cast<char>(character);
        } else if (character < 0x800) {
            text = {static_cast<char>(0xC0 | (character >> 6)),
                    static_cast<char>(0x80 | (character & 0x3F))};
        } else {
            text = {static_cast<char>(0xE0 | (character >> 12)),
                    static_cast<char>(0x80 | ((character >> 6) & 0x3F)),
                    static_cast<char>(0x80 | (character & 0x3F))};
        }
        const std::string visible = Visible(text);
        if (visible != text) {
            count++;
            EXPECT_TRUE(seen.insert(visible).second) << visible;
        }
    }
    EXPECT_EQ(count, 31 + 1 + 32 + 1 + 1 + 1 + 2 + 1 + 1 + 4 + 7 + 16);
}

TEST(VisibleTextTest, IsMeasuredAndCutAsItIsDrawn)
{
    EXPECT_EQ(be_plain_font->StringWidth("a\u202Eb"), be_plain_font->StringWidth("a‹202E›b"));
    EXPECT_EQ(be_plain_font->StringWidth("a\nb"), be_plain_font->StringWidth("a‹0A›b"));
    BString text("one\u202Etwo\nthree four five six");
    be_plain_font->TruncateString(&text, B_TRUNCATE_END,
                                  be_plain_font->StringWidth("one‹202E›two‹0A›three …"));
    EXPECT_STREQ(text.String(), "one‹202E›two‹0A›three…");
}

} // namespace
