#include "InputRouterFixture.h"

using kits::InputRouter;
using kits::ShowRequest;

namespace {

class InputRouterTest : public InputRouterFixture
{
};

} // namespace

TEST_F(InputRouterTest, GivesAKeyToTheWindowTheSystemNames)
{
    const InputRouter::KeyTarget target = Press(kA, kLetter);

    EXPECT_EQ(target.window, kA);
    EXPECT_EQ(target.repeat, 0);
    EXPECT_FALSE(target.isEarly);
    EXPECT_EQ(Release(kA, kLetter), kA);
}

TEST_F(InputRouterTest, CountsRepeats)
{
    Press(kA, kLetter);

    EXPECT_EQ(Press(kA, kLetter).repeat, 1);
    EXPECT_EQ(Press(kA, kLetter).repeat, 2);
    Release(kA, kLetter);
    EXPECT_EQ(Press(kA, kLetter).repeat, 0);
}

TEST_F(InputRouterTest, GivesKeysOfTheOpenerToTheWindowOnItsWay)
{
    EXPECT_EQ(fRouter.Shown(kB, DialogOf(kA), false, 0), kA);

    const InputRouter::KeyTarget target = Press(kA, kLetter);

    EXPECT_EQ(target.window, kB);
    EXPECT_TRUE(target.isEarly);
}

TEST_F(InputRouterTest, GivesKeysToTheLastOfAChainOnItsWay)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.Shown(kC, DialogOf(kB), false, 0);

    EXPECT_EQ(Press(kA, kLetter).window, kC);
}

TEST_F(InputRouterTest, MarksNothingEarlyOnceTheFocusCame)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);

    EXPECT_FALSE(Press(kB, kLetter).isEarly);
}

TEST_F(InputRouterTest, StopsWaitingForAFocusThatDoesNotCome)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);

    EXPECT_EQ(Press(kA, kLetter, kPatience - 1).window, kB);
    EXPECT_EQ(Press(kA, kReturn, kPatience).window, kA);
}

TEST_F(InputRouterTest, LeavesKeysWhereTheyAreForAWindowThatTakesNoFocus)
{
    ShowRequest request = DialogOf(kA);
    request.takesFocus = false;

    EXPECT_EQ(fRouter.Shown(kB, request, false, 0), 0);
    EXPECT_EQ(Press(kA, kLetter).window, kA);
}

TEST_F(InputRouterTest, DropsTheRepeatsOfAKeyThatOpenedAWindow)
{
    Press(kA, kReturn);
    fRouter.Shown(kB, DialogOf(kA), false, 0);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    fRouter.FocusChanged(kB);
    EXPECT_EQ(Press(kB, kReturn).window, 0);
    EXPECT_EQ(Release(kB, kReturn), kA);
    EXPECT_EQ(Press(kB, kReturn).window, kB);
}

TEST_F(InputRouterTest, KeepsAKeyDeadThatIsStillHeldWhenItsWindowIsBack)
{
    Press(kA, kReturn);
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);
    Press(kB, kReturn);
    fRouter.WillLeave(kB, 0);
    fRouter.FocusChanged(kA);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    Release(kA, kReturn);
    EXPECT_EQ(Press(kA, kReturn).window, kA);
}

TEST_F(InputRouterTest, KeepsTheKeyThatAnsweredFromTheWindowBehind)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);
    Press(kB, kReturn);

    fRouter.WillLeave(kB, 0);
    fRouter.FocusChanged(kA);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    EXPECT_EQ(Release(kA, kReturn), 0);
}

TEST_F(InputRouterTest, DropsKeysThatArriveAtAWindowThatIsGone)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);
    fRouter.WillLeave(kB, 0);

    EXPECT_EQ(Press(kB, kLetter).window, 0);
    EXPECT_EQ(Press(kA, kLetter).window, 0); // and its repeats
}

TEST_F(InputRouterTest, GivesKeysOfABlockedWindowToTheModalOne)
{
    fRouter.Shown(kC, {}, false, 0);
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.FocusChanged(kB);

    EXPECT_EQ(Press(kC, kLetter, 2 * kPatience).window, kB);
}

TEST_F(InputRouterTest, GivesKeysToTheNewestOfTwoAlerts)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kC, ModalOf(kA), false, 0);
    fRouter.FocusChanged(kC);
    fRouter.FocusChanged(kB);

    EXPECT_EQ(Press(kB, kReturn).window, kC);
}

TEST_F(InputRouterTest, LetsAWindowThatAModalOneOpenedTakeInput)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kC, DialogOf(kB), false, 0);
    fRouter.FocusChanged(kC);

    EXPECT_FALSE(fRouter.IsBlocked(kC));
    EXPECT_TRUE(fRouter.IsBlocked(kA));
    EXPECT_EQ(Press(kC, kLetter).window, kC);
}

TEST_F(InputRouterTest, LetsTheLowerAlertGoFirst)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kC, ModalOf(kA), false, 0);

    fRouter.WillLeave(kB, 0);

    EXPECT_EQ(fRouter.TopmostModal(), kC);
    fRouter.WillLeave(kC, 0);
    EXPECT_FALSE(fRouter.IsBlocked(kA));
}

TEST_F(InputRouterTest, ReleasesAllKeysWhenAnotherProgramHasTheFocus)
{
    Press(kA, kLetter);

    const auto released = fRouter.FocusChanged(0);

    ASSERT_EQ(released.size(), 1u);
    EXPECT_EQ(released[0], std::make_pair(kLetter, kA));
    fRouter.FocusChanged(kA);
    EXPECT_EQ(Press(kA, kLetter).repeat, 0);
}

TEST_F(InputRouterTest, AMomentWithoutFocusLosesNoKey)
{
    fRouter.FocusChanged(kA);
    Press(kA, kReturn);
    fRouter.FocusLeaves(1'000'000);
    fRouter.FocusChanged(0);
    fRouter.FocusChanged(kA);
    // The letter was pressed since; its press is read after the answer to what is down.
    fRouter.KeysFoundDown({kReturn, kLetter}, 1'100'000);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    const InputRouter::KeyTarget letter = Press(kA, kLetter);
    EXPECT_EQ(letter.window, kA);
    EXPECT_EQ(letter.repeat, 0);
}

TEST_F(InputRouterTest, AfterALongerWhileKeysThatAreDownAreNobodys)
{
    fRouter.FocusChanged(kA);
    fRouter.FocusLeaves(1'000'000);
    fRouter.FocusChanged(0);
    fRouter.FocusChanged(kA);
    fRouter.KeysFoundDown({kLetter}, 9'000'000);

    EXPECT_EQ(Press(kA, kLetter).window, 0);
}

TEST_F(InputRouterTest, IgnoresKeysThatWereDownWhenTheFocusCame)
{
    fRouter.FocusChanged(0);
    fRouter.FocusChanged(kA);
    fRouter.KeysFoundDown({kReturn}, 0);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    EXPECT_EQ(Release(kA, kReturn), 0);
    EXPECT_EQ(Press(kA, kReturn).window, kA);
}

TEST_F(InputRouterTest, FollowsAPressThatWasHandedOver)
{
    Press(kA, kLetter);
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.KeyMoved(kLetter, kB);

    EXPECT_EQ(Press(kA, kLetter).window, kB);
    EXPECT_EQ(Release(kA, kLetter), kB);
}

TEST_F(InputRouterTest, FindsRepeatsByTimeWhereReleasesComeBetween)
{
    fRouter.SetRepeatRule(InputRouter::RepeatRule::kTimestamps);
    Press(kA, kLetter, 1'000'000);
    Release(kA, kLetter, 1'500'000);

    EXPECT_EQ(Press(kA, kLetter, 1'500'000).repeat, 1);
    Release(kA, kLetter, 1'530'000);
    EXPECT_EQ(Press(kA, kLetter, 1'535'000).repeat, 0);
}

TEST_F(InputRouterTest, GivesModifiersToTheFocusAndOwnsNone)
{
    const InputRouter::KeyEvent shift{kA, 50, true, 0};

    EXPECT_EQ(fRouter.KeyPressed(shift, 0).window, kA);
    EXPECT_EQ(fRouter.KeyPressed(shift, 0).repeat, 0);
    EXPECT_TRUE(fRouter.FocusChanged(0).empty());
}

TEST_F(InputRouterTest, GivesKeysOfAMenuToItsOwner)
{
    fRouter.Shown(kMenu, DialogOf(kA), true, 0);
    fRouter.FocusChanged(kMenu);

    EXPECT_EQ(fRouter.Focused(), kA);
    EXPECT_EQ(Press(kMenu, kLetter).window, kA);
}

TEST_F(InputRouterTest, SendsKeysOnFromAProgressWindowUntilItIsChosen)
{
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    EXPECT_EQ(fRouter.Shown(kB, request, false, 0), 0);
    EXPECT_EQ(Press(kA, kLetter).window, kA);
    fRouter.FocusChanged(kB);
    Release(kB, kLetter);

    EXPECT_EQ(Press(kB, kLetter).window, kA);
    Release(kB, kLetter);
    fRouter.MousePressed(kB, B_PRIMARY_MOUSE_BUTTON);
    EXPECT_EQ(Press(kB, kLetter).window, kB);
}

TEST_F(InputRouterTest, LetsAProgressWindowHaveKeysWhenItIsActivatedAgain)
{
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    fRouter.Shown(kB, request, false, 0);
    FocusGoesTo(kB, 10'000);
    FocusGoesTo(kA, 5'000'000);

    FocusGoesTo(kB, 6'000'000);

    EXPECT_EQ(Press(kB, kLetter).window, kB);
}

TEST_F(InputRouterTest, SendsKeysOnWhenTheFocusWentToAndFroForAMoment)
{
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    fRouter.Shown(kB, request, false, 0);
    FocusGoesTo(kB, 10'000);
    FocusGoesTo(kA, 12'000);
    FocusGoesTo(kB, 14'000);

    EXPECT_EQ(Press(kB, kLetter).window, kA);
}

TEST_F(InputRouterTest, SendsKeysOnWhenTheFocusWentToAndFroBecauseAnotherWindowLeft)
{
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    fRouter.Shown(kB, request, false, 0);
    FocusGoesTo(kB, 10'000);
    FocusGoesTo(kA, 20'000);
    fRouter.Shown(kC, DialogOf(kA), false, 5'000'000);
    FocusGoesTo(kC, 5'010'000);
    fRouter.WillLeave(kC, 9'000'000);
    FocusGoesTo(kB, 9'010'000); // the window manager's idea

    EXPECT_EQ(Press(kB, kLetter).window, kA);
}

TEST_F(InputRouterTest, LetsAProgressWindowHaveKeysWhenItsFirstFocusComesLate)
{
    constexpr bigtime_t kShownAt = 50'000'000;
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    for (const int32 window : {kB, kC}) {
        fRouter.Shown(window, request, false, kShownAt);
    }

    fRouter.FocusComes(kB, kShownAt + 900'000); // as a slow window manager gives it
    fRouter.FocusChanged(kB);
    EXPECT_EQ(Press(kB, kLetter).window, kA);
    Release(kB, kLetter);
    fRouter.FocusComes(kC, kShownAt + 1'100'000);
    fRouter.FocusChanged(kC);

    EXPECT_EQ(Press(kC, kLetter).window, kC);
}

TEST_F(InputRouterTest, SendsTheLastKeysOfAProgressWindowOnToo)
{
    ShowRequest request = DialogOf(kA);
    request.takesKeys = false;
    fRouter.Shown(kB, request, false, 0);
    fRouter.FocusChanged(kB);
    fRouter.WillLeave(kB, 0);

    EXPECT_EQ(Press(kB, kLetter).window, kA);
    EXPECT_EQ(Release(kA, kLetter), kA);
    fRouter.Gone(kB);
    EXPECT_EQ(Press(kB, kLetter).window, 0);
}

TEST_F(InputRouterTest, APressOnItsWayWhenAWindowLeavesIsNotTakenForAHeldOne)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);
    Press(kB, kReturn);
    fRouter.WillLeave(kB, 1'000'000);
    fRouter.FocusChanged(kA);
    // Return is still held; the letter was pressed since, and its press has yet to be read.
    fRouter.KeysFoundDown({kReturn, kLetter}, 1'100'000);

    EXPECT_EQ(Press(kA, kReturn).window, 0);
    EXPECT_EQ(Press(kA, kLetter).window, kA);
}

TEST_F(InputRouterTest, PassesTheFocusBackToTheOpener)
{
    fRouter.Shown(kC, {}, false, 0);
    fRouter.FocusChanged(kC);
    fRouter.Shown(kB, DialogOf(kA), false, 0);
    fRouter.FocusChanged(kB);

    EXPECT_EQ(fRouter.WillLeave(kB, 0).successor, kA);
}

TEST_F(InputRouterTest, PassesTheFocusToTheModalWindowFirst)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kC, ModalOf(kA), false, 0);
    fRouter.FocusChanged(kC);

    EXPECT_EQ(fRouter.WillLeave(kC, 0).successor, kB);
}

TEST_F(InputRouterTest, PassesTheFocusToTheLastActiveWindowWhenTheOpenerIsGone)
{
    fRouter.Shown(kB, DialogOf(99), false, 0);
    fRouter.FocusChanged(kB);

    EXPECT_EQ(fRouter.WillLeave(kB, 0).successor, kA);
}

TEST_F(InputRouterTest, PassesNothingOnWhenTheWindowHadNoFocus)
{
    ShowRequest request = DialogOf(kA);
    request.takesFocus = false;
    fRouter.Shown(kB, request, false, 0);

    EXPECT_EQ(fRouter.WillLeave(kB, 0).successor, 0);
}

TEST_F(InputRouterTest, PassesTheFocusOnThatIsStillOnItsWay)
{
    fRouter.Shown(kB, DialogOf(kA), false, 0);

    EXPECT_EQ(fRouter.WillLeave(kB, 0).successor, kA);
}
