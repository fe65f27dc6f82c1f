#include "panes/ScrollIntoSight.h"

#include <gtest/gtest.h>

namespace {

using norvane::ScrolledToShow;

const BRect kSeen(100, 200, 199, 299);

TEST(ScrollIntoSightTest, StaysWhereAllIsSeen)
{
    EXPECT_EQ(ScrolledToShow(kSeen, kSeen), BPoint(100, 200));
    EXPECT_EQ(ScrolledToShow(kSeen, BRect(120, 220, 130, 230)), BPoint(100, 200));
}

TEST(ScrollIntoSightTest, ScrollsAsFarAsItMust)
{
    EXPECT_EQ(ScrolledToShow(kSeen, BRect(20, 150, 60, 169)), BPoint(20, 150));
    EXPECT_EQ(ScrolledToShow(kSeen, BRect(180, 290, 229, 309)), BPoint(130, 210));
}

TEST(ScrollIntoSightTest, ShowsTheBeginningOfWhatIsTooLarge)
{
    EXPECT_EQ(ScrolledToShow(kSeen, BRect(50, 250, 400, 600)), BPoint(50, 250));
}

} // namespace
