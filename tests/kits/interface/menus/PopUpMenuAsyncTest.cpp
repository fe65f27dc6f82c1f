#include "PopUpMenuFixture.h"

// Pop-up menus that nobody waits for, and those that a button opens.

namespace {

using namespace kits::testing;

class PopUpMenuAsyncTest : public PopUpMenuFixture
{
protected:
    void OpenAsync(bool deliversMessage = true)
    {
        Open([this, deliversMessage] {
            fReturned = fMenu->Go(Where(), deliversMessage, true, true);
            fIsOver = true;
        });
        ASSERT_TRUE(AwaitOver());
    }
    void PressOpens(bool openAnyway, BRect clickToOpen = BRect())
    {
        WithLock([&] {
            fView->open = [this, openAnyway, clickToOpen] {
                fReturned = fMenu->Go(Where(), false, openAnyway, clickToOpen);
                fIsOver = true;
            };
            return true;
        });
        PressMouseAt(Where() - BPoint(20, 0));
        AwaitUp();
    }
};

TEST_F(PopUpMenuAsyncTest, ReturnsAtOnceAndDeliversWhatIsChosen)
{
    OpenAsync();
    EXPECT_TRUE(IsUp());
    EXPECT_EQ(fReturned, nullptr);
    fWindow->PostMessage('tesx'); // the window lives on
    EXPECT_EQ(Chosen(), "x");

    ClickAt(OnItem(1));

    EXPECT_EQ(Chosen(), "xg");
    EXPECT_FALSE(fIsGone);
}

TEST_F(PopUpMenuAsyncTest, DeliversNothingWhenItIsNotTo)
{
    OpenAsync(false);

    ClickAt(OnItem(1));
    Sync(fWindow);

    EXPECT_FALSE(IsUp());
    EXPECT_EQ(Chosen(), "");
}

TEST_F(PopUpMenuAsyncTest, DeletesItselfAfterAChoice)
{
    fMenu->SetAsyncAutoDestruct(true);
    OpenAsync();

    ClickAt(OnItem(0));

    EXPECT_TRUE(WaitFor([this] { return fIsGone.load(); }));
    EXPECT_EQ(Chosen(), "r");
}

TEST_F(PopUpMenuAsyncTest, DeletesItselfWhenItIsLeft)
{
    fMenu->SetAsyncAutoDestruct(true);
    OpenAsync();
    EXPECT_FALSE(fIsGone);

    TypeKey(B_ESCAPE);

    EXPECT_TRUE(WaitFor([this] { return fIsGone.load(); }));
    Sync(fWindow);
    EXPECT_EQ(Notes(), "be");
}

TEST_F(PopUpMenuAsyncTest, DeletesItselfWithTheWindow)
{
    fMenu->SetAsyncAutoDestruct(true);
    OpenAsync();

    ASSERT_TRUE(fWindow->Lock());
    fWindow->Quit();

    EXPECT_TRUE(fIsGone);
}

TEST_F(PopUpMenuAsyncTest, DeletesItselfWhenItCannotOpen)
{
    fMenu->SetAsyncAutoDestruct(true);

    Open([this] {
        fMenu->Go(Where(), true, false, true); // no button is held
        fIsOver = true;
    });

    ASSERT_TRUE(AwaitOver());
    EXPECT_TRUE(fIsGone);
}

TEST_F(PopUpMenuAsyncTest, MayBeDeletedWhileItIsOpen)
{
    fMenu->SetAsyncAutoDestruct(true);
    OpenAsync();

    std::atomic<bool> isTyped{false};
    WithLock([&] {
        delete fMenu;
        fView->open = [&] {
            isTyped = true;
        };
        return true;
    });
    TypeKey('k'); // reaches the view again
    Sync(fWindow);

    EXPECT_TRUE(fIsGone);
    EXPECT_EQ(Notes(), "be");
    EXPECT_TRUE(isTyped);
}

TEST_F(PopUpMenuAsyncTest, OutlivesItsWindow)
{
    OpenAsync();
    ASSERT_TRUE(fWindow->Lock());
    PressMouseAt(Where() + BPoint(200, 140));
    fWindow->Quit();

    delete fMenu;

    EXPECT_TRUE(fIsGone);
    ReleaseMouseAt(Where() + BPoint(200, 140));
}

TEST_F(PopUpMenuAsyncTest, TakesThePlaceOfOpenMenus)
{
    OpenFile();

    OpenAsync();

    EXPECT_FALSE(WithLock([this] { return fFile->Window() != nullptr; }));
    TypeKey('g');
    TypeKey(B_ENTER);
    EXPECT_EQ(Chosen(), "g");
}

TEST_F(PopUpMenuAsyncTest, DoesNotOpenWithoutAButtonUnlessToldTo)
{
    Open([this] {
        fReturned = fMenu->Go(Where());
        fIsOver = true;
    });

    ASSERT_TRUE(AwaitOver());
    EXPECT_FALSE(IsUp());
    EXPECT_EQ(Notes(), "");
}

TEST_F(PopUpMenuAsyncTest, OpensOnAWindowsThreadAlone)
{
    EXPECT_EQ(WithLock([this] { return fMenu->Go(Where(), false, true, true); }), nullptr);

    EXPECT_FALSE(IsUp());
}

TEST_F(PopUpMenuAsyncTest, AHeldButtonChoosesByItsRelease)
{
    PressOpens(false);

    MoveMouseAt(OnItem(2));
    ReleaseMouseAt(OnItem(2));

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(2));
}

TEST_F(PopUpMenuAsyncTest, AReleaseBesideItClosesWhatAButtonOpened)
{
    PressOpens(false);

    ReleaseMouseAt(Where() - BPoint(20, 0));

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
}

TEST_F(PopUpMenuAsyncTest, AClickLeavesItOpenWhereItOpensAnyway)
{
    PressOpens(true);

    ReleaseMouseAt(Where() - BPoint(20, 0));
    SyncServer();

    EXPECT_TRUE(IsUp());
    ClickAt(OnItem(0));
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(0));
}

TEST_F(PopUpMenuAsyncTest, AReleaseInTheRectangleLeavesItOpen)
{
    const BPoint pressed = Where() - BPoint(20, 0);
    PressOpens(false, BRect(pressed.x - 5, pressed.y - 5, pressed.x + 5, pressed.y + 5));

    ReleaseMouseAt(pressed);
    SyncServer();
    EXPECT_TRUE(IsUp());

    ClickAt(OnItem(1));
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(1));
}

} // namespace
