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

namespace {

// A second screen right of the first one, lower than it.
const std::vector<QRect> kRooms = {kScreen, QRect(1280, 200, 800, 600)};

} // namespace

TEST(FitWindowTest, LeavesAFrameOnAnotherScreenAlone)
{
    const QRect frame(1400, 300, 400, 300);

    EXPECT_EQ(FitWindow(frame, kRooms, true), frame);
}

TEST(FitWindowTest, MovesAFrameThatNoScreenShowsOntoTheNearestWhole)
{
    EXPECT_EQ(FitWindow({3000, 300, 400, 300}, kRooms, true), QRect(1680, 300, 400, 300));
    EXPECT_EQ(FitWindow({-3000, -3000, 400, 300}, kRooms, true), QRect(0, 54, 400, 300));
    EXPECT_EQ(FitWindow({1700, 5000, 4000, 4000}, kRooms, true), QRect(1280, 224, 800, 576));
}

TEST(FitWindowTest, TakesTheScreenThatShowsMost)
{
    EXPECT_EQ(kits::AreaOf({1200, 300, 100, 100}, kRooms), 0);
    EXPECT_EQ(kits::AreaOf({1240, 300, 100, 100}, kRooms), 1);
    EXPECT_EQ(kits::AreaOf({0, 0, 10, 10}, {}), -1);
}
