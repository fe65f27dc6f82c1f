#include "MenuFixture.h"

// Menus that change, or go, while they are open.

namespace {

using namespace kits::testing;

using MenuChangesTest = MenuFixture;

/// Does something when the pointer or the keys come to it or leave it.
class MovedItem : public BMenuItem
{
public:
    MovedItem(const char* label, uint32 what, std::function<void(bool)> work)
        : BMenuItem(label, new BMessage(what)), fWork(std::move(work))
    {
    }

protected:
    void Highlight(bool isHighlighted) override { fWork(isHighlighted); }

private:
    std::function<void(bool)> fWork;
};

struct Change
{
    const char* name;
    void (*apply)(BMenuBar& bar, BMenu& file);
};

class MenuChangeTest : public MenuChangesTest, public ::testing::WithParamInterface<Change>
{
};

const Change kChanges[] = {
    {"ItemBeforeRemoved",
     [](BMenuBar&, BMenu& file) {
         delete file.RemoveItem(int32{0});
     }},
    {"ItemBeforeAdded",
     [](BMenuBar&, BMenu& file) {
         file.AddItem(new BMenuItem("New", new BMessage('tesn')), 0);
     }},
    {"Renamed",
     [](BMenuBar&, BMenu& file) {
         file.ItemAt(1)->SetLabel("Move");
     }},
    {"Disabled",
     [](BMenuBar&, BMenu& file) {
         file.ItemAt(1)->SetEnabled(false);
     }},
    {"Marked",
     [](BMenuBar&, BMenu& file) {
         file.ItemAt(1)->SetMarked(true);
     }},
    {"Replaced",
     [](BMenuBar&, BMenu& file) {
         delete file.RemoveItem(int32{1});
         file.AddItem(new BMenuItem("Move", new BMessage('tesn')), 1);
     }},
    {"ItemDeleted",
     [](BMenuBar&, BMenu& file) {
         delete file.ItemAt(1);
     }},
    {"MenuDisabled",
     [](BMenuBar&, BMenu& file) {
         file.SetEnabled(false);
     }},
    {"ItemOfTheBarAdded",
     [](BMenuBar& bar, BMenu&) {
         bar.AddItem(new BMenu("View"));
     }},
    {"Emptied",
     [](BMenuBar&, BMenu& file) {
         file.RemoveItems(0, file.CountItems(), true);
     }},
};

TEST_P(MenuChangeTest, ClosesAndChoosesNothing)
{
    OpenFile();
    const BPoint place = On(fFile->ItemAt(1));
    MoveMouseAt(place);

    Do([this] { GetParam().apply(*fBar, *fFile); });
    EXPECT_FALSE(IsOpen(fFile));
    ClickAt(place);

    EXPECT_EQ(Chosen(), "");
}

TEST_P(MenuChangeTest, ChoosesNothingByAHeldButton)
{
    const BPoint title = On(fBar->ItemAt(0));
    PressMouseAt(title);
    ASSERT_TRUE(IsOpen(fFile));
    const BPoint place = On(fFile->ItemAt(1));
    MoveMouseAt(place);

    Do([this] { GetParam().apply(*fBar, *fFile); });
    ReleaseMouseAt(place);

    EXPECT_EQ(Chosen(), "");
    EXPECT_FALSE(IsOpen(fFile));
}

INSTANTIATE_TEST_SUITE_P(Menu, MenuChangeTest, ::testing::ValuesIn(kChanges),
                         [](const ::testing::TestParamInfo<Change>& change) {
                             return change.param.name;
                         });

TEST_F(MenuChangesTest, WhatStaysAsItWasClosesNothing)
{
    OpenFile();

    Do([this] {
        fFile->ItemAt(1)->SetLabel("Copy");
        fFile->ItemAt(1)->SetEnabled(true);
        fFile->ItemAt(1)->SetMarked(false);
        fMore->ItemAt(0)->SetLabel("Deeper"); // not open
    });

    EXPECT_TRUE(IsOpen(fFile));
}

TEST_F(MenuChangesTest, SubmenuThatChangesClosesAll)
{
    OpenFile();
    MoveMouseAt(On(fFile->ItemAt(3)));
    ASSERT_TRUE(IsOpen(fMore));

    Do([this] { fMore->ItemAt(0)->SetLabel("Deeper"); });

    EXPECT_FALSE(IsOpen(fMore));
    EXPECT_FALSE(IsOpen(fFile));
}

TEST_F(MenuChangesTest, SubmenuThatIsDeletedLeavesItsItemWithoutOne)
{
    OpenFile();
    MoveMouseAt(On(fFile->ItemAt(3)));
    ASSERT_TRUE(IsOpen(fMore));

    Do([this] { delete fMore; });

    EXPECT_FALSE(IsOpen(fFile));
    EXPECT_EQ(Locked([this] { return fFile->ItemAt(3)->Submenu(); }), nullptr);
}

TEST_F(MenuChangesTest, ClosedSubmenuThatIsDeletedClosesTheMenuAbove)
{
    OpenFile();

    Do([this] { delete fMore; });

    EXPECT_FALSE(IsOpen(fFile));
    EXPECT_EQ(Locked([this] { return fFile->ItemAt(3)->Submenu(); }), nullptr);
}

TEST_F(MenuChangesTest, OpenMenuThatIsDeletedClosesFirst)
{
    OpenFile();

    Do([this] { delete fBar->RemoveItem(int32{0}); });

    EXPECT_EQ(Locked([this] { return fBar->CountItems(); }), 0);
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuChangesTest, BarThatIsDeletedWhileOpenIsClean)
{
    OpenFile();

    Do([this] { delete fBar; });
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "");
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuChangesTest, LastItemOfASubmenuIsPartOfWhatIsSeenAbove)
{
    OpenFile();

    Do([this] { delete fMore->RemoveItem(int32{0}); });

    EXPECT_FALSE(IsOpen(fFile));
}

TEST_F(MenuChangesTest, ItemThatGoesWhenItIsReachedIsNotChosen)
{
    Do([this] {
        delete fFile->RemoveItem(int32{0});
        fFile->AddItem(new MovedItem("Open", 'tesa',
                                     [this](bool isHighlighted) {
                                         if (isHighlighted) {
                                             delete fFile->RemoveItem(int32{1});
                                         }
                                     }),
                       0);
    });

    TypeFunctionKey(B_F10_KEY); // reaches the first item
    Sync(fWindow);
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "");
    EXPECT_FALSE(IsOpen(fFile));
}

TEST_F(MenuChangesTest, ItemThatGoesWhenItsMenuClosesIsNotChosen)
{
    Do([this] {
        delete fFile->RemoveItem(int32{0});
        fFile->AddItem(new MovedItem("Open", 'tesa',
                                     [this](bool isHighlighted) {
                                         if (!isHighlighted && fFile->CountItems() == 4) {
                                             fTaken.reset(fFile->RemoveItem(int32{0}));
                                         }
                                     }),
                       0);
    });
    OpenFile();

    ClickAt(On(fFile->ItemAt(0)));

    EXPECT_EQ(Chosen(), "");
    EXPECT_EQ(Notes(), "be");
}

} // namespace
