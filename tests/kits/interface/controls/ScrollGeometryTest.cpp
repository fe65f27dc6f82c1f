#include "interface/controls/ScrollGeometry.h"

#include <gtest/gtest.h>

namespace {

using kits::ScrollGeometry;
using Part = ScrollGeometry::Part;

// 200 units long with arrows of 15: a trough of 170.
ScrollGeometry Bar(float value, float max = 1000, float proportion = 0.5f)
{
    return ScrollGeometry(200, 15, {0, max, value, proportion});
}

TEST(ScrollGeometryTest, ThumbTakesItsShareOfTheTrough)
{
    EXPECT_EQ(Bar(0).ThumbLength(), 85);
    EXPECT_EQ(Bar(0).ThumbStart(), 15);
    EXPECT_EQ(Bar(1000).ThumbStart(), 100);
    EXPECT_EQ(Bar(500).ThumbStart(), 58);
}

TEST(ScrollGeometryTest, ThumbStaysLongEnoughToTake)
{
    EXPECT_EQ(Bar(0, 1e6f, 0.0001f).ThumbLength(), 12);
}

TEST(ScrollGeometryTest, NothingToScrollHasNoThumb)
{
    EXPECT_FALSE(Bar(0, 0).HasThumb());
    EXPECT_FALSE(Bar(0, 1000, 1).HasThumb());
    EXPECT_EQ(Bar(0, 0).PartAt(100), Part::kNone);
    EXPECT_EQ(Bar(0, 0).PartAt(3), Part::kLessArrow);
}

TEST(ScrollGeometryTest, PartsFollowEachOtherWithoutGap)
{
    const ScrollGeometry bar = Bar(500);

    EXPECT_EQ(bar.PartAt(-1), Part::kNone);
    EXPECT_EQ(bar.PartAt(14), Part::kLessArrow);
    EXPECT_EQ(bar.PartAt(15), Part::kLessPage);
    EXPECT_EQ(bar.PartAt(57), Part::kLessPage);
    EXPECT_EQ(bar.PartAt(58), Part::kThumb);
    EXPECT_EQ(bar.PartAt(142), Part::kThumb);
    EXPECT_EQ(bar.PartAt(143), Part::kMorePage);
    EXPECT_EQ(bar.PartAt(184), Part::kMorePage);
    EXPECT_EQ(bar.PartAt(185), Part::kMoreArrow);
    EXPECT_EQ(bar.PartAt(200), Part::kNone);
}

TEST(ScrollGeometryTest, ThumbFarOutsideMeansTheEnds)
{
    EXPECT_EQ(Bar(500).ValueOfThumbAt(-5000), 0);
    EXPECT_EQ(Bar(500).ValueOfThumbAt(5000), 1000);
}

TEST(ScrollGeometryTest, EndOfARangeThatIsNotWholeIsReached)
{
    EXPECT_EQ(Bar(0, 999.5f).ValueOfThumbAt(5000), 999.5f);
}

TEST(ScrollGeometryTest, ValuesAreWholeUnits)
{
    EXPECT_EQ(Bar(0).ValueOfThumbAt(16), 12);
}

TEST(ScrollGeometryTest, EveryThumbPlaceMeansAValueThatLeadsBack)
{
    for (float start = 15; start <= 100; start++) {
        const float value = Bar(0).ValueOfThumbAt(start);
        EXPECT_EQ(Bar(value).ThumbStart(), start);
    }
}

TEST(ScrollGeometryTest, ShortBarSharesItsLengthBetweenTheArrows)
{
    const ScrollGeometry bar(17, 15, {0, 100, 0, 0.5f});

    EXPECT_EQ(bar.ArrowLength(), 8);
    EXPECT_FALSE(bar.HasThumb());
    EXPECT_EQ(bar.PartAt(16), Part::kMoreArrow);
}

} // namespace
