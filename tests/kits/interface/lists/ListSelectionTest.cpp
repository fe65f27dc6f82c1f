#include "interface/lists/ListSelection.h"

#include <InterfaceDefs.h>
#include <List.h>
#include <ListItem.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

class ListSelectionTest : public ::testing::Test
{
protected:
    ListSelectionTest() { fSelection.SetMultiple(true); }

    void AddRows(int32 count)
    {
        for (int32 i = 0; i < count; i++) {
            fItems.push_back(std::make_unique<BStringItem>("row"));
            fRows.AddItem(fItems.back().get());
        }
        fSelection.Inserted(fRows.CountItems() - count, count);
    }

    std::vector<int32> Selected() const
    {
        std::vector<int32> rows;
        for (int32 n = 0; fSelection.Nth(n) >= 0; n++) {
            rows.push_back(fSelection.Nth(n));
        }
        return rows;
    }

    using Rows = std::vector<int32>;

    std::vector<std::unique_ptr<BStringItem>> fItems;
    BList fRows;
    kits::ListSelection fSelection{fRows};
};

TEST_F(ListSelectionTest, ClickSelectsOneRowAlone)
{
    AddRows(5);
    fSelection.Select(0, 3, false);

    fSelection.Press(4, 0);

    EXPECT_EQ(Selected(), Rows({4}));
}

TEST_F(ListSelectionTest, ClickBelowTheRowsDeselects)
{
    AddRows(3);
    fSelection.Press(1, 0);

    const auto change = fSelection.Press(-1, 0);

    EXPECT_EQ(Selected(), Rows());
    EXPECT_EQ(change.first, 1);
    EXPECT_EQ(change.last, 1);
}

TEST_F(ListSelectionTest, ShiftClickSelectsFromTheAnchor)
{
    AddRows(8);
    fSelection.Press(3, 0);

    fSelection.Press(6, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({3, 4, 5, 6}));

    fSelection.Press(1, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({1, 2, 3}));
}

TEST_F(ListSelectionTest, CommandClickTogglesOneRow)
{
    AddRows(5);
    fSelection.Press(1, 0);

    fSelection.Press(3, B_COMMAND_KEY);
    EXPECT_EQ(Selected(), Rows({1, 3}));

    fSelection.Press(1, B_OPTION_KEY);
    EXPECT_EQ(Selected(), Rows({3}));
}

TEST_F(ListSelectionTest, OneRowListIgnoresTheModifiers)
{
    fSelection.SetMultiple(false);
    AddRows(5);
    fSelection.Press(1, 0);

    fSelection.Press(3, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({3}));

    fSelection.Press(2, B_COMMAND_KEY);
    EXPECT_EQ(Selected(), Rows({2}));
}

TEST_F(ListSelectionTest, PressOnOneOfSeveralWaitsForTheRelease)
{
    AddRows(5);
    fSelection.Select(1, 3, false);

    EXPECT_FALSE(fSelection.Press(2, 0));
    EXPECT_EQ(Selected(), Rows({1, 2, 3}));

    EXPECT_TRUE(fSelection.Release(2));
    EXPECT_EQ(Selected(), Rows({2}));
}

TEST_F(ListSelectionTest, SweepSelectsFromTheAnchorAndShrinksAgain)
{
    AddRows(6);
    fSelection.Press(2, 0);

    fSelection.Sweep(5);
    EXPECT_EQ(Selected(), Rows({2, 3, 4, 5}));

    fSelection.Sweep(3);
    EXPECT_EQ(Selected(), Rows({2, 3}));
}

TEST_F(ListSelectionTest, PersonSelectsNoDisabledRow)
{
    AddRows(5);
    fItems[2]->SetEnabled(false);

    fSelection.Press(2, 0);
    EXPECT_EQ(Selected(), Rows());

    fSelection.Press(1, 0);
    fSelection.Press(3, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({1, 3}));
}

TEST_F(ListSelectionTest, MarksMoveWithTheirRows)
{
    AddRows(5);
    fSelection.Press(2, 0);
    fSelection.Press(4, B_COMMAND_KEY);

    auto added = std::make_unique<BStringItem>("new");
    fRows.AddItem(added.get(), 0);
    fSelection.Inserted(0, 1);
    EXPECT_EQ(Selected(), Rows({3, 5}));
    EXPECT_EQ(fSelection.Cursor(), 5);

    fRows.RemoveItems(0, 2);
    fSelection.Removed(0, 2);
    EXPECT_EQ(Selected(), Rows({1, 3}));
    EXPECT_EQ(fSelection.Cursor(), 3);
}

TEST_F(ListSelectionTest, RemovingSelectedRowsForgetsThem)
{
    AddRows(5);
    fSelection.Select(3, 4, false);

    fRows.RemoveItems(2, 3);
    fSelection.Removed(2, 3);

    EXPECT_EQ(Selected(), Rows());
    EXPECT_EQ(fSelection.Cursor(), -1);
}

TEST_F(ListSelectionTest, RowsThatComeSelectedAreKnown)
{
    AddRows(2);
    auto added = std::make_unique<BStringItem>("new");
    added->Select();
    fRows.AddItem(added.get());

    fSelection.Inserted(2, 1);

    EXPECT_EQ(Selected(), Rows({2}));
}

TEST_F(ListSelectionTest, SelectBringsTheRangeInside)
{
    AddRows(4);

    fSelection.Select(2, 99, false);
    EXPECT_EQ(Selected(), Rows({2, 3}));

    EXPECT_FALSE(fSelection.Select(4, 9, false));
    EXPECT_EQ(Selected(), Rows({2, 3}));
}

TEST_F(ListSelectionTest, ChangeCoversOnlyRowsWhoseMarkChanged)
{
    AddRows(10);
    fSelection.Select(3, 6, false);

    const auto change = fSelection.Select(5, 8, false);

    EXPECT_EQ(change.first, 3);
    EXPECT_EQ(change.last, 8);
    EXPECT_FALSE(fSelection.Select(5, 8, false));
}

} // namespace
