#include "panes/PaneLayout.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

TEST(PaneLayoutTest, StacksHeaderListAndFooter)
{
    const PaneLayout layout = LayOutPane(400, 600, {true, true});
    EXPECT_EQ(layout.headerWidth, 400);
    EXPECT_EQ(layout.headerHeight, 22);
    EXPECT_EQ(layout.listPlace, BPoint(0, 24));
    EXPECT_EQ(layout.listWidth, 385);
    EXPECT_EQ(layout.listHeight, 600 - 14 - 25 - 25);
    EXPECT_EQ(layout.footerPlace, BPoint(0, 600 - 64 - 20 + 45 + 14));
    EXPECT_EQ(layout.footerWidth, 399);
    EXPECT_EQ(layout.footerHeight, 22);
}

TEST(PaneLayoutTest, GivesTheRoomOfHiddenStripsToTheList)
{
    const PaneLayout layout = LayOutPane(400, 600, {false, false});
    EXPECT_EQ(layout.listPlace, BPoint(0, 0));
    EXPECT_EQ(layout.listHeight, 600 - 15);
}

TEST(PaneLayoutTest, OnAServerTheButtonStandsBesideTheHeaderAndTheLogBelowTheList)
{
    const PaneLayout layout = LayOutPane(400, 600, {true, true, true});
    EXPECT_EQ(layout.headerWidth, 300);
    EXPECT_EQ(layout.buttonPlace, BPoint(301, 0));
    EXPECT_EQ(layout.buttonWidth, 99);
    EXPECT_EQ(layout.listHeight, 600 - 14 - 25 - 75);
    EXPECT_EQ(layout.logPlace, BPoint(0, 600 - 25 - 50));
    EXPECT_EQ(layout.logWidth, 399);
    EXPECT_EQ(layout.logHeight, 49);
    EXPECT_EQ(layout.footerPlace, LayOutPane(400, 600, {true, true}).footerPlace);
}

TEST(PaneLayoutTest, TheFilterStandsBetweenTheListAndWhatIsBelow)
{
    const PaneLayout layout = LayOutPane(400, 600, {true, true, false, true});
    const PaneLayout without = LayOutPane(400, 600, {true, true});
    EXPECT_EQ(layout.listHeight, without.listHeight - 24);
    EXPECT_EQ(layout.filterPlace, BPoint(0, 600 - 25 - 24 + 1));
    EXPECT_EQ(layout.filterWidth, 399);
    EXPECT_LT(layout.filterPlace.y + layout.filterHeight, layout.footerPlace.y);
    EXPECT_EQ(layout.footerPlace, without.footerPlace);

    const PaneLayout onServer = LayOutPane(400, 600, {true, true, true, true});
    EXPECT_LT(onServer.filterPlace.y + onServer.filterHeight, onServer.logPlace.y);
    EXPECT_EQ(onServer.logPlace, LayOutPane(400, 600, {true, true, true}).logPlace);

    EXPECT_EQ(LayOutPane(400, 600, {false, false, false, true}).listHeight, 600 - 15 - 24);
    EXPECT_GE(LayOutPane(-10, 5, {true, true, true, true}).filterWidth, 0);
}

TEST(PaneLayoutTest, WithoutAHeaderThereIsNoButton)
{
    const PaneLayout layout = LayOutPane(400, 600, {false, true, true});
    EXPECT_EQ(layout.buttonWidth, 0);
    EXPECT_EQ(layout.listPlace, BPoint(0, 0));
}

TEST(PaneLayoutTest, NeverGoesBelowZero)
{
    const PaneLayout onServer = LayOutPane(40, 30, {true, true, true});
    EXPECT_EQ(onServer.headerWidth, 0);
    EXPECT_EQ(onServer.listHeight, 0);
    EXPECT_GE(onServer.logHeight, 0);
    EXPECT_LE(onServer.buttonWidth, 40);

    const PaneLayout layout = LayOutPane(-10, 5, {true, true});
    EXPECT_EQ(layout.headerWidth, 0);
    EXPECT_EQ(layout.listWidth, 0);
    EXPECT_EQ(layout.listHeight, 0);
    EXPECT_EQ(layout.footerWidth, 0);
}

} // namespace
