#include "ApplicationEnvironment.h"

#include <ListView.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// Lists without a window: their rows, messages and selection by calls.

namespace {

class Counting : public BListView
{
public:
    using BListView::BListView;
    void SelectionChanged() override { changes++; }
    int32 changes = 0;
};

class ListItemsTest : public ::testing::Test
{
protected:
    ListItemsTest() : fList(BRect(0, 0, 99, 99), "list", B_MULTIPLE_SELECTION_LIST)
    {
        for (const char* text : {"a", "b", "c", "d", "e"}) {
            fRows.push_back(std::make_unique<BStringItem>(text));
            fList.AddItem(fRows.back().get());
        }
    }

    std::string Order()
    {
        std::string order;
        for (int32 i = 0; i < fList.CountItems(); i++) {
            const auto* row = static_cast<BStringItem*>(fList.ItemAt(i));
            order += fList.IsItemSelected(i) ? std::string("(") + row->Text() + ")" : row->Text();
        }
        return order;
    }

    std::vector<std::unique_ptr<BStringItem>> fRows;
    Counting fList;
};

TEST_F(ListItemsTest, KnowsItsEnds)
{
    EXPECT_EQ(fList.FirstItem(), fRows[0].get());
    EXPECT_EQ(fList.LastItem(), fRows[4].get());
    EXPECT_EQ(fList.Items()[1], fRows[1].get());

    fList.MakeEmpty();

    EXPECT_EQ(fList.FirstItem(), nullptr);
    EXPECT_EQ(fList.LastItem(), nullptr);
}

TEST_F(ListItemsTest, MovesRowsWithTheirSelection)
{
    fList.Select(1);

    EXPECT_TRUE(fList.MoveItem(1, 3));
    EXPECT_EQ(Order(), "acd(b)e");
    EXPECT_EQ(fList.CurrentSelection(), 3);
    EXPECT_FALSE(fList.MoveItem(5, 0));
    EXPECT_FALSE(fList.MoveItem(0, -1));
    EXPECT_EQ(Order(), "acd(b)e");
}

TEST_F(ListItemsTest, ReplacedRowIsTheCallers)
{
    BStringItem other("X");

    EXPECT_TRUE(fList.ReplaceItem(2, &other));
    EXPECT_EQ(Order(), "abXde");
    EXPECT_FALSE(fList.HasItem(fRows[2].get()));
    EXPECT_FALSE(fList.ReplaceItem(5, fRows[2].get()));
    EXPECT_FALSE(fList.ReplaceItem(0, nullptr));

    fList.MakeEmpty();
}

TEST_F(ListItemsTest, DeselectsOneOrAllAndTellsChangesOnly)
{
    fList.Select(1, 3);
    fList.changes = 0;

    fList.Deselect(2);
    EXPECT_EQ(Order(), "a(b)c(d)e");
    EXPECT_EQ(fList.changes, 1);
    fList.Deselect(2);
    fList.Deselect(9);
    EXPECT_EQ(fList.changes, 1);

    fList.DeselectAll();
    EXPECT_EQ(Order(), "abcde");
    EXPECT_EQ(fList.changes, 2);
    fList.DeselectAll();
    EXPECT_EQ(fList.changes, 2);
}

TEST_F(ListItemsTest, SingleSelectionKeepsTheFirstSelectedRow)
{
    fList.Select(1, 3);

    fList.SetListType(B_SINGLE_SELECTION_LIST);

    EXPECT_EQ(fList.ListType(), B_SINGLE_SELECTION_LIST);
    EXPECT_EQ(Order(), "a(b)cde");
    fList.Select(4, true);
    EXPECT_EQ(Order(), "abcd(e)");
}

TEST_F(ListItemsTest, CallsAFunctionForRowsUntilItIsContent)
{
    static int sCalls;
    sCalls = 0;
    fList.DoForEach([](BListItem*) { return ++sCalls == 3; });
    EXPECT_EQ(sCalls, 3);

    std::string seen;
    fList.DoForEach(
        [](BListItem* row, void* data) {
            *static_cast<std::string*>(data) += static_cast<BStringItem*>(row)->Text();
            return false;
        },
        &seen);
    EXPECT_EQ(seen, "abcde");
}

TEST_F(ListItemsTest, LendsItsMessages)
{
    EXPECT_EQ(fList.InvocationMessage(), nullptr);
    EXPECT_EQ(fList.InvocationCommand(), 0u);
    EXPECT_EQ(fList.SelectionMessage(), nullptr);
    EXPECT_EQ(fList.SelectionCommand(), 0u);

    auto* invoked = new BMessage('invk');
    auto* selected = new BMessage('selc');
    fList.SetInvocationMessage(invoked);
    fList.SetSelectionMessage(selected);

    EXPECT_EQ(fList.InvocationMessage(), invoked);
    EXPECT_EQ(fList.InvocationCommand(), uint32('invk'));
    EXPECT_EQ(fList.SelectionMessage(), selected);
    EXPECT_EQ(fList.SelectionCommand(), uint32('selc'));
}

} // namespace
