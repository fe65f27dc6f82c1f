#include "ListViewFixture.h"

// What a person does with a list.

namespace {

using namespace kits::testing;

class ListViewTest : public ListViewFixture
{
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

TEST_F(ListViewTest, WheelScrolls)
{
    AddListView();
    AddRows(100);
    Show();

    TurnWheel(fList, BPoint(30, 30), 2);

    EXPECT_GT(Top(), 0);
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

} // namespace
