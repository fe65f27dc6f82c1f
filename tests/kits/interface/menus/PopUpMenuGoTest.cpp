#include "PopUpMenuFixture.h"

#include <AppDefs.h>

#include "app/ProgramEnd.h"

// Menus that hang nowhere: what Go() returns, does and leaves.

namespace {

using namespace kits::testing;

using PopUpMenuGoTest = PopUpMenuFixture;

TEST_F(PopUpMenuGoTest, ReturnsWhatWasClickedAndDeliversNothing)
{
    OpenAndWait();

    ClickAt(OnItem(1));

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(1));
    EXPECT_FALSE(IsUp());
    EXPECT_EQ(Chosen(), "");
    EXPECT_EQ(Notes(), "be");
}

TEST_F(PopUpMenuGoTest, DeliversTheMessageWhenItIsTo)
{
    OpenAndWait(true);

    ClickAt(OnItem(2));

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(2));
    EXPECT_EQ(Chosen(), "u");
}

TEST_F(PopUpMenuGoTest, BeginsAtThePointGiven)
{
    OpenAndWait();

    const BPoint place = WithLock([this] { return fMenu->ConvertToScreen(BPoint(0, 0)); });

    EXPECT_EQ(place, Where());
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(AwaitOver());
}

TEST_F(PopUpMenuGoTest, StaysOnTheScreen)
{
    Open([this] {
        fMenu->Go(BPoint(100000, 100000), false, true);
        fIsOver = true;
    });
    AwaitUp();

    const BRect frame = WithLock([this] { return fMenu->ConvertToScreen(fMenu->Bounds()); });

    EXPECT_LT(frame.right, 10000);
    EXPECT_LT(frame.bottom, 10000);
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(AwaitOver());
}

TEST_F(PopUpMenuGoTest, ReturnsNothingWhenAPersonLeavesIt)
{
    OpenAndWait();
    TypeKey(B_ESCAPE);
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);

    fIsOver = false;
    OpenAndWait();
    ClickAt(Where() + BPoint(200, 150)); // beside it
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
}

TEST_F(PopUpMenuGoTest, KeysWalkAndChoose)
{
    OpenAndWait();
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_ENTER);
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(1));

    fIsOver = false;
    OpenAndWait();
    TypeKey('b'); // by its first letter
    TypeKey(B_ENTER);
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(2));
}

TEST_F(PopUpMenuGoTest, AKeyThatOpensItMakesTheFirstItemCurrent)
{
    WithLock([this] {
        fView->open = [this] {
            fReturned = fMenu->Go(Where(), false, true);
            fIsOver = true;
        };
        fMenu->ItemAt(0)->SetEnabled(false);
        return true;
    });

    TypeKey('m');
    AwaitUp();
    TypeKey(B_ENTER);

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(1));
}

TEST_F(PopUpMenuGoTest, APointerThatRestsBelowItPointsAtNothing)
{
    const BPoint resting = Where() + BPoint(20, 45); // on the third item
    MoveMouseAt(resting);
    WithLock([this] {
        fView->open = [this] {
            fReturned = fMenu->Go(Where(), false, true);
            fIsOver = true;
        };
        return true;
    });
    TypeKey('m');
    AwaitUp();

    // What the screen says when a window comes below it.
    for (const int32 transit : {B_ENTERED_VIEW, B_INSIDE_VIEW}) {
        BMessage moved(B_MOUSE_MOVED);
        moved.AddPoint("where", resting);
        moved.AddPoint("screen_where", resting);
        moved.AddInt32("be:transit", transit);
        fWindow->PostMessage(&moved);
    }
    TypeKey(B_ENTER);

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(0));

    fIsOver = false;
    TypeKey('m');
    AwaitUp();
    MoveMouseAt(resting + BPoint(1, 0)); // a person did that
    TypeKey(B_ENTER);
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(2));
}

TEST_F(PopUpMenuGoTest, TheMenuKeyLeavesItUnlessItIsHeld)
{
    BMessage key(B_UNMAPPED_KEY_DOWN);
    key.AddInt32("key", 0x68);
    OpenAndWait();
    fWindow->PostMessage(&key);
    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);

    fIsOver = false;
    key.AddInt32("be:key_repeat", 1);
    OpenAndWait();
    fWindow->PostMessage(&key);
    ASSERT_TRUE(AwaitPainting()); // it was looked at by then
    EXPECT_TRUE(IsUp());
    TypeKey(B_ESCAPE);
    ASSERT_TRUE(AwaitOver());
}

TEST_F(PopUpMenuGoTest, AHeldKeyLeavesOpenWhatItOpened)
{
    WithLock([this] {
        fView->open = [this] {
            fReturned = fMenu->Go(Where(), false, true);
            fIsOver = true;
        };
        return true;
    });
    PressFunctionKey(B_F10_KEY, B_SHIFT_KEY);
    AwaitUp();
    PressFunctionKey(B_F10_KEY, B_SHIFT_KEY); // repeats
    ReleaseFunctionKey(B_F10_KEY, B_SHIFT_KEY);
    TypeKey(B_ENTER);

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, fMenu->ItemAt(0));
}

TEST_F(PopUpMenuGoTest, WindowGoesOnPaintingMeanwhile)
{
    OpenAndWait();

    EXPECT_TRUE(AwaitPainting());
    EXPECT_TRUE(IsUp());
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(AwaitOver());
}

TEST_F(PopUpMenuGoTest, OtherMessagesWaitInTheirOrder)
{
    OpenAndWait();
    for (const uint32 what : {'tesx', 'tesy', 'tesz'}) {
        fWindow->PostMessage(what);
    }
    ASSERT_TRUE(AwaitPainting()); // they were looked at by now
    EXPECT_TRUE(IsUp());

    TypeKey(B_ESCAPE);

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(Chosen(), "xyz");
}

TEST_F(PopUpMenuGoTest, ARequestToQuitClosesItAndIsServed)
{
    OpenAndWait();

    CloseWindow(fWindow);

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
    EXPECT_TRUE(WaitFor([this] { return !fWindow->Lock() || (fWindow->Unlock(), false); }));
}

TEST_F(PopUpMenuGoTest, TheProgramsEndClosesIt)
{
    fWindow->mayQuit = false; // the program goes on after all
    OpenAndWait();

    kits::ProgramEnd::Request();

    EXPECT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
    EXPECT_TRUE(WaitFor([] { return !kits::ProgramEnd::IsRequested(); }));
}

TEST_F(PopUpMenuGoTest, AnotherThreadMayQuitTheWindow)
{
    OpenAndWait();

    ASSERT_TRUE(fWindow->Lock());
    fWindow->Quit(); // waits for the window's thread

    EXPECT_TRUE(fIsOver);
    EXPECT_EQ(fReturned, nullptr);
}

TEST_F(PopUpMenuGoTest, TheMenuMayBeDeletedMeanwhile)
{
    OpenAndWait();

    WithLock([this] {
        delete fMenu;
        return true;
    });

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
    Sync(fWindow);
    EXPECT_EQ(Notes(), "be");
}

TEST_F(PopUpMenuGoTest, AnItemThatGoesClosesIt)
{
    OpenAndWait();

    WithLock([this] {
        delete fMenu->ItemAt(0);
        return true;
    });

    ASSERT_TRUE(AwaitOver());
    EXPECT_EQ(fReturned, nullptr);
    EXPECT_EQ(fMenu->CountItems(), 2);
}

TEST_F(PopUpMenuGoTest, TheFocusThatGoesClosesIt)
{
    auto* other = new ControlWindow("other");
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));
    ActivateWindow(fWindow);
    ASSERT_TRUE(WaitForFocus(fWindow));
    OpenAndWait();

    ActivateWindow(other);

    EXPECT_TRUE(AwaitOver());
    other->Lock();
    other->Quit();
}

} // namespace
