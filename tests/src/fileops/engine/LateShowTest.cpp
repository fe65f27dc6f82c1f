#include "fileops/engine/LateShow.h"

#include <gtest/gtest.h>

namespace norvane {

constexpr bigtime_t kBegin = 5'000'000;

TEST(LateShowTest, IsNotDueWithinTheFirstSecond)
{
    LateShow late;
    late.Start(kBegin);
    EXPECT_FALSE(late.TakeDue(kBegin));
    EXPECT_FALSE(late.TakeDue(kBegin + 999'999));
}

TEST(LateShowTest, IsDueOnceAfterASecond)
{
    LateShow late;
    late.Start(kBegin);
    EXPECT_TRUE(late.TakeDue(kBegin + 1'000'001));
    EXPECT_FALSE(late.TakeDue(kBegin + 1'000'002));
}

TEST(LateShowTest, IsNeverDueUnlessItBegan)
{
    LateShow late;
    EXPECT_FALSE(late.TakeDue(kBegin));
}

} // namespace norvane
