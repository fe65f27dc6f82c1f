#include "ApplicationEnvironment.h"

#include <ListView.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
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

TEST_F(ListItemsTest, SelectionIsFoundHoweverRowsMove)
{
    std::mt19937 random(7);
    const auto any = [&random] {
        return static_cast<int32>(random() % 5);
    };
    for (int step = 0; step < 400; step++) {
        if (step % 7 == 0) {
            fList.Select(any(), any() < 4);
        }
        std::vector<BListItem*> order;
        for (int32 i = 0; i < 5; i++) {
            order.push_back(fList.ItemAt(i));
        }
        const int32 from = any();
        const int32 to = any();
        BListItem* moved = order[static_cast<size_t>(from)];
        order.erase(order.begin() + from);
        order.insert(order.begin() + to, moved);

        ASSERT_TRUE(fList.MoveItem(from, to));

        std::vector<int32> selected;
        for (int32 i = 0; i < 5; i++) {
            ASSERT_EQ(fList.ItemAt(i), order[static_cast<size_t>(i)]);
            if (fList.IsItemSelected(i)) {
                selected.push_back(i);
            }
        }
        for (size_t n = 0; n <= selected.size(); n++) {
            ASSERT_EQ(fList.CurrentSelection(static_cast<int32>(n)),
                      n < selected.size() ? selected[n] : -1);
        }
    }
    EXPECT_FALSE(fList.MoveItem(0, 5));
    EXPECT_FALSE(fList.MoveItem(-1, 2));
}

TEST_F(ListItemsTest, MovedRowTakesItsHeightAlong)
{
    fList.MakeEmpty();
    BList rows;
    for (int32 i = 0; i < 5; i++) {
        fRows[static_cast<size_t>(i)]->SetHeight(static_cast<float>(10 * (i + 1)));
        rows.AddItem(fRows[static_cast<size_t>(i)].get());
    }
    fList.AddList(&rows);

    fList.MoveItem(4, 1); // heights 10 50 20 30 40 now

    EXPECT_EQ(fList.ItemFrame(1).top, 11);
    EXPECT_EQ(fList.ItemFrame(1).Height(), 50);
    EXPECT_EQ(fList.ItemFrame(2).top, 62);
    EXPECT_EQ(fList.ItemFrame(4).Height(), 40);

    fList.MoveItem(1, 3); // 10 20 30 50 40

    EXPECT_EQ(fList.ItemFrame(3).top, 63);
    EXPECT_EQ(fList.ItemFrame(3).Height(), 50);
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
