#include "ApplicationEnvironment.h"

#include <interface/text/TextAdvances.h>
#include <interface/text/TextBuffer.h>
#include <interface/text/TextGeometry.h>
#include <interface/text/TextMovement.h>

#include <QTextBoundaryFinder>

#include <cmath>
#include <set>
#include <string>

namespace kits {

namespace {

constexpr size_t kLength = 10'000; // bytes: some pieces

std::string Long(const std::string& part)
{
    std::string text;
    while (text.size() < kLength) {
        text += part;
    }
    return text;
}

struct LineCase
{
    const char* name;
    std::string part;
    bool wraps;
};

class TextLineTest : public ::testing::TestWithParam<LineCase>
{
protected:
    TextLineTest()
    {
        fGeometry.SetRect(BRect(0, 0, 299, 100));
        fText.SetText(Long(GetParam().part));
        fGeometry.SetWrap(GetParam().wraps);
    }
    /// Where the caret may stand: between what a person sees as characters.
    std::set<int32> Places() const
    {
        const DecodedText shown(fText.Line(0), TextShowing::kLines);
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, shown.Text());
        std::set<int32> places = {0};
        while (finder.toNextBoundary() >= 0) {
            places.insert(shown.ByteOf(static_cast<int32>(finder.position())));
        }
        return places;
    }
    /// The next place of the arrow that leads on or back.
    int32 Step(const TextLine& line, int32 at, bool isForward) const
    {
        const int32 next = isForward != line.IsRightToLeft() ? line.RightOf(at) : line.LeftOf(at);
        if (next == at && GetParam().wraps) {
            // At a row's edge the view goes on by itself.
            const TextMovement movement(fText);
            return isForward ? movement.NextCharacter(at) : movement.PreviousCharacter(at);
        }
        return next;
    }
    /// Where the arrow leads from one end to the other, as long as it leads that way.
    std::set<int32> Walk(const TextLine& line, bool isForward) const
    {
        int32 at = isForward ? 0 : fText.Length();
        std::set<int32> visited = {at};
        for (int32 next = Step(line, at, isForward); isForward ? next > at : next < at;
             next = Step(line, at, isForward)) {
            visited.insert(at = next);
        }
        return visited;
    }
    /// The borders of the line's pieces.
    std::set<int32> Borders() const
    {
        TextPieces pieces(fText);
        std::set<int32> borders;
        for (const TextPiece& piece : pieces.Of(0)) {
            borders.insert(piece.start);
        }
        return borders;
    }

    TextBuffer fText;
    TextGeometry fGeometry{fText};
};

} // namespace

TEST_P(TextLineTest, ArrowsVisitEachCharacterOnce)
{
    const TextLine line = fGeometry.LayoutOf(0);
    std::set<int32> on = Walk(line, true);
    std::set<int32> back = Walk(line, false);
    std::set<int32> places = Places();
    // Qt leaves out the places behind the last blanks of wrapped rows that run to the left.
    const bool leavesOutEnds = GetParam().wraps && line.IsRightToLeft();
    for (int32 row = 0; leavesOutEnds && row + 1 < line.CountRows(); ++row) {
        for (std::set<int32>* visited : {&on, &back, &places}) {
            visited->erase(line.RowEnd(row));
        }
    }

    EXPECT_EQ(on, places);
    EXPECT_EQ(back, places);
}

TEST_P(TextLineTest, MovementAgreesWithTheArrows)
{
    const TextMovement movement(fText);
    const std::set<int32> places = Places();
    std::set<int32> on = {0};
    for (int32 at = 0; at < fText.Length() && on.size() <= places.size();) {
        on.insert(at = movement.NextCharacter(at));
    }
    EXPECT_EQ(on, places);
    std::set<int32> back = {fText.Length()};
    for (int32 at = fText.Length(); at > 0 && back.size() <= places.size();) {
        back.insert(at = movement.PreviousCharacter(at));
    }
    EXPECT_EQ(back, places);
}

TEST_P(TextLineTest, PointsAtCaretPlacesMeanThem)
{
    const TextLine line = fGeometry.LayoutOf(0);

    for (const int32 border : Borders()) {
        int32 at = border;
        for (int32 i = 0; i < 6 && at > 0; ++i) {
            at = TextMovement(fText).PreviousCharacter(at);
        }
        for (int32 i = 0; i < 12 && at < fText.Length(); ++i) {
            const double x = line.XOf(at);
            const int32 found = line.OffsetAt(line.RowOf(at), x);
            if (line.IsRightToLeft() && GetParam().wraps) {
                EXPECT_NEAR(line.XOf(found), x, 10); // Qt forgets the blank behind the row
            } else {
                EXPECT_EQ(found, at) << "border " << border;
            }
            at = TextMovement(fText).NextCharacter(at);
        }
    }
}

TEST_P(TextLineTest, SelectionMeetsAtTheBorders)
{
    const TextLine line = fGeometry.LayoutOf(0);
    const double width = line.RowWidth(0);
    for (const int32 border : Borders()) {
        const int32 from = std::max(0, border - 10 * 4);
        const int32 to = std::min(fText.Length(), border + 10 * 4);
        const int32 row = line.RowOf(border);
        const TextLine::Spans whole =
            line.SpansOf(row, fText.Clamp(from), fText.Clamp(to), TextLine::kAll);
        ASSERT_FALSE(whole.empty());
        double left = whole.front().first;
        double right = whole.front().second;
        for (const auto& [begin, end] : whole) {
            EXPECT_LE(begin, right + 1) << "a gap at border " << border;
            left = std::min(left, begin);
            right = std::max(right, end);
        }
        if (!GetParam().wraps) {
            EXPECT_NEAR(right - left,
                        std::abs(line.XOf(fText.Clamp(to)) - line.XOf(fText.Clamp(from))), 1);
            EXPECT_LE(right, width + 1);
        }
    }
}

TEST_P(TextLineTest, RowsFollowEachOther)
{
    const TextLine line = fGeometry.LayoutOf(0);
    const int32 rows = line.CountRows();

    EXPECT_EQ(rows > 1, GetParam().wraps);
    EXPECT_EQ(line.RowStart(0), 0);
    EXPECT_EQ(line.RowEnd(rows - 1), fText.Length());
    for (int32 row = 1; row < rows; ++row) {
        const int32 start = line.RowStart(row);
        EXPECT_EQ(line.RowOf(start), row);
        // The row before ends with the character before it, and is nearly full.
        EXPECT_EQ(TextMovement(fText).NextCharacter(line.RowEnd(row - 1)), start);
        EXPECT_EQ(line.RowOf(line.RowEnd(row - 1)), row - 1);
        EXPECT_GT(line.RowWidth(row - 1), 150);
        EXPECT_LE(line.RowWidth(row - 1), 300);
    }
}

TEST_P(TextLineTest, ChangesLeadToTheSameAsSettingAnew)
{
    const int32 middle = fText.Clamp(static_cast<int32>(kLength / 2));
    fGeometry.LayoutOf(0).RowWidth(0);
    for (int32 i = 0; i < 40; ++i) {
        fText.Replace(middle, middle, "one ");
        fGeometry.TextReplaced(middle, 0, 1, 4);
        fGeometry.LayoutOf(0).XOf(middle);
    }
    const double width = fGeometry.LayoutOf(0).RowWidth(0);
    const int32 rows = fGeometry.CountRows();
    const int32 lastRow = fGeometry.RowOf(fText.Length());

    TextGeometry anew(fText);
    anew.SetRect(fGeometry.Rect());
    anew.SetWrap(GetParam().wraps);

    EXPECT_EQ(lastRow, rows - 1);
    if (GetParam().wraps) {
        EXPECT_NEAR(rows, anew.CountRows(), 2); // rows may be short behind a change
    } else {
        EXPECT_NEAR(width, anew.LayoutOf(0).RowWidth(0), 1);
    }
}

TEST_P(TextLineTest, PreviewInALongLineMovesTheCaret)
{
    const int32 place = *std::next(Borders().begin());
    const BPoint before = fGeometry.CaretAt(place);
    TextPreview preview;
    preview.text = QStringLiteral("mm");
    preview.offset = place;
    preview.caret = 1;
    fGeometry.SetPreview(preview);
    const BPoint during = fGeometry.CaretAt(place);
    fGeometry.SetPreview({});

    EXPECT_TRUE(during.x != before.x || during.y != before.y);
    EXPECT_EQ(fGeometry.CaretAt(place), before);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TextLineTest,
    ::testing::Values(
        LineCase{"Words", "one line, {many: words} ", false},
        LineCase{"WordsWrapped", "one line, {many: words} ", true},
        LineCase{"NoBlanks", "abcde.fgh", false}, LineCase{"NoBlanksWrapped", "abcde.fgh", true},
        LineCase{"Accents", "e\xcc\x81o\xcc\x88\xcc\x81x", false},
        LineCase{"Emoji",
                 "\xf0\x9f\x91\xa8\xe2\x80\x8d\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7"
                 "\xf0\x9f\x98\x80z",
                 false},
        LineCase{"NoText", "\xff\xc3\xa9\xfe", false},
        LineCase{"NoTextWrapped", "\xff\xc3\xa9\xfe", true}, LineCase{"Tabs", "a\tb\tc ", false},
        LineCase{"RightToLeft", "\xd7\x90\xd7\x91\xd7\x92 \xd7\x93\xd7\x94 ", false},
        LineCase{"RightToLeftWrapped", "\xd7\x90\xd7\x91\xd7\x92 \xd7\x93\xd7\x94 ", true}),
    [](const auto& line) { return std::string(line.param.name); });

TEST(TextAdvancesTest, WidthsAreWhatPiecesAreSetWith)
{
    TextAdvances advances;
    TextStyle style;
    for (const char* text : {"AVATAR fi ffl 1.000,00 ", "   ", "Tr\xc3\xa4ge \xc4\x8d.",
                             "To\x01"
                             "\x7f"}) {
        const TextLayout layout(text, style, nullptr, TextDirection::kLeftToRight);
        ASSERT_TRUE(advances.WidthOf(text, style).has_value()) << text;
        EXPECT_NEAR(*advances.WidthOf(text, style), layout.Advance(), 0.01) << text;
        EXPECT_NEAR(layout.XOf(99), layout.Advance(), 0.01) << text;
    }
    EXPECT_FALSE(advances.WidthOf("a\tb", style).has_value());
    EXPECT_FALSE(advances.WidthOf("\xd7\x90", style).has_value());
    style.showing = TextShowing::kSingleLine;
    EXPECT_TRUE(advances.WidthOf("a\tb", style).has_value());
}

TEST(TextLineBoundTest, WidthsAreAssumedWhenTooMuchWouldBeShaped)
{
    std::string hebrew;
    while (hebrew.size() < (4u << 20)) {
        hebrew += "\xd7\x90\xd7\x91\xd7\x92 \xd7\x93\xd7\x94 ";
    }
    TextBuffer text;
    text.SetText(hebrew);
    TextGeometry geometry(text);
    const int64 before = CountDecodedBytes();

    const BPoint first = geometry.PointAt(0);
    const BPoint last = geometry.PointAt(text.Length());

    EXPECT_LT(CountDecodedBytes() - before, 2 << 20);
    EXPECT_LT(last.x, 1);
    EXPECT_GT(first.x, 1'000'000);
}

} // namespace kits
