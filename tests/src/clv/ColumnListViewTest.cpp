#include "TestRow.h"
#include "clv/CLVColumnLabelView.h"
#include "clv/CLVContainerView.h"

#include <ScrollBar.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace norvane;

CLVColumn* Column(const char* label, float width, uint32 flags = CLV_SORT_KEYABLE,
                  float minimum = 20)
{
    return new CLVColumn(label, width, flags, minimum);
}

TEST(CLVColumnTest, RaisesWidthsBelowTheMinimum)
{
    CLVColumn column("Name", 10, 0, 20);
    EXPECT_EQ(column.Width(), 20);
    column.SetWidth(5);
    EXPECT_EQ(column.Width(), 20);
    column.SetWidth(80);
    EXPECT_EQ(column.Width(), 80);
}

TEST(CLVColumnTest, RaisesAMinimumBelowFour)
{
    CLVColumn column("Name", 1, 0, 0);
    EXPECT_EQ(column.MinimumWidth(), 4);
    EXPECT_EQ(column.Width(), 4);
}

TEST(CLVColumnTest, CutsWidthsThatNoWindowCanUse)
{
    for (const float width : {1e5f, 2147483648.0f, INFINITY}) {
        CLVColumn column("Name", width);
        EXPECT_EQ(column.Width(), CLVColumn::kLargestWidth);
        column.SetWidth(80);
        column.SetWidth(width);
        EXPECT_EQ(column.Width(), CLVColumn::kLargestWidth);
        EXPECT_EQ(CLVColumn("Name", 20, 0, width).MinimumWidth(), CLVColumn::kLargestWidth);
    }
}

TEST(CLVColumnTest, TakesTheMinimumForAWidthThatIsNoNumber)
{
    CLVColumn column("Name", NAN);
    EXPECT_EQ(column.Width(), 20);
    column.SetWidth(NAN);
    EXPECT_EQ(column.Width(), 20);
}

TEST(CLVColumnTest, StartsUnsorted)
{
    EXPECT_EQ(CLVColumn("Name").SortMode(), NoSort);
}

TEST(CLVColumnTest, ForcesWhatAnExpanderColumnIs)
{
    CLVColumn column("Label", 90, 0x3ff, 50);
    EXPECT_EQ(column.Label(), nullptr);
    EXPECT_EQ(column.Width(), 20);
    EXPECT_EQ(column.MinimumWidth(), 20);
    EXPECT_EQ(column.Flags(), (0x3ffu & 0xAAu) | 0x144u);
}

TEST(CLVColumnTest, HidesByItsFlag)
{
    CLVColumn column("Name", 50, CLV_HIDDEN);
    EXPECT_FALSE(column.IsShown());
    column.SetShown(true);
    EXPECT_TRUE(column.IsShown());
    EXPECT_EQ(column.Flags() & CLV_HIDDEN, 0u);
}

class ColumnListViewTest : public ::testing::Test
{
protected:
    TestList fList;
};

TEST_F(ColumnListViewTest, LaysColumnsOutFromTheLeft)
{
    fList.AddColumn(Column("a", 20));
    fList.AddColumn(Column("b", 100));
    EXPECT_EQ(fList.ColumnAt(0)->Begin(), 0);
    EXPECT_EQ(fList.ColumnAt(0)->End(), 20);
    EXPECT_EQ(fList.ColumnAt(1)->Begin(), 21);
    EXPECT_EQ(fList.ColumnAt(1)->End(), 121);
    EXPECT_EQ(fList.DataWidth(), 121);
}

TEST_F(ColumnListViewTest, LeavesHiddenColumnsOut)
{
    fList.AddColumn(Column("a", 50, CLV_HIDDEN));
    fList.AddColumn(Column("b", 100));
    EXPECT_EQ(fList.ColumnAt(1)->Begin(), 0);
    fList.ColumnAt(0)->SetShown(true);
    EXPECT_EQ(fList.ColumnAt(1)->Begin(), 51);
}

TEST_F(ColumnListViewTest, RefusesAColumnThatHasAParent)
{
    CLVColumn* column = Column("a", 50);
    EXPECT_TRUE(fList.AddColumn(column));
    EXPECT_FALSE(fList.AddColumn(column));
    EXPECT_EQ(fList.CountColumns(), 1);
}

TEST_F(ColumnListViewTest, RefusesAnExpanderColumnInAFlatList)
{
    CLVColumn column(nullptr, 20, CLV_EXPANDER);
    EXPECT_FALSE(fList.AddColumn(&column));
    EXPECT_EQ(fList.CountColumns(), 0);
}

TEST_F(ColumnListViewTest, TellsChangedWidthsAndMovesTheColumnsBehind)
{
    fList.AddColumn(Column("a", 50));
    fList.AddColumn(Column("b", 50));
    fList.ColumnAt(0)->SetWidth(70);
    fList.ColumnAt(0)->SetWidth(70);
    fList.ColumnAt(0)->SetWidth(1);
    ASSERT_EQ(fList.widths.size(), 2u);
    EXPECT_EQ(fList.widths[0], (std::pair<int32, float>(0, 70)));
    EXPECT_EQ(fList.widths[1], (std::pair<int32, float>(0, 20)));
    EXPECT_EQ(fList.ColumnAt(1)->Begin(), 21);
}

TEST_F(ColumnListViewTest, ChangesTheDisplayOrder)
{
    for (const char* label : {"a", "b", "c"}) {
        fList.AddColumn(Column(label, 50));
    }
    const int32 order[] = {2, 0, 1};
    EXPECT_TRUE(fList.SetDisplayOrder(order));
    EXPECT_EQ(fList.ColumnAt(2)->Begin(), 0);
    EXPECT_EQ(fList.ColumnAt(1)->Begin(), 102);
    const std::unique_ptr<int32[]> shown(fList.DisplayOrder());
    EXPECT_EQ(shown[0], 2);
    EXPECT_EQ(shown[1], 0);
    EXPECT_EQ(shown[2], 1);
}

TEST_F(ColumnListViewTest, KeepsWhatItAcceptedOfAWrongOrder)
{
    for (const char* label : {"a", "b", "c"}) {
        fList.AddColumn(Column(label, 50));
    }
    const int32 repeated[] = {1, 1, 0};
    EXPECT_FALSE(fList.SetDisplayOrder(repeated));
    EXPECT_EQ(fList.CountDisplayed(), 1);
    const int32 outside[] = {0, 2, 3};
    EXPECT_FALSE(fList.SetDisplayOrder(outside));
    EXPECT_EQ(fList.CountDisplayed(), 2);
}

TEST_F(ColumnListViewTest, RemovesAColumnWithItsSortKey)
{
    CLVColumn* first = Column("a", 50);
    fList.AddColumn(first);
    fList.AddColumn(Column("b", 50));
    fList.SetSortKey(0);
    EXPECT_TRUE(fList.RemoveColumn(first));
    EXPECT_FALSE(fList.RemoveColumn(first));
    EXPECT_EQ(fList.Keys(), "");
    EXPECT_EQ(fList.CountColumns(), 1);
    EXPECT_EQ(fList.ColumnAt(0)->Begin(), 0);
    EXPECT_EQ(first->Parent(), nullptr);
    delete first;
}

TEST_F(ColumnListViewTest, AddsAndRemovesRows)
{
    fList.AddColumn(Column("a", 50));
    TestRow* first = fList.Add("one");
    fList.Add("two");
    TestRow between("between");
    EXPECT_TRUE(fList.AddItem(&between, 1));
    EXPECT_EQ(fList.Names(), "one between two ");
    EXPECT_TRUE(fList.RemoveItem(&between));
    EXPECT_FALSE(fList.RemoveItem(&between));
    EXPECT_EQ(fList.RemoveItem(int32(0)), first);
    EXPECT_EQ(fList.Names(), "two ");
    fList.MakeEmpty();
    EXPECT_EQ(fList.Names(), "");
    EXPECT_EQ(fList.DataHeight(), 0);
}

TEST_F(ColumnListViewTest, GivesStripAndRowsTheRequestedSizeTogether)
{
    const float strip = static_cast<float>(fList.GetHdrHeight());
    EXPECT_EQ(strip, 19);
    fList.ResizeTo(400, 300);
    EXPECT_EQ(fList.HeaderStrip()->Frame(), BRect(0, 0, 400, strip));
    EXPECT_EQ(fList.Frame(), BRect(0, strip + 1, 400, 300));
    EXPECT_EQ(fList.Container()->Bounds(), BRect(0, 0, 415, 315));
    EXPECT_EQ(fList.Container()->ScrollBar(B_VERTICAL)->Frame().left, 401);
    EXPECT_EQ(fList.Container()->ScrollBar(B_HORIZONTAL)->Frame().top, 301);
}

TEST_F(ColumnListViewTest, SurvivesSizesBelowZero)
{
    fList.ResizeTo(-50, -50);
    EXPECT_GE(fList.Frame().Width(), 0);
    EXPECT_GE(fList.Frame().Height(), 0);
}

TEST_F(ColumnListViewTest, DrawsEveryCellAndTheRestBehindThem)
{
    fList.AddColumn(Column("a", 50));
    fList.AddColumn(Column("b", 60));
    TestRow* row = fList.Add("one");
    row->DrawItem(&fList, BRect(0, 21, 299, 41), true);
    ASSERT_EQ(row->cells.size(), 3u);
    EXPECT_EQ(row->cells[0].frame, BRect(0, 21, 50, 41));
    EXPECT_EQ(row->cells[1].frame, BRect(51, 21, 111, 41));
    EXPECT_EQ(row->cells[2].column, -1);
    EXPECT_EQ(row->cells[2].frame.left, 112);
}

} // namespace
