#include "ApplicationEnvironment.h"

#include <interface/text/TextBuffer.h>
#include <interface/text/TextDecoding.h>
#include <interface/text/TextGeometry.h>

#include <algorithm>
#include <string>

namespace kits {

namespace {

constexpr char kAlefBet[] = "\xd7\x90\xd7\x91"; // two Hebrew letters

class TextLayoutTest : public ::testing::Test
{
protected:
    TextLayout Lay(std::string_view text, const TextPreview* preview = nullptr) const
    {
        return TextLayout(text, fStyle, preview);
    }
    TextStyle fStyle;
};

class TextGeometryTest : public ::testing::Test
{
protected:
    TextGeometryTest() { fGeometry.SetRect(BRect(2, 3, 101, 20)); }
    void SetText(const char* text)
    {
        fText.SetText(text);
        fGeometry.Reset();
    }

    TextBuffer fText;
    TextGeometry fGeometry{fText};
};

} // namespace

TEST_F(TextLayoutTest, CaretGoesAsFarAsTheFontMeasures)
{
    const TextLayout layout = Lay("name");

    EXPECT_EQ(layout.CountRows(), 1);
    EXPECT_EQ(layout.XOf(0), 0);
    EXPECT_NEAR(layout.XOf(4), static_cast<double>(BFont().StringWidth("name")), 0.1);
    EXPECT_GT(layout.XOf(2), layout.XOf(1));
}

TEST_F(TextLayoutTest, PointsMeanTheNearestCaretPlace)
{
    const TextLayout layout = Lay("mmmm");
    const double letter = layout.XOf(1);

    EXPECT_EQ(layout.OffsetAt(0, -50), 0);
    EXPECT_EQ(layout.OffsetAt(0, letter * 0.4), 0);
    EXPECT_EQ(layout.OffsetAt(0, letter * 0.6), 1);
    EXPECT_EQ(layout.OffsetAt(0, 9999), 4);
}

TEST_F(TextLayoutTest, OffsetsCountBytes)
{
    const TextLayout layout = Lay("\xc3\xa9\xff\xe2\x82\xac"); // é, a stray byte, the euro sign

    EXPECT_EQ(layout.OffsetAt(0, 9999), 6);
    EXPECT_EQ(layout.RightOf(0), 2);
    EXPECT_EQ(layout.RightOf(2), 3);
    EXPECT_EQ(layout.RightOf(3), 6);
    EXPECT_EQ(layout.LeftOf(6), 3);
}

TEST_F(TextLayoutTest, RightToLeftTextBeginsAtItsRight)
{
    const TextLayout layout = Lay(kAlefBet);

    EXPECT_TRUE(layout.IsRightToLeft());
    EXPECT_NEAR(layout.XOf(0), layout.RowWidth(0), 0.1);
    EXPECT_NEAR(layout.XOf(4), 0, 0.1);
    EXPECT_EQ(layout.LeftOf(0), 2);
    EXPECT_EQ(layout.RightOf(2), 0);
}

TEST_F(TextLayoutTest, SelectionOfMixedDirectionsHasSeveralStretches)
{
    // "ab" + two Hebrew letters + "cd", seen with the Hebrew ones turned around.
    const TextLayout layout = Lay(std::string("ab") + kAlefBet + "cd");

    EXPECT_EQ(layout.Spans(0, 0, 8).size(), 1u);
    // From "b" to the first Hebrew letter: that one is seen as the second.
    const auto spans = layout.Spans(0, 1, 4);
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_GT(spans[1].first, spans[0].second + 1);
    EXPECT_TRUE(layout.Spans(0, 3, 3).empty());
}

TEST_F(TextLayoutTest, LineEndsOfOtherKindsBreakNoLine)
{
    for (const char* end : {"\xe2\x80\xa8", "\xe2\x80\xa9", "\xc2\x85", "\r", "\v", "\f"}) {
        const std::string text = std::string("m") + end + "m";
        const TextLayout layout = Lay(text);

        EXPECT_EQ(layout.CountRows(), 1) << text;
        EXPECT_GT(layout.XOf(static_cast<int32>(text.size())), 2 * layout.XOf(1)) << text;
    }
}

TEST_F(TextLayoutTest, WrapsAtWords)
{
    fStyle.wrapWidth = BFont().StringWidth("word word ") + 2;
    const TextLayout layout = Lay("word word word");

    ASSERT_EQ(layout.CountRows(), 2);
    EXPECT_EQ(layout.RowStart(1), 10);
    EXPECT_EQ(layout.RowEnd(0), 9); // before the blank at which it is wrapped
    EXPECT_EQ(layout.RowOf(10), 1);
    EXPECT_EQ(layout.OffsetAt(0, 9999), 9);
}

TEST_F(TextLayoutTest, PreviewMovesWhatFollowsAndTheCaret)
{
    TextPreview preview;
    preview.text = QStringLiteral("mm");
    preview.offset = 1;
    preview.caret = 1;
    const TextLayout plain = Lay("ab");
    const TextLayout layout = Lay("ab", &preview);
    const double added = static_cast<double>(BFont().StringWidth("mm"));

    EXPECT_NEAR(layout.XOf(2), plain.XOf(2) + added, 0.1);
    EXPECT_NEAR(layout.CaretX(1), plain.XOf(1) + added / 2, 0.1);
    EXPECT_EQ(layout.OffsetAt(0, 9999), 2);
}

TEST_F(TextGeometryTest, RowsAreAsHighAsTheFont)
{
    SetText("one\ntwo\nthree");

    EXPECT_EQ(fGeometry.RowHeight(), 15);
    EXPECT_EQ(fGeometry.CountRows(), 3);
    EXPECT_EQ(fGeometry.PointAt(4), BPoint(2, 18));
    EXPECT_EQ(fGeometry.RowAt(17.5), 0);
    EXPECT_EQ(fGeometry.RowAt(18), 1);
    EXPECT_EQ(fGeometry.RowAt(-7), 0);
    EXPECT_EQ(fGeometry.RowAt(700), 2);
}

TEST_F(TextGeometryTest, AlignsWithinItsRectangle)
{
    SetText("ab");
    const double width = fGeometry.LayoutOf(0).RowWidth(0);

    fGeometry.SetAlignment(B_ALIGN_RIGHT);
    EXPECT_NEAR(static_cast<double>(fGeometry.PointAt(2).x), 102, 1);
    fGeometry.SetAlignment(B_ALIGN_CENTER);
    EXPECT_NEAR(static_cast<double>(fGeometry.PointAt(0).x), 52 - width / 2, 1);
}

TEST_F(TextGeometryTest, RightToLeftTextIsSetAtTheRightEdge)
{
    SetText(kAlefBet);

    EXPECT_NEAR(static_cast<double>(fGeometry.PointAt(0).x), 102, 1);
    EXPECT_LT(fGeometry.PointAt(4).x, 102);
}

TEST_F(TextGeometryTest, WrappedRowsAreCountedAndFound)
{
    fGeometry.SetWrap(true);
    SetText("mmmmm mmmmm mmmmm\nx\nmmmmm mmmmm mmmmm");
    const int32 first = fGeometry.RowOf(18); // "x"
    ASSERT_GT(first, 1);

    EXPECT_EQ(fGeometry.CountRows(), 2 * first + 1);
    EXPECT_EQ(fGeometry.RowStart(first), 18);
    EXPECT_EQ(fGeometry.PlaceOf(first).line, 1);
    EXPECT_EQ(fGeometry.PlaceOf(first - 1).line, 0);
    EXPECT_EQ(fGeometry.PlaceOf(first - 1).rowInLine, first - 1);
}

TEST_F(TextGeometryTest, WrappedRowsFollowChanges)
{
    fGeometry.SetWrap(true);
    SetText("x\nmmmmm mmmmm mmmmm\ny");
    const int32 before = fGeometry.CountRows();

    fText.Replace(1, 1, "\n1\n2");
    fGeometry.TextReplaced(1, 0, 1, 4);
    EXPECT_EQ(fGeometry.CountRows(), before + 2);
    EXPECT_EQ(fGeometry.RowOf(fText.Length()), before + 1);

    fText.Replace(1, 5, "");
    fGeometry.TextReplaced(1, 4, 3, 0);
    EXPECT_EQ(fGeometry.CountRows(), before);
}

TEST(TextDirectionTest, EveryScriptThatRunsToTheLeftIsKnown)
{
    const auto runsLeft = [](const char* text) {
        return kits::DecodedText(text, kits::TextShowing::kSingleLine).HasRightToLeft();
    };
    EXPECT_TRUE(runsLeft("a \u05d0"));     // Hebrew
    EXPECT_TRUE(runsLeft("a \u0627"));     // Arabic
    EXPECT_TRUE(runsLeft("a \U00010d00")); // Hanifi Rohingya
    EXPECT_TRUE(runsLeft("a \U0001e900")); // Adlam
    EXPECT_TRUE(runsLeft("a \u202eb"));    // an override
    EXPECT_FALSE(runsLeft("a \u00e4 \u4e2d \U0001f600"));
    EXPECT_FALSE(runsLeft("a \ufdfd \U0001d11e")); // signs: one of the Arabic blocks, one of music
}

} // namespace kits
