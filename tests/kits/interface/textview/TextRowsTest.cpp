#include "TextViewFixture.h"

#include <interface/text/TextBuffer.h>
#include <interface/text/TextGeometry.h>
#include <interface/text/TextMovement.h>
#include <interface/text/TextRows.h>

#include <ScrollBar.h>

#include <string>

namespace kits {

namespace {

using namespace kits::testing;

/// Lines of one row and of some, more than are counted at once.
std::string ManyLines()
{
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
        text += i % 3 == 0 ? "a line of many words that are wrapped into some rows of the view\n"
                           : "a short line\n";
    }
    return text;
}

/// One line of some MiB.
std::string LongLine()
{
    std::string text;
    while (text.size() < 4u << 20) {
        text += "one line of some words that are longer or shorter ";
    }
    return text;
}

class TextRowsViewTest : public TextViewFixture, public ::testing::WithParamInterface<bool>
{
protected:
    void ShowMany()
    {
        ShowText("");
        const std::string text = GetParam() ? LongLine() : ManyLines();
        Locked([&, this] {
            fView->SetWordWrap(true);
            fView->SetText(text.c_str());
            return 0;
        });
    }
    float Top()
    {
        return Locked([this] { return fView->Bounds().top; });
    }
    /// How far below the view's top a character is seen.
    float SeenAt(int32 offset)
    {
        return Locked([=, this] { return fView->PointAt(offset).y - fView->Bounds().top; });
    }
};

} // namespace

TEST(TextRowsTest, LinesThatAreNotCountedHaveTheUsualRows)
{
    TextRows rows;
    rows.Reset(4, 2.5);

    EXPECT_EQ(rows.FirstRow(0), 0);
    EXPECT_EQ(rows.FirstRow(1), 2);
    EXPECT_EQ(rows.FirstRow(2), 5);
    EXPECT_EQ(rows.FirstRow(4), 10);
    for (int32 row = 0; row < 10; ++row) {
        const int32 line = rows.LineAt(row);
        EXPECT_LE(rows.FirstRow(line), row);
        EXPECT_GT(rows.FirstRow(line + 1), row);
    }
}

TEST(TextRowsTest, CountedLinesHaveTheirRowsWhereverTheyBegin)
{
    TextRows rows;
    rows.Reset(4, 1.5);

    EXPECT_TRUE(rows.Set(1, 7));
    EXPECT_FALSE(rows.Set(1, 7));
    EXPECT_TRUE(rows.IsCounted(1));
    EXPECT_FALSE(rows.IsCounted(0));
    EXPECT_EQ(rows.FirstRow(1), 1);
    EXPECT_EQ(rows.FirstRow(2), 8);
    EXPECT_EQ(rows.LineAt(7), 1);

    rows.Replace(0, 1, 3);
    EXPECT_EQ(rows.CountLines(), 6);
    EXPECT_TRUE(rows.IsCounted(3));
    EXPECT_EQ(rows.FirstRow(3), 4);
    EXPECT_EQ(rows.FirstRow(4), 11);
}

TEST(TextRowsTest, AllLinesOfASmallTextAreCounted)
{
    TextBuffer text;
    TextGeometry geometry(text);
    text.SetText(ManyLines().substr(0, 60'000));
    geometry.SetRect(BRect(0, 0, 199, 100));
    geometry.SetWrap(true);
    int32 rows = 0;
    for (int32 line = 0; line < text.CountLines(); ++line) {
        rows += geometry.LayoutOf(line).CountRows();
    }

    EXPECT_EQ(geometry.CountRows(), rows);
    EXPECT_EQ(geometry.CountCorrections(), 0);
}

TEST(TextRowsTest, RowsOfALargeTextAreRightOnceTheyWereCounted)
{
    TextBuffer text;
    TextGeometry geometry(text);
    text.SetText(ManyLines());
    geometry.SetRect(BRect(0, 0, 199, 100));
    geometry.SetWrap(true);
    const int64 before = CountDecodedBytes();
    const int32 assumed = geometry.CountRows();
    EXPECT_LT(CountDecodedBytes() - before, 64 * 1024);

    int32 row = 0;
    for (int32 line = 0; line < text.CountLines(); ++line) {
        const TextLine layout = geometry.LayoutOf(line);
        ASSERT_EQ(geometry.RowOf(text.LineStart(line)), row);
        ASSERT_EQ(geometry.PlaceOf(row).line, line);
        row += layout.CountRows();
    }
    EXPECT_EQ(geometry.CountRows(), row);
    EXPECT_NEAR(assumed, row, row / 4);
}

TEST(TextRowsTest, PiecesOfALongLineAreCountedWhenTheyAreAskedFor)
{
    TextBuffer text;
    TextGeometry geometry(text);
    text.SetText(LongLine());
    geometry.SetRect(BRect(0, 0, 199, 100));
    const int64 before = CountDecodedBytes();
    geometry.SetWrap(true);
    const int32 assumed = geometry.CountRows();
    int32 at = text.Length() / 2;
    geometry.RowOf(at);
    at = geometry.RowStart(geometry.RowOf(at));

    // On and back, row by row, nothing is left out.
    for (int i = 0; i < 300; ++i) {
        const int32 row = geometry.RowOf(at);
        const int32 end = geometry.RowEnd(row);
        EXPECT_GT(end, at);
        EXPECT_EQ(TextMovement(text).NextCharacter(end), geometry.RowStart(row + 1));
        at = geometry.RowStart(row + 1);
    }
    for (int i = 0; i < 600; ++i) {
        geometry.RowStart(geometry.RowOf(at) - 1); // may be counted now
        const int32 row = geometry.RowOf(at) - 1;
        EXPECT_EQ(TextMovement(text).NextCharacter(geometry.RowEnd(row)), at);
        EXPECT_GT(geometry.RowWidth(row), 20);
        at = geometry.RowStart(row);
    }
    EXPECT_LT(CountDecodedBytes() - before, 32 << 20); // a row asks for some pieces
    EXPECT_NEAR(geometry.CountRows(), assumed, assumed / 10);
    const int32 last = geometry.RowOf(text.Length());
    EXPECT_EQ(last, geometry.CountRows() - 1);
}

TEST_P(TextRowsViewTest, TheEndIsShownWhole)
{
    ShowMany();

    TypeKey(B_END, B_COMMAND_KEY);

    const int32 end = Locked([this] { return fView->TextLength(); });
    EXPECT_GE(SeenAt(end), 0);
    EXPECT_LE(SeenAt(end) + 15, 101);
}

TEST_P(TextRowsViewTest, SettingALargeTextLooksAtAPartOfIt)
{
    const int64 before = CountDecodedBytes();

    ShowMany();
    TypeKey(B_END, B_COMMAND_KEY);

    EXPECT_LT(CountDecodedBytes() - before, 512 * 1024);
}

TEST_P(TextRowsViewTest, ScrollingIntoRowsThatWereNotCountedKeepsTheRest)
{
    ShowMany();
    auto* bar = Add(new BScrollBar(BRect(210, 10, 223, 109), "bar", fView, 0, 1000, B_VERTICAL));
    const int32 middle = Locked([this] { return fView->TextLength() / 2; });
    Select(middle, middle);
    Locked([this] {
        fView->ScrollToSelection();
        return 0;
    });

    float step = 0;
    for (int round = 0; round < 40; ++round) {
        const int32 seen = Locked([this] { return fView->OffsetAt(fView->Bounds().LeftTop()); });
        const float before = SeenAt(seen);
        TurnWheel(fView, BPoint(20, Top() + 20), -1);
        const float moved = SeenAt(seen) - before;
        step = round == 0 ? moved : step;
        EXPECT_EQ(moved, step) << "round " << round;
    }
    EXPECT_GE(step, 15);
    EXPECT_GT(Locked([=] { return bar->Value(); }), 0);
}

TEST_P(TextRowsViewTest, ArrowsGoThroughRowsThatWereNotCounted)
{
    ShowMany();
    const auto rowStart = [this](int32 fromCaretsRow) {
        return Locked([=, this] { return fView->OffsetAt(fView->CurrentLine() + fromCaretsRow); });
    };
    const int32 length = Locked([this] { return fView->TextLength(); });
    for (int32 part = 1; part < 20; ++part) {
        Select(length / 20 * part, length / 20 * part); // out of sight
        for (int round = 0; round < 5; ++round) {
            const int32 before = rowStart(0);
            TypeKey(B_UP_ARROW);
            EXPECT_EQ(rowStart(1), before) << "part " << part << " round " << round;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, TextRowsViewTest, ::testing::Bool(), [](const auto& text) {
    return std::string(text.param ? "OneLine" : "Lines");
});

} // namespace kits
