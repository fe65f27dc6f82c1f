#include "interface/controls/TabWidths.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using Widths = std::vector<float>;

TEST(TabWidthsTest, AllGetWhatTheyLikeWhileThereIsRoom)
{
    EXPECT_EQ(kits::ShareTabWidths({75, 75, 120}, {30, 40, 120}, 270), Widths({75, 75, 120}));
}

TEST(TabWidthsTest, AirGoesBeforeLetters)
{
    EXPECT_EQ(kits::ShareTabWidths({75, 75, 120}, {30, 40, 120}, 269), Widths({30, 40, 120}));
    EXPECT_EQ(kits::ShareTabWidths({75, 75, 120}, {30, 40, 120}, 190), Widths({30, 40, 120}));
}

TEST(TabWidthsTest, OnlyTheWidestAreCutAndAllAlike)
{
    EXPECT_EQ(kits::ShareTabWidths({30, 200, 100, 90}, {30, 200, 100, 90}, 270),
              Widths({30, 80, 80, 80}));
    EXPECT_EQ(kits::ShareTabWidths({30, 200, 60}, {30, 200, 60}, 190), Widths({30, 100, 60}));
}

TEST(TabWidthsTest, SumNeverExceedsTheRoom)
{
    for (float room = 3; room < 300; room += 1) {
        const Widths widths = kits::ShareTabWidths({75, 75, 120}, {31, 42, 120}, room);
        EXPECT_LE(std::accumulate(widths.begin(), widths.end(), 0.0f), room);
    }
}

TEST(TabWidthsTest, BordersOfNothing)
{
    EXPECT_TRUE(kits::ShareTabWidths({}, {}, 100).empty());
    EXPECT_EQ(kits::ShareTabWidths({75}, {30}, -5), Widths({1}));
}

} // namespace
