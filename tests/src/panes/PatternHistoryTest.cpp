#include "panes/PatternHistory.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

TEST(PatternHistoryTest, KeepsTheLastTenOnceEach)
{
    PatternHistory history;
    for (int i = 1; i <= 12; i++) {
        history.Add(std::to_string(i));
    }
    history.Add("5");
    const std::vector<std::string> expected = {"5", "12", "11", "10", "9", "8", "7", "6", "4", "3"};
    EXPECT_EQ(history.Patterns(), expected);
}

TEST(HistoryWalkTest, GoesBackAndForth)
{
    HistoryWalk walk({"new", "old"});
    EXPECT_EQ(walk.Newer("typed"), "typed");
    EXPECT_EQ(walk.Older("typed"), "new");
    EXPECT_EQ(walk.Older("new"), "old");
    EXPECT_EQ(walk.Older("old"), "old");
    EXPECT_EQ(walk.Newer("old"), "new");
    EXPECT_EQ(walk.Newer("new"), "typed");
}

TEST(HistoryWalkTest, StepsOverTheOneThatIsThereAtFirst)
{
    HistoryWalk walk({"new", "old"});
    EXPECT_EQ(walk.Older("new"), "old");
    EXPECT_EQ(walk.Newer("old"), "new");
}

TEST(HistoryWalkTest, OfNothingLeavesWhatIsTyped)
{
    HistoryWalk walk({});
    EXPECT_EQ(walk.Older("typed"), "typed");
    EXPECT_EQ(walk.Newer("typed"), "typed");
}

} // namespace
