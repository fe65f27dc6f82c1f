#include "panes/PlaceHistory.h"

#include <gtest/gtest.h>

namespace norvane {

namespace {

class PlaceHistoryTest : public ::testing::Test
{
protected:
    using Step = PlaceHistory::Step;

    std::string Go(Step step)
    {
        const PlaceHistory::Place* place = fHistory.Ask(step);
        return place == nullptr ? "(end)" : fHistory.Arrive().folder;
    }
    std::string Back() { return Go(Step::kBack); }
    std::string Forward() { return Go(Step::kForward); }
    std::string Asked(Step step)
    {
        const PlaceHistory::Place* place = fHistory.Ask(step);
        return place == nullptr ? "(end)" : place->folder;
    }

    void ShowAll(const std::string& letters)
    {
        for (const char letter : letters) {
            fHistory.Show(std::string(1, letter));
        }
    }

    PlaceHistory fHistory;
};

} // namespace

TEST_F(PlaceHistoryTest, GoesBackAndForward)
{
    EXPECT_EQ(Back(), "(end)");
    EXPECT_EQ(Forward(), "(end)");
    ShowAll("abc");
    EXPECT_EQ(Forward(), "(end)");
    EXPECT_EQ(Back(), "b");
    EXPECT_EQ(Back(), "a");
    EXPECT_EQ(Back(), "(end)");
    EXPECT_EQ(Forward(), "b");
    EXPECT_EQ(Forward(), "c");
}

TEST_F(PlaceHistoryTest, GoingSomewhereElseForgetsWhatWasForward)
{
    ShowAll("abc");
    Back();
    Back();
    fHistory.Show("a"); // the same: nothing is forgotten
    EXPECT_EQ(Forward(), "b");
    fHistory.Show("d");
    EXPECT_EQ(Forward(), "(end)");
    EXPECT_EQ(Back(), "b");
}

TEST_F(PlaceHistoryTest, CountsFromWhatWasAskedForLast)
{
    ShowAll("abcd");
    EXPECT_EQ(Asked(Step::kBack), "c");
    EXPECT_EQ(Asked(Step::kBack), "b");
    EXPECT_EQ(Asked(Step::kForward), "c");
    EXPECT_EQ(Asked(Step::kBack), "b");
    EXPECT_EQ(fHistory.Arrive().folder, "b");
    EXPECT_EQ(Back(), "a");
    Asked(Step::kForward);
    fHistory.Forget();
    EXPECT_EQ(Asked(Step::kForward), "b");
}

TEST_F(PlaceHistoryTest, PassesOverWhatIsGone)
{
    ShowAll("abc");
    EXPECT_EQ(Asked(Step::kBack), "b");
    fHistory.Fail();
    EXPECT_EQ(Asked(Step::kBack), "a");
    EXPECT_EQ(fHistory.Arrive().folder, "a");
    EXPECT_EQ(Forward(), "c");
    EXPECT_EQ(Asked(Step::kBack), "a");
    fHistory.Fail();
    EXPECT_EQ(Back(), "(end)");
    fHistory.Fail(); // nothing was asked for
    EXPECT_EQ(Forward(), "(end)");
}

TEST_F(PlaceHistoryTest, TheSameOnBothSidesOfWhatIsGoneIsOnePlace)
{
    ShowAll("xaba");
    EXPECT_EQ(Asked(Step::kBack), "b");
    fHistory.Fail();
    EXPECT_EQ(Back(), "x");
    EXPECT_EQ(Forward(), "a");
    EXPECT_EQ(Forward(), "(end)");
}

TEST_F(PlaceHistoryTest, FromWhatIsNoFolderItIsOneStepToTheFolderBefore)
{
    fHistory.ShowOther(); // first of all
    EXPECT_EQ(Back(), "(end)");
    ShowAll("ab");
    fHistory.ShowOther();
    EXPECT_EQ(Forward(), "(end)");
    EXPECT_EQ(Back(), "b");
    fHistory.ShowOther();
    EXPECT_EQ(Asked(Step::kBack), "b");
    EXPECT_EQ(Asked(Step::kBack), "a");
    fHistory.Show("b"); // come back to by another way
    EXPECT_EQ(Back(), "a");
}

TEST_F(PlaceHistoryTest, KeepsHowEachWasLookedAt)
{
    ShowAll("a");
    fHistory.NoteView({"one", 20});
    ShowAll("b");
    fHistory.NoteView({"two", 40});
    fHistory.ShowOther();
    fHistory.NoteView({"a hit", 60}); // not the folder's
    ASSERT_NE(fHistory.Ask(Step::kBack), nullptr);
    EXPECT_EQ(fHistory.Arrive().view.selected, "two");
    ASSERT_NE(fHistory.Ask(Step::kBack), nullptr);
    EXPECT_EQ(fHistory.Arrive().view.selected, "one");
    EXPECT_EQ(fHistory.Ask(Step::kForward)->view.top, 40);
}

TEST_F(PlaceHistoryTest, FollowsAFolderThatIsRenamed)
{
    ShowAll("ab");
    fHistory.Rename("c");
    Back();
    EXPECT_EQ(Forward(), "c");
    fHistory.ShowOther();
    fHistory.Rename("d"); // the folder is not shown
    EXPECT_EQ(Back(), "c");
}

TEST_F(PlaceHistoryTest, KeepsSoManyAndNoMore)
{
    for (size_t i = 0; i <= PlaceHistory::kMost + 5; i++) {
        fHistory.Show(std::to_string(i));
    }
    size_t steps = 0;
    std::string last;
    for (std::string place = Back(); place != "(end)"; place = Back()) {
        last = place;
        steps++;
    }
    EXPECT_EQ(steps, PlaceHistory::kMost - 1);
    EXPECT_EQ(last, "6");
}

} // namespace norvane
