#include <List.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

class ListTest : public ::testing::Test
{
protected:
    void* Item(int number) { return &fNumbers[number]; }

    void Fill(int count)
    {
        for (int i = 0; i < count; i++) {
            fList.AddItem(Item(i));
        }
    }

    std::vector<int> Content() const
    {
        std::vector<int> numbers;
        for (int32 i = 0; i < fList.CountItems(); i++) {
            numbers.push_back(*static_cast<int*>(fList.ItemAt(i)));
        }
        return numbers;
    }

    int fNumbers[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    BList fList{2};
};

using Numbers = std::vector<int>;

int CompareDown(const void* a, const void* b)
{
    return **static_cast<int* const*>(b) - **static_cast<int* const*>(a);
}

} // namespace

TEST_F(ListTest, KeepsTheOrderOfAdding)
{
    Fill(5);

    EXPECT_EQ(Content(), (Numbers{0, 1, 2, 3, 4}));
    EXPECT_EQ(fList.FirstItem(), Item(0));
    EXPECT_EQ(fList.LastItem(), Item(4));
    EXPECT_EQ(static_cast<void**>(fList.Items())[2], Item(2));
}

TEST_F(ListTest, YieldsNullOutsideOfItsRange)
{
    EXPECT_EQ(fList.FirstItem(), nullptr);
    EXPECT_EQ(fList.LastItem(), nullptr);
    Fill(1);
    EXPECT_EQ(fList.ItemAt(-1), nullptr);
    EXPECT_EQ(fList.ItemAt(1), nullptr);
}

TEST_F(ListTest, AddsAtAnIndexUpToItsEnd)
{
    Fill(2);

    EXPECT_TRUE(fList.AddItem(Item(5), 0));
    EXPECT_TRUE(fList.AddItem(Item(6), 3));
    EXPECT_FALSE(fList.AddItem(Item(7), 5));
    EXPECT_FALSE(fList.AddItem(Item(7), -1));

    EXPECT_EQ(Content(), (Numbers{5, 0, 1, 6}));
}

TEST_F(ListTest, AddsListsAndItself)
{
    BList other;
    EXPECT_FALSE(fList.AddList(&other));
    EXPECT_FALSE(fList.AddList(nullptr));
    other.AddItem(Item(8));
    other.AddItem(Item(9));
    Fill(3);

    EXPECT_TRUE(fList.AddList(&other, 1));
    EXPECT_EQ(Content(), (Numbers{0, 8, 9, 1, 2}));
    EXPECT_TRUE(fList.AddList(&fList, 2));
    EXPECT_EQ(Content(), (Numbers{0, 8, 0, 8, 9, 1, 2, 9, 1, 2}));
}

TEST_F(ListTest, RemovesByIndexAndByItem)
{
    Fill(6);

    EXPECT_EQ(fList.RemoveItem(int32{2}), Item(2));
    EXPECT_EQ(fList.RemoveItem(int32{9}), nullptr);
    EXPECT_TRUE(fList.RemoveItem(Item(4)));
    EXPECT_FALSE(fList.RemoveItem(Item(4)));
    EXPECT_EQ(Content(), (Numbers{0, 1, 3, 5}));

    EXPECT_TRUE(fList.RemoveItems(1, 100));
    EXPECT_FALSE(fList.RemoveItems(1, 1));
    EXPECT_EQ(Content(), Numbers{0});
}

TEST_F(ListTest, GivesMemoryBackAndStaysWhole)
{
    for (int i = 0; i < 10000; i++) {
        fList.AddItem(Item(i % 10));
    }
    fList.RemoveItems(5, 9995);
    EXPECT_EQ(Content(), (Numbers{0, 1, 2, 3, 4}));

    fList.MakeEmpty();
    EXPECT_TRUE(fList.IsEmpty());
    Fill(3);
    EXPECT_EQ(Content(), (Numbers{0, 1, 2}));
}

TEST_F(ListTest, ReplacesSwapsAndMoves)
{
    Fill(5);

    EXPECT_TRUE(fList.ReplaceItem(0, Item(9)));
    EXPECT_FALSE(fList.ReplaceItem(5, Item(9)));
    EXPECT_TRUE(fList.SwapItems(1, 4));
    EXPECT_FALSE(fList.SwapItems(1, 5));
    EXPECT_EQ(Content(), (Numbers{9, 4, 2, 3, 1}));

    EXPECT_TRUE(fList.MoveItem(0, 3));
    EXPECT_EQ(Content(), (Numbers{4, 2, 3, 9, 1}));
    EXPECT_TRUE(fList.MoveItem(4, 0));
    EXPECT_EQ(Content(), (Numbers{1, 4, 2, 3, 9}));
    EXPECT_FALSE(fList.MoveItem(0, 5));
}

TEST_F(ListTest, SortsByPointersToItems)
{
    Fill(5);

    fList.SortItems(CompareDown);

    EXPECT_EQ(Content(), (Numbers{4, 3, 2, 1, 0}));
}

TEST_F(ListTest, FindsTheFirstOccurrence)
{
    Fill(3);
    fList.AddItem(Item(1));

    EXPECT_EQ(fList.IndexOf(Item(1)), 1);
    EXPECT_EQ(fList.IndexOf(Item(7)), -1);
    EXPECT_TRUE(fList.HasItem(Item(2)));
    EXPECT_FALSE(fList.HasItem(Item(7)));
}

TEST_F(ListTest, StopsWhenTheFunctionSaysTrue)
{
    Fill(5);
    Numbers seen;

    fList.DoForEach(
        [](void* item, void* argument) {
            static_cast<Numbers*>(argument)->push_back(*static_cast<int*>(item));
            return *static_cast<int*>(item) == 2;
        },
        &seen);

    EXPECT_EQ(seen, (Numbers{0, 1, 2}));
}

TEST_F(ListTest, CopiesAreIndependent)
{
    Fill(2);
    BList copy(fList);
    BList assigned;
    assigned.AddItem(Item(9));

    assigned = fList;
    fList.MakeEmpty();

    EXPECT_EQ(copy.CountItems(), 2);
    EXPECT_EQ(assigned.CountItems(), 2);
    EXPECT_EQ(assigned.ItemAt(1), Item(1));
}

TEST_F(ListTest, CallsAFunctionForItemsUntilItIsContent)
{
    static int sCalls;
    sCalls = 0;
    int first = 0;
    int second = 0;
    BList list;
    list.AddItem(&first);
    list.AddItem(&second);
    EXPECT_EQ(list.ItemAtFast(1), &second);

    list.DoForEach([](void*) {
        sCalls++;
        return false;
    });
    EXPECT_EQ(sCalls, 2);

    list.DoForEach([](void*) {
        sCalls++;
        return true;
    });
    EXPECT_EQ(sCalls, 3);
}
