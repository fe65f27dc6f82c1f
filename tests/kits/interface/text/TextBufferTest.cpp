#include <interface/text/TextBuffer.h>
#include <interface/text/TextDecoding.h>

#include <gtest/gtest.h>

#include <random>

namespace kits {

TEST(TextLineIndexTest, KnowsWhereLinesBegin)
{
    TextLineIndex index;
    index.Build("one\ntwo\n\nfour");

    ASSERT_EQ(index.CountLines(), 4);
    EXPECT_EQ(index.LineStart(0), 0);
    EXPECT_EQ(index.LineStart(1), 4);
    EXPECT_EQ(index.LineStart(2), 8);
    EXPECT_EQ(index.LineStart(3), 9);
    EXPECT_EQ(index.LineOf(3), 0);
    EXPECT_EQ(index.LineOf(4), 1);
    EXPECT_EQ(index.LineOf(8), 2);
    EXPECT_EQ(index.LineOf(100), 3);
    EXPECT_EQ(index.LineStart(100), 9);
    EXPECT_EQ(index.LineStart(-1), 0);
}

TEST(TextLineIndexTest, EmptyTextIsOneLineAndAFinalBreakBeginsAnother)
{
    TextLineIndex index;
    EXPECT_EQ(index.CountLines(), 1);

    index.Build("a\n");
    EXPECT_EQ(index.CountLines(), 2);
    EXPECT_EQ(index.LineStart(1), 2);
}

TEST(TextLineIndexTest, FollowsChangesAsIfBuiltAnew)
{
    std::mt19937 random(7);
    const auto below = [&random](size_t limit) {
        return random() % limit;
    };
    std::string text = "a\nbb\n\nccc";
    TextLineIndex followed;
    followed.Build(text);
    for (int round = 0; round < 2000; ++round) {
        const size_t offset = below(text.size() + 1);
        const size_t removed = below(std::min<size_t>(text.size() - offset, 5) + 1);
        std::string inserted;
        for (size_t i = below(5); i > 0; --i) {
            inserted += "x\ny"[below(3)];
        }
        text.replace(offset, removed, inserted);
        followed.Replace(static_cast<int64>(offset), static_cast<int64>(removed), inserted);

        TextLineIndex built;
        built.Build(text);
        ASSERT_EQ(followed.CountLines(), built.CountLines()) << text;
        for (int64 line = 0; line < built.CountLines(); ++line) {
            ASSERT_EQ(followed.LineStart(line), built.LineStart(line)) << text;
        }
    }
}

TEST(TextBufferTest, LinesEndBeforeTheirBreaks)
{
    TextBuffer text;
    text.SetText("one\ntwo");

    EXPECT_EQ(text.Line(0), "one");
    EXPECT_EQ(text.Line(1), "two");

    text.Replace(3, 4, "");
    EXPECT_EQ(text.CountLines(), 1);
    EXPECT_EQ(text.Line(0), "onetwo");
}

TEST(TextBufferTest, SingleLineKeepsItsBreaksAsCharacters)
{
    TextBuffer text;
    text.SetSingleLine(true);
    text.SetText("a\nb");
    text.Replace(3, 3, "\nc");

    EXPECT_EQ(text.CountLines(), 1);
    EXPECT_EQ(text.Line(0), "a\nb\nc");
}

TEST(TextBufferTest, OffsetsInsideACharacterMeanItsBeginning)
{
    TextBuffer text;
    text.SetText("a\xe2\x82\xac\x80z"); // a, the euro sign, a stray byte, z

    EXPECT_EQ(text.Clamp(1), 1);
    EXPECT_EQ(text.Clamp(2), 1);
    EXPECT_EQ(text.Clamp(3), 1);
    EXPECT_EQ(text.Clamp(4), 4);
    EXPECT_EQ(text.Clamp(5), 5);
    EXPECT_EQ(text.Clamp(99), 6);
    EXPECT_EQ(text.Clamp(-3), 0);
}

struct LengthCase
{
    const char* name;
    const char* bytes;
    int32 length;
};

class Utf8LengthTest : public ::testing::TestWithParam<LengthCase>
{
};

TEST_P(Utf8LengthTest, TellsCharactersFromOtherBytes)
{
    EXPECT_EQ(Utf8Length(GetParam().bytes), GetParam().length);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Utf8LengthTest,
    ::testing::Values(
        LengthCase{"Nothing", "", 0}, LengthCase{"Letter", "a", 1},
        LengthCase{"TwoBytes", "\xc3\xa9", 2}, LengthCase{"CutTwoBytes", "\xc3", 0},
        LengthCase{"BrokenTwoBytes", "\xc3z", 0}, LengthCase{"LoneContinuation", "\x80", 0},
        LengthCase{"OverlongTwoBytes", "\xc0\xaf", 0}, LengthCase{"ThreeBytes", "\xe2\x82\xac", 3},
        LengthCase{"CutThreeBytes", "\xe2\x82", 0},
        LengthCase{"OverlongThreeBytes", "\xe0\x80\xaf", 0},
        LengthCase{"Surrogate", "\xed\xa0\x80", 0}, LengthCase{"FourBytes", "\xf0\x9f\x98\x80", 4},
        LengthCase{"BeyondUnicode", "\xf4\x90\x80\x80", 0}, LengthCase{"NoLead", "\xff", 0}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(TextBufferTest, CutsBetweenCharactersOnly)
{
    EXPECT_EQ(CutAtCharacter("a\xc3\xa9z", 2), "a");
    EXPECT_EQ(CutAtCharacter("a\xc3\xa9z", 3), "a\xc3\xa9");
    EXPECT_EQ(CutAtCharacter("abc", 9), "abc");
    EXPECT_EQ(CutAtCharacter("abc", -1), "");
    EXPECT_EQ(CutAtCharacter("\xff\xfe", 1), "\xff");
}

TEST(TextDecodingTest, BytesThatAreNoTextAreShownOneByOne)
{
    const DecodedText shown("a\xff\xfe"
                            "b",
                            TextShowing::kLines);

    EXPECT_EQ(shown.Text().toStdU16String(), u"a\uFFFD\uFFFDb");
    EXPECT_EQ(shown.ByteOf(3), 3);
    EXPECT_EQ(shown.UnitOf(2), 2);
}

TEST(TextDecodingTest, OffsetsGoBothWays)
{
    // One byte, two, four (two units), one.
    const DecodedText shown("a\xc3\xa9\xf0\x9f\x98\x80z", TextShowing::kLines);

    ASSERT_EQ(shown.Text().size(), 5);
    EXPECT_EQ(shown.UnitOf(1), 1);
    EXPECT_EQ(shown.UnitOf(3), 2);
    EXPECT_EQ(shown.UnitOf(7), 4);
    EXPECT_EQ(shown.UnitOf(8), 5);
    EXPECT_EQ(shown.ByteOf(2), 3);
    EXPECT_EQ(shown.ByteOf(3), 3); // between the two units of one character
    EXPECT_EQ(shown.ByteOf(4), 7);
    EXPECT_EQ(shown.ByteOf(5), 8);
    EXPECT_EQ(shown.ByteOf(50), 8);
}

TEST(TextDecodingTest, HiddenCharactersAreABulletEach)
{
    const DecodedText shown("a\xc3\xa9\xf0\x9f\x98\x80\n", TextShowing::kHidden);

    EXPECT_EQ(shown.Text().toStdU16String(), u"\u2022\u2022\u2022\u2022");
    EXPECT_EQ(shown.UnitOf(3), 2);
    EXPECT_EQ(shown.ByteOf(3), 7);
    EXPECT_EQ(shown.ByteOf(4), 8);
    EXPECT_FALSE(shown.HasRightToLeft());
}

TEST(TextDecodingTest, ControlCharactersBecomeSigns)
{
    EXPECT_EQ(DecodedText("a\nb\tc\x7f", TextShowing::kLines).Text().toStdU16String(),
              u"a\u240Ab\tc\u2421");
    EXPECT_EQ(DecodedText("b\tc\xc3\xa9", TextShowing::kSingleLine).Text().toStdU16String(),
              u"b\u2409c\u00e9");
}

} // namespace kits
