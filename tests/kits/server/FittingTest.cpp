#include "server/Fitting.h"

#include <gtest/gtest.h>

using kits::FitPopUp;
using kits::FitWindow;

namespace {

constexpr QRect kScreen(0, 30, 1280, 770); // a panel takes the first thirty rows

} // namespace

TEST(FitWindowTest, LeavesAFrameThatFitsAlone)
{
    const QRect frame(100, 100, 640, 480);

    EXPECT_EQ(FitWindow(frame, kScreen, true), frame);
}

TEST(FitWindowTest, KeepsTheTitleBarReachable)
{
    EXPECT_EQ(FitWindow({0, 0, 640, 480}, kScreen, true), QRect(0, 54, 640, 480));
    EXPECT_EQ(FitWindow({0, 5000, 640, 480}, kScreen, true).top(), 30 + 770 - 24);
}

TEST(FitWindowTest, KeepsAHundredPixelsInSight)
{
    EXPECT_EQ(FitWindow({-2000, 100, 640, 480}, kScreen, true).right(), 99);
    EXPECT_EQ(FitWindow({5000, 100, 640, 480}, kScreen, true).left(), 1180);
}

TEST(FitWindowTest, IsNeverLargerThanTheScreen)
{
    EXPECT_EQ(FitWindow({0, 100, 3000, 2000}, kScreen, true).size(), QSize(1280, 746));
}

TEST(FitWindowTest, GivesAFramelessWindowTheWholeScreen)
{
    EXPECT_EQ(FitWindow(kScreen, kScreen, false), kScreen);
}

TEST(FitPopUpTest, ShiftsAMenuInside)
{
    EXPECT_EQ(FitPopUp({1200, 750, 200, 200}, kScreen), QRect(1080, 600, 200, 200));
    EXPECT_EQ(FitPopUp({-5, 0, 200, 200}, kScreen), QRect(0, 30, 200, 200));
}

TEST(FitPopUpTest, ShowsTheBeginningOfATooLongMenu)
{
    EXPECT_EQ(FitPopUp({10, 100, 200, 2000}, kScreen), QRect(10, 30, 200, 2000));
}
