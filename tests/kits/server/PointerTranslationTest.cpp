#include <InterfaceDefs.h>

#include "server/PointerTranslation.h"

#include <gtest/gtest.h>

using kits::ClickCounter;
using kits::WheelSum;

namespace {

constexpr bigtime_t kInterval = 400'000;
constexpr int kDistance = 5;

ClickCounter::Press At(int32 window, QPoint where, bigtime_t when)
{
    return {window, B_PRIMARY_MOUSE_BUTTON, where, when};
}

} // namespace

TEST(ClickCounterTest, CountsPressesAtOnePlace)
{
    ClickCounter counter;

    EXPECT_EQ(counter.Count(At(1, {10, 10}, 0), kInterval, kDistance), 1);
    EXPECT_EQ(counter.Count(At(1, {12, 9}, 100'000), kInterval, kDistance), 2);
    EXPECT_EQ(counter.Count(At(1, {12, 9}, 500'000), kInterval, kDistance), 3);
}

TEST(ClickCounterTest, BeginsAnewAfterTheInterval)
{
    ClickCounter counter;
    counter.Count(At(1, {10, 10}, 0), kInterval, kDistance);

    EXPECT_EQ(counter.Count(At(1, {10, 10}, kInterval + 1), kInterval, kDistance), 1);
}

TEST(ClickCounterTest, BeginsAnewElsewhere)
{
    ClickCounter counter;
    counter.Count(At(1, {10, 10}, 0), kInterval, kDistance);

    EXPECT_EQ(counter.Count(At(1, {16, 10}, 1), kInterval, kDistance), 1);
    EXPECT_EQ(counter.Count(At(2, {16, 10}, 2), kInterval, kDistance), 1);
    EXPECT_EQ(counter.Count({2, B_SECONDARY_MOUSE_BUTTON, {16, 10}, 3}, kInterval, kDistance), 1);
}

TEST(ClickCounterTest, BeginsAnewWhenSomethingCameBetween)
{
    ClickCounter counter;
    counter.Count(At(1, {10, 10}, 0), kInterval, kDistance);

    counter.Reset();

    EXPECT_EQ(counter.Count(At(1, {10, 10}, 1), kInterval, kDistance), 1);
}

TEST(WheelSumTest, GivesTheDesktopsLinesPerNotch)
{
    WheelSum wheel;

    EXPECT_EQ(wheel.Add({0, -120}, 3), QPoint(0, 3));
    EXPECT_EQ(wheel.Add({0, 120}, 3), QPoint(0, -3));
    EXPECT_EQ(wheel.Add({-120, 0}, 3), QPoint(3, 0));
}

TEST(WheelSumTest, CarriesPartsOfALineOn)
{
    WheelSum wheel;

    EXPECT_EQ(wheel.Add({0, -30}, 3), QPoint(0, 0));
    EXPECT_EQ(wheel.Add({0, -30}, 3), QPoint(0, 1));
    EXPECT_EQ(wheel.Add({0, -60}, 3), QPoint(0, 2));
}

TEST(WheelSumTest, ForgetsTheRestWhenTurnedBack)
{
    WheelSum wheel;
    wheel.Add({0, -30}, 3);

    EXPECT_EQ(wheel.Add({0, 40}, 3), QPoint(0, -1));
}

TEST(ButtonsTest, NumbersTheButtonsAsThePlatformDoes)
{
    EXPECT_EQ(kits::ButtonsFrom(Qt::LeftButton | Qt::MiddleButton),
              uint32{B_PRIMARY_MOUSE_BUTTON | B_TERTIARY_MOUSE_BUTTON});
    EXPECT_EQ(kits::ButtonsFrom(Qt::RightButton), uint32{B_SECONDARY_MOUSE_BUTTON});
    EXPECT_EQ(kits::ButtonsFrom(Qt::NoButton), 0u);
}
