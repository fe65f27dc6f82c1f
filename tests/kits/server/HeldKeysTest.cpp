#include <InterfaceDefs.h>

#include "server/InputRouter.h"
#include "server/KeyTranslation.h"
#include "server/ShowRequest.h"

#include <gtest/gtest.h>

// Keys whose release is not seen, and Alt with nothing between its press and its release.

using kits::InputRouter;
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

    InputRouter::KeyTarget Press(int32 native, bigtime_t when,
                                 std::optional<bigtime_t> unseenRelease = std::nullopt)
    {
        return fRouter.KeyPressed({native, kReturn, false, when, unseenRelease}, when);
    }

    InputRouter fRouter;
};

TEST_F(HeldKeysTest, PressAfterAnUnseenReleaseIsFresh)
{
    Press(kA, 1'000'000);
    // Its release fell between two windows.
    fRouter.WillLeave(kA, 1'005'000);
    fRouter.Shown(kB, {}, false, 1'005'000);
    fRouter.FocusChanged(kB);

    const InputRouter::KeyTarget fresh = Press(kB, 2'000'000, 1'000'000);

    EXPECT_EQ(fresh.window, kB);
    EXPECT_EQ(fresh.repeat, 0);
}

TEST_F(HeldKeysTest, RepeatsOfThatPressAreRepeats)
{
    Press(kA, 1'000'000);
    Press(kA, 2'000'000, 1'000'000);

    EXPECT_EQ(Press(kA, 2'500'000, 1'000'000).repeat, 1);
    EXPECT_EQ(Press(kA, 2'530'000, 1'000'000).repeat, 2);
}

TEST_F(HeldKeysTest, UnseenReleaseOfAnOlderPressSaysNothingOfThisOne)
{
    Press(kA, 1'000'000);

    EXPECT_EQ(Press(kA, 1'500'000, 900'000).repeat, 1);
}

TEST_F(HeldKeysTest, KeyFoundDownIsNobodysUntilItsReleaseWentUnseen)
{
    fRouter.FocusChanged(0);
    fRouter.FocusChanged(kA);
    fRouter.KeysFoundDown({kReturn}, 1'000'000);
    EXPECT_EQ(Press(kA, 1'100'000).window, 0);

    EXPECT_EQ(Press(kA, 2'000'000, 1'100'000).window, kA);
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
