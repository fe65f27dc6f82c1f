#include "ControlWindow.h"

#include <ListView.h>
#include <ScrollView.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace kits::testing;

class CountingItem : public BStringItem
{
public:
    CountingItem(const char* text, std::vector<const BListItem*>& drawn, int32& updates)
        : BStringItem(text), fDrawn(drawn), fUpdates(updates)
    {
    }

    void DrawItem(BView* owner, BRect frame, bool complete) override
    {
        fDrawn.push_back(this);
        BStringItem::DrawItem(owner, frame, complete);
    }

    void Update(BView* owner, const BFont* font) override
    {
        fUpdates++;
        BStringItem::Update(owner, font);
    }

private:
    std::vector<const BListItem*>& fDrawn;
    int32& fUpdates;
};

class ListViewTest : public ControlTest
{
protected:
    // A list of 100 x 160 units in a scroll view; ten rows of 16 units and a little are seen.
    BListView* AddListView(list_view_type type = B_MULTIPLE_SELECTION_LIST)
    {
        fList = new BListView(BRect(10, 10, 109, 169), "list", type);
        fList->SetInvocationMessage(new BMessage('tesi'));
        fScroller = Add(new BScrollView("scroller", fList, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false,
                                        true, B_FANCY_BORDER));
        return fList;
    }

    void AddRows(int32 count)
    {
        BList added;
        for (int32 i = 0; i < count; i++) {
            fItems.push_back(std::make_unique<CountingItem>(std::to_string(fItems.size()).c_str(),
                                                            fDrawn, fUpdates));
            added.AddItem(fItems.back().get());
        }
        fWindow->Lock();
        fList->AddList(&added);
        fWindow->Unlock();
    }

    std::vector<int32> Selected()
    {
        return Locked([this] {
            std::vector<int32> rows;
            for (int32 n = 0; fList->CurrentSelection(n) >= 0; n++) {
                rows.push_back(fList->CurrentSelection(n));
            }
            return rows;
        });
    }

    BPoint MiddleOf(int32 row)
    {
        return Locked([this, row] {
            const BRect frame = fList->ItemFrame(row);
            return BPoint(30, (frame.top + frame.bottom) / 2);
        });
    }

    float Top()
    {
        return Locked([this] { return fList->Bounds().top; });
    }

    using Rows = std::vector<int32>;

    BListView* fList = nullptr;       // the window's
    BScrollView* fScroller = nullptr; // the window's
    std::vector<std::unique_ptr<CountingItem>> fItems;
    std::vector<const BListItem*> fDrawn;
    int32 fUpdates = 0;
};

TEST_F(ListViewTest, ClicksSelectAsTheModifiersSay)
{
    AddListView();
    AddRows(8);
    Show();

    Click(fList, MiddleOf(2));
    EXPECT_EQ(Selected(), Rows({2}));

    Click(fList, MiddleOf(5), B_PRIMARY_MOUSE_BUTTON, 1, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({2, 3, 4, 5}));

    Click(fList, MiddleOf(0), B_PRIMARY_MOUSE_BUTTON, 1, B_COMMAND_KEY);
    EXPECT_EQ(Selected(), Rows({0, 2, 3, 4, 5}));

    Click(fList, BPoint(30, 155));
    EXPECT_EQ(Selected(), Rows());
}

TEST_F(ListViewTest, DoubleClickInvokesTheRow)
{
    AddListView();
    AddRows(8);
    Show();

    Click(fList, MiddleOf(3), B_PRIMARY_MOUSE_BUTTON, 2);

    const std::vector<BMessage> messages = fWindow->Messages();
    ASSERT_EQ(messages.size(), 1u);
    int32 index = -1;
    EXPECT_EQ(messages[0].what, 'tesi');
    EXPECT_EQ(messages[0].FindInt32("index", &index), B_OK);
    EXPECT_EQ(index, 3);
}

TEST_F(ListViewTest, InvocationNamesEverySelectedRow)
{
    AddListView();
    AddRows(8);
    Show();
    Focus(fList);
    Locked([this] {
        fList->Select(1, 2);
        fList->Select(6, true);
        return 0;
    });

    TypeKey(B_ENTER);

    const std::vector<BMessage> messages = fWindow->Messages();
    ASSERT_EQ(messages.size(), 1u);
    Rows named;
    int32 index = -1;
    for (int32 i = 0; messages[0].FindInt32("index", i, &index) == B_OK; i++) {
        named.push_back(index);
    }
    EXPECT_EQ(named, Rows({1, 2, 6}));
}

TEST_F(ListViewTest, SpaceInvokesAndRepeatsDoNot)
{
    AddListView();
    AddRows(3);
    Show();
    Focus(fList);
    TypeKey(B_DOWN_ARROW);

    HoldKey(B_SPACE, 5);

    EXPECT_EQ(fWindow->Messages().size(), 1u);
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScroll)
{
    AddListView();
    AddRows(50);
    Show();
    Focus(fList);

    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), Rows({0}));

    TypeKey(B_END);
    EXPECT_EQ(Selected(), Rows({49}));
    EXPECT_EQ(Top(), Locked([this] { return fList->ItemFrame(49).bottom - 159; }));

    TypeKey(B_UP_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), Rows({48, 49}));

    TypeKey(B_HOME);
    EXPECT_EQ(Selected(), Rows({0}));
    EXPECT_EQ(Top(), 0);
}

TEST_F(ListViewTest, PageKeysMoveByWhatIsSeen)
{
    AddListView();
    AddRows(50);
    Show();
    Focus(fList);
    TypeKey(B_HOME);

    TypeKey(B_PAGE_DOWN);
    const Rows once = Selected();
    ASSERT_EQ(once.size(), 1u);
    EXPECT_GE(once[0], 7);
    EXPECT_LE(once[0], 10);

    TypeKey(B_PAGE_UP);
    EXPECT_LE(Selected().at(0), 1);

    for (int32 i = 0; i < 12; i++) {
        TypeKey(B_PAGE_DOWN);
    }
    EXPECT_EQ(Selected(), Rows({49}));
}

TEST_F(ListViewTest, ArrowsStepOverDisabledRows)
{
    AddListView();
    AddRows(4);
    fItems[1]->SetEnabled(false);
    fItems[3]->SetEnabled(false);
    Show();
    Focus(fList);

    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), Rows({2}));

    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), Rows({2}));
}

TEST_F(ListViewTest, DragSweepsTheSelectionAndScrollsOutside)
{
    AddListView();
    AddRows(60);
    Show();

    PressMouse(fList, MiddleOf(2));
    MoveMouse(fList, MiddleOf(5));
    EXPECT_EQ(Selected(), Rows({2, 3, 4, 5}));

    MoveMouseAt(Locked([this] { return fList->ConvertToScreen(BPoint(30, 200)); }));
    EXPECT_TRUE(WaitFor([this] { return Top() > 100; }));
    ReleaseMouse(fList, MiddleOf(5));
    EXPECT_EQ(Selected().front(), 2);
}

TEST_F(ListViewTest, ScrollBarFollowsTheRows)
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

TEST_F(ListViewTest, WheelScrolls)
{
    AddListView();
    AddRows(100);
    Show();

    TurnWheel(fList, BPoint(30, 30), 2);

    EXPECT_GT(Top(), 0);
}

TEST_F(ListViewTest, DrawsVisibleRowsOnly)
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

TEST_F(ListViewTest, ChangingOneRowsMarkDrawsThatRow)
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

TEST_F(ListViewTest, AddingARowUpdatesThatRowAlone)
{
    AddListView();
    AddRows(500);
    Show();
    const int32 before = Locked([this] { return fUpdates; });

    AddRows(1);

    EXPECT_EQ(Locked([this] { return fUpdates; }) - before, 1);
}

TEST_F(ListViewTest, HigherRowMovesTheOnesBelow)
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

TEST_F(ListViewTest, SelectionStaysWithItsRowsWhenSorting)
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

TEST_F(ListViewTest, SelectionMessageIsSentForEveryChange)
{
    AddListView();
    fList->SetSelectionMessage(new BMessage('tess'));
    AddRows(5);
    Show();

    Click(fList, MiddleOf(1));
    Click(fList, MiddleOf(3));

    EXPECT_EQ(fWindow->Messages().size(), 2u);
}

TEST_F(ListViewTest, RemovedRowsAreNotTouchedAgain)
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

TEST_F(ListViewTest, IndicesOutsideAreRefused)
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

} // namespace
