#include "ListViewFixture.h"

#include <algorithm>
#include <set>

// A shown list whose rows change.

namespace {

using namespace kits::testing;

class ListViewRowsTest : public ListViewFixture
{
};

TEST_F(ListViewRowsTest, ScrollBarFollowsTheRows)
{
    AddListView();
    Show();
    BScrollBar* bar = fScroller->ScrollBar(B_VERTICAL);
    float min = -1;
    float max = -1;

    AddRows(100);
    Locked([&] {
        bar->GetRange(&min, &max);
        return 0;
    });
    EXPECT_EQ(min, 0);
    EXPECT_EQ(max, Locked([this] { return fList->ItemFrame(99).bottom - 159; }));

    Locked([this, max] {
        fList->ScrollTo(BPoint(0, max));
        return fList->RemoveItems(5, 95);
    });
    Locked([&] {
        bar->GetRange(&min, &max);
        return 0;
    });
    EXPECT_EQ(max, 0);
    EXPECT_EQ(Top(), 0);
}

TEST_F(ListViewRowsTest, DrawsVisibleRowsOnly)
{
    AddListView();
    AddRows(1000);
    Show();
    TakePicture(fWindow);

    const std::set<const BListItem*> drawn =
        Locked([this] { return std::set<const BListItem*>(fDrawn.begin(), fDrawn.end()); });

    EXPECT_GE(drawn.size(), 9u);
    EXPECT_LE(drawn.size(), 13u);
}

TEST_F(ListViewRowsTest, ChangingOneRowsMarkDrawsThatRow)
{
    AddListView();
    AddRows(20);
    Show();
    TakePicture(fWindow);
    Locked([this] {
        fDrawn.clear();
        fList->Select(4);
        return 0;
    });
    TakePicture(fWindow);

    const auto drawn = Locked([this] { return fDrawn; });

    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0], fItems[4].get());
}

TEST_F(ListViewRowsTest, AddingARowUpdatesThatRowAlone)
{
    AddListView();
    AddRows(500);
    Show();
    const int32 before = Locked([this] { return fUpdates; });

    AddRows(1);

    EXPECT_EQ(Locked([this] { return fUpdates; }) - before, 1);
}

TEST_F(ListViewRowsTest, HigherRowMovesTheOnesBelow)
{
    AddListView();
    AddRows(10);
    Show();
    const float before = Locked([this] { return fList->ItemFrame(5).top; });

    Locked([this] {
        fItems[2]->SetHeight(fItems[2]->Height() + 7);
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fList->ItemFrame(5).top; }), before + 7);
    EXPECT_EQ(Locked([this, before] { return fList->IndexOf(BPoint(3, before + 7)); }), 5);
}

TEST_F(ListViewRowsTest, SelectionStaysWithItsRowsWhenSorting)
{
    AddListView();
    AddRows(10);
    Show();
    Locked([this] {
        fList->Select(2);
        fList->SortItems([](const void* a, const void* b) {
            const auto* left = *static_cast<const BStringItem* const*>(a);
            const auto* right = *static_cast<const BStringItem* const*>(b);
            return std::string(right->Text()).compare(left->Text());
        });
        return 0;
    });

    EXPECT_EQ(Selected(), Rows({7}));
}

TEST_F(ListViewRowsTest, RemovedRowsAreNotTouchedAgain)
{
    AddListView();
    AddRows(5);
    Show();
    Locked([this] {
        fList->Select(1);
        fList->MakeEmpty();
        return 0;
    });
    fItems.clear();

    EXPECT_EQ(Selected(), Rows());
    EXPECT_EQ(Locked([this] { return fList->CountItems(); }), 0);
    TakePicture(fWindow);
}

TEST_F(ListViewRowsTest, IndicesOutsideAreRefused)
{
    AddListView();
    AddRows(3);
    Show();

    EXPECT_FALSE(Locked([this] { return fList->AddItem(fItems[0].get(), 7); }));
    EXPECT_EQ(Locked([this] { return fList->RemoveItem(int32(3)); }), nullptr);
    EXPECT_FALSE(Locked([this] { return fList->RemoveItems(-1, 2); }));
    EXPECT_FALSE(Locked([this] { return fList->SwapItems(0, 3); }));
    EXPECT_FALSE(Locked([this] { return fList->ItemFrame(3).IsValid(); }));
    EXPECT_EQ(Locked([this] { return fList->IndexOf(BPoint(0, 2000)); }), -1);
    EXPECT_EQ(Locked([this] { return fList->CountItems(); }), 3);
}

TEST_F(ListViewRowsTest, ItemsAreSetTogether)
{
    AddListView();
    AddRows(30);
    Show();
    Locked([this] {
        fList->Select(7);
        return 0;
    });
    TakePicture(fWindow);
    // The fourth goes, the last two change places.
    Locked([this] {
        BList items;
        for (int32 i = 0; i < 30; i++) {
            items.AddItem(fList->ItemAt(i));
        }
        items.RemoveItem(int32{3});
        items.SwapItems(27, 28);
        fDrawn.clear();
        fList->SetItems(&items);
        return 0;
    });
    EXPECT_EQ(Selected(), std::vector<int32>{6});
    EXPECT_EQ(Locked([this] { return fList->CountItems(); }), 29);
    TakePicture(fWindow);
    const auto drawn = Locked([this] { return fDrawn; });
    const auto isDrawn = [&](int32 index) {
        const BListItem* item = Locked([&] { return fList->ItemAt(index); });
        return std::find(drawn.begin(), drawn.end(), item) != drawn.end();
    };
    EXPECT_FALSE(isDrawn(2)); // what stands before the change stays as it is
    EXPECT_TRUE(isDrawn(3));

    // One that was selected and goes is not any more.
    const BListItem* selected = Locked([this] {
        BList items;
        for (int32 i = 0; i < 29; i++) {
            items.AddItem(fList->ItemAt(i));
        }
        auto* removed = static_cast<BListItem*>(items.RemoveItem(int32{6}));
        fList->SetItems(&items);
        return removed;
    });
    EXPECT_FALSE(selected->IsSelected());
    EXPECT_TRUE(Selected().empty());
}

TEST_F(ListViewRowsTest, ItemsAreRearranged)
{
    AddListView();
    AddRows(30);
    Show();
    for (const bool isHigher : {false, true}) {
        std::vector<BListItem*> reversed;
        const BListItem* selected = Locked([&] {
            if (isHigher) {
                fList->ItemAt(2)->SetHeight(40);
            }
            fList->Select(7);
            BList items;
            for (int32 i = 29; i >= 0; i--) {
                reversed.push_back(fList->ItemAt(i));
                items.AddItem(reversed.back());
            }
            fUpdates = 0;
            const BListItem* chosen = fList->ItemAt(7);
            fList->SetItems(&items);
            return chosen;
        });
        EXPECT_EQ(Selected(), std::vector<int32>{22});
        EXPECT_TRUE(selected->IsSelected());
        EXPECT_EQ(fUpdates, 0);
        Locked([&] {
            float top = 0;
            for (int32 i = 0; i < 30; i++) {
                EXPECT_EQ(fList->ItemAt(i), reversed[static_cast<size_t>(i)]);
                EXPECT_EQ(fList->ItemFrame(i).top, top);
                top += fList->ItemAt(i)->Height() + 1;
            }
            return 0;
        });
    }
}

TEST_F(ListViewRowsTest, AsManyOtherItemsTakeTheirPlaces)
{
    AddListView();
    AddRows(3);
    Show();
    auto other = std::make_unique<CountingItem>("other", fDrawn, fUpdates);
    other->SetHeight(40);
    const BListItem* gone = Locked([&] {
        fList->Select(0);
        BList items;
        items.AddItem(other.get());
        items.AddItem(fList->ItemAt(1));
        items.AddItem(fList->ItemAt(2));
        const BListItem* first = fList->ItemAt(0);
        fUpdates = 0;
        fList->SetItems(&items);
        return first;
    });
    EXPECT_EQ(fUpdates, 1);
    EXPECT_FALSE(gone->IsSelected());
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(Locked([&] { return fList->ItemFrame(1).top; }), other->Height() + 1);
    Locked([&] { return fList->RemoveItem(other.get()); });
}

} // namespace
