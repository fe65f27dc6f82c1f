#include "ApplicationEnvironment.h"

#include <Font.h>
#include <String.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <thread>

namespace {

class SystemFontTest : public ::testing::TestWithParam<const BFont*>
{
};

TEST_P(SystemFontTest, IsFifteenUnitsHigh)
{
    font_height height = {};
    GetParam()->GetHeight(&height);

    EXPECT_EQ(height.ascent + height.descent, 15);
    EXPECT_EQ(height.ascent, std::floor(height.ascent));
    EXPECT_GT(height.descent, 0);
    EXPECT_GE(GetParam()->Size(), 8);
}

INSTANTIATE_TEST_SUITE_P(All, SystemFontTest,
                         ::testing::Values(be_plain_font, be_bold_font, be_fixed_font),
                         [](const auto& tested) {
                             return std::string(tested.param == be_plain_font  ? "Plain"
                                                : tested.param == be_bold_font ? "Bold"
                                                                               : "Fixed");
                         });

TEST(FontTest, BoldIsBroaderAndFixedIsEven)
{
    EXPECT_GT(be_bold_font->StringWidth("Name and size"),
              be_plain_font->StringWidth("Name and size"));
    EXPECT_TRUE(be_fixed_font->IsFixed());
    EXPECT_FALSE(be_plain_font->IsFixed());
}

TEST(FontTest, WidthsAddUp)
{
    const BFont font;

    EXPECT_EQ(font.StringWidth(""), 0);
    EXPECT_EQ(font.StringWidth(nullptr), 0);
    EXPECT_FLOAT_EQ(font.StringWidth("abcdef", 3), font.StringWidth("abc"));
    EXPECT_EQ(font.StringWidth("abc", 0), 0);
    const char* strings[] = {"abc", "x"};
    float widths[2] = {};
    font.GetStringWidths(strings, nullptr, 2, widths);
    EXPECT_EQ(widths[0], font.StringWidth("abc"));
    EXPECT_EQ(widths[1], font.StringWidth("x"));
}

TEST(FontTest, SizeScalesWidths)
{
    BFont font;
    font.SetSize(40);
    font_height height = {};
    font.GetHeight(&height);

    EXPECT_GT(font.StringWidth("m"), 2 * be_plain_font->StringWidth("m"));
    EXPECT_GT(height.ascent, 25);
    font.SetSize(-3);
    EXPECT_EQ(font.Size(), 1);
}

struct CutCase
{
    const char* name;
    uint32 mode;
    const char* start;
    const char* end;
};

class TruncateTest : public ::testing::TestWithParam<CutCase>
{
};

TEST_P(TruncateTest, CutsToTheWidth)
{
    BString text("/home/somebody/documents/letters/summer.txt");
    const std::string ellipsis = "\xe2\x80\xa6";
    const float room = 100;

    be_plain_font->TruncateString(&text, GetParam().mode, room);

    const std::string cut(text.String());
    EXPECT_LE(be_plain_font->StringWidth(text.String()), room);
    EXPECT_NE(cut.find(ellipsis), std::string::npos);
    EXPECT_EQ(cut.compare(0, std::string(GetParam().start).size(), GetParam().start), 0) << cut;
    const std::string end(GetParam().end);
    ASSERT_GE(cut.size(), end.size());
    EXPECT_EQ(cut.substr(cut.size() - end.size()), end);
}

INSTANTIATE_TEST_SUITE_P(Modes, TruncateTest,
                         ::testing::Values(CutCase{"End", B_TRUNCATE_END, "/home", "\xe2\x80\xa6"},
                                           CutCase{"Beginning", B_TRUNCATE_BEGINNING,
                                                   "\xe2\x80\xa6", ".txt"},
                                           CutCase{"Middle", B_TRUNCATE_MIDDLE, "/h", "txt"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(FontTest, LeavesWhatFitsAndEmptiesWhatCannot)
{
    BString fits("abc");
    be_plain_font->TruncateString(&fits, B_TRUNCATE_END, be_plain_font->StringWidth("abc"));
    EXPECT_STREQ(fits.String(), "abc");

    BString cannot("abc");
    be_plain_font->TruncateString(&cannot, B_TRUNCATE_END, 1);
    EXPECT_STREQ(cannot.String(), "");
}

TEST(FontTest, TheTestsUseOneFontWhateverIsInstalled)
{
    BFont named;
    ASSERT_EQ(named.SetFamilyAndStyle("DejaVu Sans", nullptr), B_OK);
    named.SetSize(be_plain_font->Size());

    EXPECT_EQ(be_plain_font->StringWidth("Hamburgefonts"), named.StringWidth("Hamburgefonts"));
}

TEST(FontTest, MeasuresTheSameOnEveryThread)
{
    const float here = be_plain_font->StringWidth("Hamburgefonts");
    float there = 0;

    std::thread([&there] { there = be_plain_font->StringWidth("Hamburgefonts"); }).join();

    EXPECT_EQ(here, there);
}

TEST(FontTest, FamilyAndStyle)
{
    BFont font;
    ASSERT_EQ(font.SetFamilyAndStyle("DejaVu Sans", "Bold"), B_OK);
    font_family family = {};
    font_style style = {};
    font.GetFamilyAndStyle(&family, &style);

    EXPECT_STREQ(family, "DejaVu Sans");
    EXPECT_STREQ(style, "Bold");
    EXPECT_EQ(font.SetFamilyAndStyle(std::string(100, 'x').c_str(), nullptr), B_NAME_TOO_LONG);
    EXPECT_NE(font, *be_plain_font);
    EXPECT_EQ(BFont(), *be_plain_font);
}

} // namespace
