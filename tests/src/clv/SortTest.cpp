#include "TestRow.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

class SortTest : public ::testing::Test
{
protected:
    SortTest()
    {
        fList.AddColumn(new CLVColumn("a", 50, CLV_SORT_KEYABLE));
        fList.AddColumn(new CLVColumn("b", 50, CLV_SORT_KEYABLE));
        fList.AddColumn(new CLVColumn("c", 50, 0));
    }

    void AddRow(const char* name, int first, int second)
    {
        TestRow* row = fList.Add(name);
        row->values[0] = first;
        row->values[1] = second;
    }

    void AddThree()
    {
        AddRow("x", 2, 1);
        AddRow("y", 1, 2);
        AddRow("z", 1, 1);
        fList.SetSortFunction(&CompareValues);
    }

    TestList fList;
};

TEST_F(SortTest, SortsByOneKey)
{
    AddThree();
    fList.SetSortKey(1);
    fList.AddSortKey(0);
    EXPECT_EQ(fList.Names(), "z x y ");
    EXPECT_EQ(fList.Keys(), "1a 0a ");
}

TEST_F(SortTest, SortsDescending)
{
    AddThree();
    fList.SetSortKey(0);
    fList.AddSortKey(1);
    EXPECT_EQ(fList.Names(), "z y x ");
    fList.SetSortMode(0, Descending);
    EXPECT_EQ(fList.Names(), "x z y ");
}

TEST_F(SortTest, LeavesRowsInPlaceWithoutACompareFunction)
{
    AddThree();
    fList.SetSortFunction(nullptr);
    fList.SetSortKey(0);
    EXPECT_EQ(fList.Names(), "x y z ");
    EXPECT_EQ(fList.Keys(), "0a ");
}

TEST_F(SortTest, IgnoresColumnsThatCannotBeSorted)
{
    fList.SetSortKey(0);
    fList.SetSortKey(2);
    fList.AddSortKey(2);
    fList.SetSortMode(2, Ascending);
    fList.AddSortKey(-1);
    fList.AddSortKey(9);
    EXPECT_EQ(fList.Keys(), "0a ");
    EXPECT_EQ(fList.ColumnAt(2)->SortMode(), NoSort);
}

TEST_F(SortTest, ForgetsAllKeysForNoColumn)
{
    fList.SetSortKey(0);
    fList.SetSortKey(-1);
    EXPECT_EQ(fList.Keys(), "");
}

TEST_F(SortTest, CyclesThroughThreeModes)
{
    fList.SetSortKey(0);
    EXPECT_EQ(fList.Keys(), "0a ");
    fList.ReverseSortMode(0);
    EXPECT_EQ(fList.Keys(), "0d ");
    fList.ReverseSortMode(0);
    EXPECT_EQ(fList.Keys(), "");
    EXPECT_EQ(fList.ColumnAt(0)->SortMode(), NoSort);
    fList.ReverseSortMode(0);
    EXPECT_EQ(fList.ColumnAt(0)->SortMode(), Ascending);
    EXPECT_EQ(fList.Keys(), "");
}

TEST_F(SortTest, KeepsTheOtherKeysWhenOneIsAdded)
{
    fList.SetSortKey(1);
    fList.ReverseSortMode(1);
    fList.AddSortKey(0);
    fList.AddSortKey(0);
    EXPECT_EQ(fList.Keys(), "1d 0a ");
}

TEST_F(SortTest, RestoresAWholeSorting)
{
    AddThree();
    fList.SetSortKey(0);
    const int32 keys[] = {1, 0};
    const CLVSortMode modes[] = {Descending, Ascending};
    fList.SetSorting(2, keys, modes);
    EXPECT_EQ(fList.Keys(), "1d 0a ");
    EXPECT_EQ(fList.Names(), "y z x ");
}

} // namespace
