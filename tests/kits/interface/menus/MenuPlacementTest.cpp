#include "interface/menus/MenuPlacement.h"

#include <gtest/gtest.h>

namespace {

using kits::MenuSide;
using kits::PlaceMenu;
using kits::PlaceMenuAt;

constexpr BRect kScreen(0, 0, 799, 599);

TEST(MenuPlacementTest, HangsUnderItsTitle)
{
    EXPECT_EQ(PlaceMenu(BRect(50, 1, 90, 18), 100, 200, kScreen, MenuSide::kBelow),
              BRect(50, 19, 150, 219));
}

TEST(MenuPlacementTest, GoesAboveATitleAtTheScreensFoot)
{
    EXPECT_EQ(PlaceMenu(BRect(50, 550, 90, 568), 100, 200, kScreen, MenuSide::kBelow),
              BRect(50, 349, 150, 549));
}

TEST(MenuPlacementTest, IsShiftedFromTheRightEdge)
{
    EXPECT_EQ(PlaceMenu(BRect(750, 1, 790, 18), 100, 200, kScreen, MenuSide::kBelow),
              BRect(699, 19, 799, 219));
}

TEST(MenuPlacementTest, SubmenuOpensBesideItsItem)
{
    EXPECT_EQ(PlaceMenu(BRect(50, 100, 150, 118), 80, 60, kScreen, MenuSide::kRight),
              BRect(151, 100, 231, 160));
}

TEST(MenuPlacementTest, SubmenuAtTheRightEdgeOpensToTheLeft)
{
    EXPECT_EQ(PlaceMenu(BRect(690, 100, 790, 118), 80, 60, kScreen, MenuSide::kRight),
              BRect(609, 100, 689, 160));
}

TEST(MenuPlacementTest, WhereNoSideHasRoomItIsShifted)
{
    EXPECT_EQ(PlaceMenu(BRect(10, 100, 790, 118), 80, 60, kScreen, MenuSide::kRight),
              BRect(719, 100, 799, 160));
}

TEST(MenuPlacementTest, TallerThanTheScreenIsCutToIt)
{
    EXPECT_EQ(PlaceMenu(BRect(50, 1, 90, 18), 100, 2000, kScreen, MenuSide::kBelow),
              BRect(50, 0, 150, 599));
}

TEST(MenuPlacementTest, MenuAtAPlaceStaysOnTheScreen)
{
    EXPECT_EQ(PlaceMenuAt(BPoint(50, 70), 100, 200, kScreen), BRect(50, 70, 150, 270));
    EXPECT_EQ(PlaceMenuAt(BPoint(-8, -30), 100, 200, kScreen), BRect(0, 0, 100, 200));
    EXPECT_EQ(PlaceMenuAt(BPoint(750, 550), 100, 200, kScreen), BRect(699, 399, 799, 599));
    EXPECT_EQ(PlaceMenuAt(BPoint(50, 70), 100, 900, kScreen), BRect(50, 0, 150, 599));
}

} // namespace
