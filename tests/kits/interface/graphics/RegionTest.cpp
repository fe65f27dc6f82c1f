#include <Region.h>

#include <gtest/gtest.h>

namespace {

TEST(RectTest, IncludesItsRightAndBottomEdge)
{
    const BRect rect(1, 2, 10, 4);

    EXPECT_EQ(rect.Width(), 9);
    EXPECT_EQ(rect.IntegerHeight(), 2);
    EXPECT_TRUE(rect.Contains(BPoint(10, 4)));
    EXPECT_FALSE(rect.Contains(BPoint(10.5f, 4)));
    EXPECT_TRUE(rect.Intersects(BRect(10, 4, 20, 20)));
    EXPECT_FALSE(rect.Intersects(BRect(11, 4, 20, 20)));
    EXPECT_EQ(BRect(0, 0, 2.5f, 0).IntegerWidth(), 3);
}

TEST(RectTest, NewOneIsNotValid)
{
    EXPECT_FALSE(BRect().IsValid());
    EXPECT_FALSE((BRect(0, 0, 4, 4) & BRect(5, 0, 9, 4)).IsValid());
    EXPECT_EQ((BRect(0, 0, 4, 4) | BRect(5, 5, 9, 6)), BRect(0, 0, 9, 6));
}

TEST(RegionTest, ExcludesAHole)
{
    BRegion region(BRect(0, 0, 9, 9));

    region.Exclude(BRect(3, 3, 5, 5));

    EXPECT_EQ(region.CountRects(), 4);
    EXPECT_FALSE(region.Contains(BPoint(4, 4)));
    EXPECT_TRUE(region.Contains(BPoint(2, 4)));
    EXPECT_EQ(region.Frame(), BRect(0, 0, 9, 9));
    float pixels = 0;
    for (int32 i = 0; i < region.CountRects(); ++i) {
        pixels += (region.RectAt(i).Width() + 1) * (region.RectAt(i).Height() + 1);
    }
    EXPECT_EQ(pixels, 91);
    EXPECT_FALSE(region.RectAt(4).IsValid());
    EXPECT_FALSE(region.RectAt(-1).IsValid());
}

TEST(RegionTest, TakesNeighboursTogether)
{
    BRegion region(BRect(0, 0, 9, 9));

    region.Include(BRect(10, 0, 19, 9));

    EXPECT_EQ(region.CountRects(), 1);
    EXPECT_EQ(region.RectAt(0), BRect(0, 0, 19, 9));
}

TEST(RegionTest, CopiesShareNothing)
{
    BRegion one(BRect(0, 0, 9, 9));
    BRegion other(one);

    other.OffsetBy(5, 0);

    EXPECT_EQ(one.Frame(), BRect(0, 0, 9, 9));
    other.IntersectWith(&one);
    EXPECT_EQ(other.Frame(), BRect(5, 0, 9, 9));
}

TEST(RegionTest, EmptyOnes)
{
    BRegion region;
    const BRegion invalid(BRect(5, 5, 4, 9));

    region.Include(&invalid);

    EXPECT_TRUE(region.IsEmpty());
    EXPECT_EQ(region.CountRects(), 0);
    EXPECT_FALSE(region.Frame().IsValid());
    EXPECT_FALSE(region.Intersects(BRect(0, 0, 100, 100)));
    EXPECT_EQ(region, BRegion());
}

TEST(RegionTest, HugeRectanglesAreCut)
{
    BRegion region(BRect(-1e30f, -1e30f, 1e30f, 1e30f));

    EXPECT_TRUE(region.Contains(BPoint(1e6f, -1e6f)));
    EXPECT_EQ(region.CountRects(), 1);
}

TEST(RectTest, MovesItsCorners)
{
    BRect rect(0, 0, 9, 9);

    rect.SetLeftTop(BPoint(1, 2));
    EXPECT_EQ(rect, BRect(1, 2, 9, 9));
    rect.SetRightBottom(BPoint(7, 8));
    EXPECT_EQ(rect, BRect(1, 2, 7, 8));
    rect.SetRightTop(BPoint(6, 3));
    EXPECT_EQ(rect, BRect(1, 3, 6, 8));
    rect.SetLeftBottom(BPoint(2, 5));
    EXPECT_EQ(rect, BRect(2, 3, 6, 5));
    rect.OffsetTo(BPoint(0, 0));
    EXPECT_EQ(rect, BRect(0, 0, 4, 2));
}

TEST(RegionTest, ExcludesAnother)
{
    BRegion region(BRect(0, 0, 9, 9));
    BRegion corners(BRect(0, 0, 4, 4));
    corners.Include(BRect(5, 5, 9, 9));

    region.Exclude(&corners);

    EXPECT_FALSE(region.Contains(BPoint(0, 0)));
    EXPECT_TRUE(region.Contains(BPoint(5, 4)));
    EXPECT_EQ(region.CountRects(), 2);
    region.Exclude(&region);
    EXPECT_TRUE(region.IsEmpty());
}

} // namespace
