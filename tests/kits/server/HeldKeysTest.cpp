#include <InterfaceDefs.h>

#include "server/InputRouter.h"
#include "server/KeyTranslation.h"
#include "server/KeysDown.h"
#include "server/ShowRequest.h"

#include <gtest/gtest.h>

// Keys whose release is not seen, and Alt with nothing between its press and its release.

using kits::InputRouter;
using kits::KeysDown;
using kits::LoneAlt;

namespace {

constexpr int32 kA = 1;
constexpr int32 kB = 2;
constexpr int32 kReturn = 36;

class HeldKeysTest : public ::testing::Test
{
protected:
    HeldKeysTest()
    {
        fRouter.Shown(kA, {}, false, 0);
        fRouter.FocusChanged(kA);
    }

    InputRouter::KeyTarget Press(int32 native, bigtime_t when, bool isFirst)
    {
        return fRouter.KeyPressed({native, kReturn, false, when, isFirst}, when);
    }

    InputRouter fRouter;
};

TEST_F(HeldKeysTest, FirstPressAfterAReleaseThatNobodyHeardOfActs)
{
    Press(kA, 1'000'000, true);
    // Its release fell between two windows.
    fRouter.WillLeave(kA, 1'005'000);
    fRouter.Shown(kB, {}, false, 1'005'000);
    fRouter.FocusChanged(kB);

    const InputRouter::KeyTarget fresh = Press(kB, 2'000'000, true);

    EXPECT_EQ(fresh.window, kB);
    EXPECT_EQ(fresh.repeat, 0);
}

TEST_F(HeldKeysTest, RepeatsOfThatPressAreRepeats)
{
    Press(kA, 1'000'000, true);
    Press(kA, 2'000'000, true);

    EXPECT_EQ(Press(kA, 2'500'000, false).repeat, 1);
    EXPECT_EQ(Press(kA, 2'530'000, false).repeat, 2);
}

TEST_F(HeldKeysTest, KeyFoundDownIsNobodysUntilItIsPressedAnew)
{
    fRouter.FocusChanged(0);
    fRouter.FocusChanged(kA);
    fRouter.KeysFoundDown({kReturn}, 1'000'000);
    EXPECT_EQ(Press(kA, 1'100'000, false).window, 0);

    EXPECT_EQ(Press(kA, 2'000'000, true).window, kA);
}

TEST(KeysDownTest, PressesBetweenReleasesAreRepeats)
{
    KeysDown keys;
    keys.Pressed(kReturn, 100);
    keys.Pressed(kReturn, 600);
    keys.Released(kReturn);
    keys.Pressed(kReturn, 700);

    // Asked for late: the second press and all releases are known by then.
    EXPECT_TRUE(keys.IsFirst(kReturn, 100));
    EXPECT_FALSE(keys.IsFirst(kReturn, 600));
    EXPECT_TRUE(keys.IsFirst(kReturn, 700));
}

TEST(KeysDownTest, TwoPressesOfOneMillisecondAreBothFirst)
{
    KeysDown keys;
    for (int press = 0; press < 2; ++press) {
        keys.Pressed(kReturn, 100);
        keys.Released(kReturn);
    }

    EXPECT_TRUE(keys.IsFirst(kReturn, 100));
    EXPECT_TRUE(keys.IsFirst(kReturn, 100));
}

TEST(KeysDownTest, KeyThatIsNotFoundDownWasReleasedUnseen)
{
    KeysDown keys;
    keys.Pressed(kReturn, 100);
    keys.Found({});
    keys.Pressed(kReturn, 900);

    EXPECT_TRUE(keys.IsFirst(kReturn, 900));
}

TEST(KeysDownTest, KeyFoundDownWasPressedElsewhere)
{
    KeysDown keys;
    keys.Found({kReturn});
    keys.Pressed(kReturn, 900);
    EXPECT_FALSE(keys.IsFirst(kReturn, 900));

    keys.Released(kReturn);
    keys.Pressed(kReturn, 1'000);
    EXPECT_TRUE(keys.IsFirst(kReturn, 1'000));
}

TEST(KeysDownTest, PressesThatNobodyAsksForAreForgottenInTheEnd)
{
    KeysDown keys;
    for (uint32 time = 1; time <= 10'000; ++time) {
        keys.Pressed(kReturn, time);
        keys.Released(kReturn);
    }

    EXPECT_FALSE(keys.IsFirst(kReturn, 1));
    EXPECT_TRUE(keys.IsFirst(kReturn, 10'000));
}

TEST(LoneAltTest, IsAloneWithNothingBetween)
{
    LoneAlt alt;

    EXPECT_FALSE(alt.Changed(0, B_OPTION_KEY, 100, 0));
    EXPECT_FALSE(alt.Changed(B_OPTION_KEY, B_OPTION_KEY, 150, 0)); // repeats, on some keyboards
    EXPECT_TRUE(alt.Changed(B_OPTION_KEY, 0, 200, 0));
}

TEST(LoneAltTest, LocksDoNotMatter)
{
    LoneAlt alt;

    alt.Changed(B_NUM_LOCK, B_NUM_LOCK | B_OPTION_KEY, 100, 0);
    EXPECT_TRUE(alt.Changed(B_NUM_LOCK | B_OPTION_KEY, B_NUM_LOCK, 200, 0));
}

TEST(LoneAltTest, IsNotAloneWithAnythingElse)
{
    LoneAlt alt;
    alt.Changed(0, B_OPTION_KEY, 100, 0);
    alt.Disturb();
    EXPECT_FALSE(alt.Changed(B_OPTION_KEY, 0, 200, 0));

    alt.Changed(0, B_OPTION_KEY, 300, 0);
    alt.Changed(B_OPTION_KEY, B_OPTION_KEY | B_SHIFT_KEY, 350, 0);
    alt.Changed(B_OPTION_KEY | B_SHIFT_KEY, B_OPTION_KEY, 380, 0);
    EXPECT_FALSE(alt.Changed(B_OPTION_KEY, 0, 400, 0));
}

TEST(LoneAltTest, IsNotAloneWhenAnotherProgramTookThePointerMeanwhile)
{
    LoneAlt alt;
    alt.Changed(0, B_OPTION_KEY, 100, 90);
    EXPECT_FALSE(alt.Changed(B_OPTION_KEY, 0, 200, 150));

    alt.Changed(0, B_OPTION_KEY, 300, 150);
    EXPECT_TRUE(alt.Changed(B_OPTION_KEY, 0, 400, 150));
}

} // namespace
