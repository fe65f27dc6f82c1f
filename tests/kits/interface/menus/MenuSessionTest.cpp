#include "MenuFixture.h"

#include "interface/menus/MenuSession.h"

// From the first menu that opens to the last that closes, on a bar and without one.

namespace {

using namespace kits::testing;

using MenuSessionTest = MenuFixture;

TEST_F(MenuSessionTest, WindowIsToldOnceOfBeginningAndEnd)
{
    OpenFile();
    EXPECT_EQ(Notes(), "b");
    MoveMouseAt(On(fFile->ItemAt(3)));
    ClickAt(On(fMore->ItemAt(0)));

    EXPECT_EQ(Chosen(), "d");
    EXPECT_EQ(Notes(), "be");

    TypeFunctionKey(B_F10_KEY);
    Sync(fWindow);
    TypeKey(B_ESCAPE);
    EXPECT_EQ(Notes(), "bebe");
}

/// The menu's messages go to its window, which is not what the desktop wants to go.
TEST_F(MenuSessionTest, ADesktopThatClosesAMenuLeavesItsWindowThere)
{
    OpenFile();
    ASSERT_TRUE(IsOpen(fFile));

    CloseMenuAt(fWindow, On(fFile->ItemAt(1)));

    EXPECT_TRUE(WaitFor([this] { return !IsOpen(fFile); }));
    Sync(fWindow);
    EXPECT_EQ(Notes(), "be");
    EXPECT_FALSE(Locked([this] { return fWindow->IsHidden(); }));
}

TEST_F(MenuSessionTest, WindowMaySetUpItsMenusAtTheBeginning)
{
    Do([this] {
        fWindow->atBeginning = [this] {
            fFile->ItemAt(0)->SetEnabled(false);
            fFile->ItemAt(1)->SetMarked(true);
            fBar->AddItem(new BMenu("View"));
        };
    });

    TypeFunctionKey(B_F10_KEY);
    Sync(fWindow);
    ASSERT_TRUE(IsOpen(fFile));
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "b"); // the first that can be chosen
}

TEST_F(MenuSessionTest, TitleThatGoesAtTheBeginningOpensNothing)
{
    Do([this] {
        auto* other = new BMenu("View");
        other->AddItem(new BMenuItem("Up", new BMessage('tesu')));
        fBar->AddItem(other);
        fWindow->atBeginning = [this] {
            delete fBar->RemoveItem(int32{0});
        };
    });

    ClickAt(On(fBar->ItemAt(0)));

    EXPECT_FALSE(Locked([this] { return fBar->SubmenuAt(0)->Window() != nullptr; }));
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuSessionTest, TitleThatIsDisabledAtTheBeginningOpensNothing)
{
    Do([this] {
        fWindow->atBeginning = [this] {
            fBar->ItemAt(0)->SetEnabled(false);
        };
    });

    ClickAt(On(fBar->ItemAt(0)));

    EXPECT_FALSE(IsOpen(fFile));
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuSessionTest, BarMayGoAtTheBeginningAndAtTheEnd)
{
    Do([this] {
        fWindow->atBeginning = [this] {
            fWindow->RemoveChild(fBar);
        };
        fWindow->atEnd = [this] {
            fWindow->atBeginning = nullptr;
        };
    });
    TypeFunctionKey(B_F10_KEY);
    EXPECT_EQ(Notes(), "be");

    Do([this] {
        fWindow->AddChild(fBar);
        fWindow->atEnd = [this] {
            delete fBar;
        };
    });
    TypeFunctionKey(B_F10_KEY);
    Sync(fWindow);
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "a");
    EXPECT_EQ(Notes(), "bebe");
}

TEST_F(MenuSessionTest, HidingTheWindowEndsTheSession)
{
    OpenFile();

    Do([this] {
        fWindow->Hide();
        EXPECT_EQ(fFile->Window(), nullptr); // at once, not when the focus has gone
    });

    EXPECT_EQ(Notes(), "be");
}

// A menu that hangs on no bar.
class MenuWithoutBarTest : public MenuFixture
{
protected:
    void Open()
    {
        fMenu.AddItem(new BMenuItem("One", new BMessage('tesx')));
        fDeep = new BMenu("Deep");
        fDeep->AddItem(new BMenuItem("Two", new BMessage('tesy')));
        fMenu.AddItem(fDeep);
        Do([this] {
            fMenu.SetTargetForItems(fWindow);
            fDeep->SetTargetForItems(fWindow);
            fSession = std::make_shared<kits::MenuSession>(fWindow);
            fSession->StartWithoutBar(fMenu, BRect(150, 150, 150, 150));
        });
        SyncServer();
        ASSERT_TRUE(IsOpen(&fMenu));
    }

    void TearDown() override
    {
        Do([this] { fSession.reset(); });
        MenuFixture::TearDown();
    }

    BMenu fMenu{"menu"};
    BMenu* fDeep = nullptr;
    std::shared_ptr<kits::MenuSession> fSession;
};

TEST_F(MenuWithoutBarTest, ClickChooses)
{
    Open();

    ClickAt(On(fMenu.ItemAt(0)));

    EXPECT_EQ(Chosen(), "x");
    EXPECT_FALSE(IsOpen(&fMenu));
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuWithoutBarTest, KeysWalkIntoASubmenuAndBack)
{
    const auto type = [this](char byte) {
        SyncServer();
        TypeKey(byte);
        Sync(fWindow);
    };
    Open();

    type(B_UP_ARROW);
    type(B_RIGHT_ARROW);
    ASSERT_TRUE(IsOpen(fDeep));
    type(B_LEFT_ARROW);
    EXPECT_FALSE(IsOpen(fDeep));
    type(B_LEFT_ARROW);
    ASSERT_TRUE(IsOpen(&fMenu));
    type(B_RIGHT_ARROW);
    type(B_ENTER);

    EXPECT_EQ(Chosen(), "y");
}

TEST_F(MenuWithoutBarTest, PressOutsideAndEscapeClose)
{
    Open();
    ClickAt(BPoint(420, 330));
    EXPECT_FALSE(IsOpen(&fMenu));

    Do([this] { fSession->StartWithoutBar(fMenu, BRect(150, 150, 150, 150)); });
    SyncServer();
    TypeKey(B_ESCAPE);
    EXPECT_FALSE(IsOpen(&fMenu));
    EXPECT_EQ(Chosen(), "");
}

} // namespace
