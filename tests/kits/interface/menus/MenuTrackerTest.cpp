#include "interface/menus/MenuTracker.h"

#include <InterfaceDefs.h>

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

namespace {

using kits::MenuTracker;

// A bar of three titles, 100 units broad and 10 high each. The menu of each hangs under it, its
// items 10 high:
//   A: a0, (separator), a2, a3 with the submenu s0, s1 at its right
//   B: b0, b1
//   C: has no menu
// What happens is written into a log.
class FakeMenus : public MenuTracker::Menus
{
public:
    int32 CountItems(int32 level) const override
    {
        if (level == 0) {
            return 3;
        }
        if (level == 2) {
            return 2;
        }
        return open[0] == 0 ? 4 : 2;
    }

    bool IsEnabled(int32 level, int32 item) const override
    {
        return item >= 0 && !(level == 1 && open[0] == 0 && item == 1);
    }

    bool HasSubmenu(int32 level, int32 item) const override
    {
        return level == 0 ? item < 2 : (level == 1 && open[0] == 0 && item == 3);
    }

    MenuTracker::Place PlaceAt(BPoint at) const override
    {
        const auto column = static_cast<int32>(at.x) / 100;
        const auto row = static_cast<int32>(at.y) / 10;
        if (at.x < 0 || at.y < 0) {
            return {};
        }
        if (open.size() == 2 && column == open[0] + 1 && row >= 4 && row < 6) {
            return {2, row - 4};
        }
        if (!open.empty() && column == open[0] && row >= 1 && row <= CountItems(1)) {
            return {1, row - 1};
        }
        return row == 0 && column < 3 ? MenuTracker::Place{0, column} : MenuTracker::Place{};
    }

    int32 FindByLetter(int32 level, int32, const char* letter, bool* isTrigger) const override
    {
        *isTrigger = std::isupper(static_cast<unsigned char>(letter[0])) != 0;
        return level == 1 && (letter[0] == 'c' || letter[0] == 'C') ? 2 : -1;
    }

    void Select(int32 level, int32 item) override
    {
        log += " select" + std::to_string(level) + ":" + std::to_string(item);
    }

    void Open(int32 level, int32 item) override
    {
        open.push_back(item);
        log += " open" + std::to_string(level) + ":" + std::to_string(item);
    }

    void CloseAbove(int32 level) override
    {
        open.resize(static_cast<size_t>(level));
        log += " close" + std::to_string(level);
    }

    void Choose(int32 level, int32 item) override
    {
        open.clear();
        log += " choose" + std::to_string(level) + ":" + std::to_string(item);
    }

    void End() override
    {
        open.clear();
        log += " end";
    }

    std::vector<int32> open;
    std::string log;
};

class MenuTrackerTest : public ::testing::Test
{
protected:
    // Opens A by a click, which leaves it open.
    void ClickTitle()
    {
        fTracker.StartByPress(0, kTitle, 0);
        fTracker.Release(kTitle, 100'000);
        fMenus.log.clear();
    }

    static constexpr BPoint kTitle{50, 5};
    static constexpr BPoint kFirst{50, 15};
    static constexpr BPoint kSeparator{50, 25};
    static constexpr BPoint kThird{50, 35};
    static constexpr BPoint kOpener{50, 45}; // of the submenu
    static constexpr BPoint kSubmenuItem{150, 55};
    static constexpr BPoint kTitleB{150, 5};
    static constexpr BPoint kTitleC{250, 5};
    static constexpr BPoint kFarOff{700, 400};

    FakeMenus fMenus;
    MenuTracker fTracker{fMenus};
};

TEST_F(MenuTrackerTest, PressOpensTheMenu)
{
    fTracker.StartByPress(0, kTitle, 0);

    EXPECT_EQ(fMenus.log, " select0:0 open0:0");
    EXPECT_EQ(fTracker.CountLevels(), 2);
}

TEST_F(MenuTrackerTest, DragToAnItemAndReleaseChooses)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Move(kThird);
    fTracker.Release(kThird, 200'000);

    EXPECT_TRUE(fMenus.log.ends_with(" select1:2 choose1:2"));
    EXPECT_FALSE(fTracker.IsActive());
}

TEST_F(MenuTrackerTest, ClickLeavesTheMenuOpenForASecondClick)
{
    ClickTitle();
    EXPECT_TRUE(fTracker.IsActive());

    fTracker.Move(kFirst);
    fTracker.Press(kFirst, 3'000'000);
    fTracker.Release(kFirst, 3'100'000);

    EXPECT_TRUE(fMenus.log.ends_with(" choose1:0"));
}

TEST_F(MenuTrackerTest, LongPressOnTheTitleCloses)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Release(kTitle, 500'001);

    EXPECT_FALSE(fTracker.IsActive());
    EXPECT_TRUE(fMenus.log.ends_with(" end"));
}

TEST_F(MenuTrackerTest, QuickDragOverSevenUnitsIsNoClick)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Release(BPoint(kTitle.x + 7, kTitle.y), 100'000);

    EXPECT_FALSE(fTracker.IsActive());
}

TEST_F(MenuTrackerTest, ReleaseOutsideClosesWithoutChoosing)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Move(kFirst);
    fTracker.Move(kFarOff);
    fTracker.Release(kFarOff, 900'000);

    EXPECT_EQ(fMenus.log, " select0:0 open0:0 select1:0 select1:-1 end");
}

TEST_F(MenuTrackerTest, ReleaseOnASeparatorKeepsTheMenu)
{
    ClickTitle();
    fTracker.Press(kSeparator, 1'000'000);
    fTracker.Release(kSeparator, 1'100'000);

    EXPECT_TRUE(fTracker.IsActive());
}

TEST_F(MenuTrackerTest, PressOutsideCloses)
{
    ClickTitle();
    fTracker.Press(kFarOff, 1'000'000);

    EXPECT_EQ(fMenus.log, " end");
}

TEST_F(MenuTrackerTest, PressOnTheOpenTitleCloses)
{
    ClickTitle();
    fTracker.Press(kTitle, 1'000'000);

    EXPECT_FALSE(fTracker.IsActive());
}

TEST_F(MenuTrackerTest, PointerOverAnotherTitleOpensItsMenu)
{
    ClickTitle();
    fTracker.Move(kTitleB);

    EXPECT_EQ(fMenus.log, " close0 select0:1 open0:1");
}

TEST_F(MenuTrackerTest, TitleWithoutMenuIsOnlyCurrent)
{
    ClickTitle();
    fTracker.Move(kTitleC);

    EXPECT_EQ(fMenus.log, " close0 select0:2");
    EXPECT_EQ(fTracker.CountLevels(), 1);
}

TEST_F(MenuTrackerTest, TitleWithoutMenuIsChosenByItsRelease)
{
    fTracker.StartByPress(2, kTitleC, 0);
    fTracker.Release(kTitleC, 100'000);

    EXPECT_EQ(fMenus.log, " select0:2 choose0:2");
}

TEST_F(MenuTrackerTest, SubmenuOpensAndItsItemCanBeChosen)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Move(kOpener);
    fTracker.Move(kSubmenuItem);
    fTracker.Release(kSubmenuItem, 900'000);

    EXPECT_TRUE(fMenus.log.ends_with(" select1:3 open1:3 select2:1 choose2:1"));
}

TEST_F(MenuTrackerTest, ReleaseOnTheOpenerOfASubmenuKeepsBoth)
{
    fTracker.StartByPress(0, kTitle, 0);
    fTracker.Move(kOpener);
    fTracker.Release(kOpener, 900'000);

    EXPECT_EQ(fTracker.CountLevels(), 3);
}

TEST_F(MenuTrackerTest, SecondButtonChangesNothing)
{
    fTracker.StartByPress(0, kTitle, 0);
    const std::string before = fMenus.log;

    fTracker.Press(kFarOff, 10'000);

    EXPECT_EQ(fMenus.log, before);
}

TEST_F(MenuTrackerTest, KeyOpensWithTheFirstItemCurrent)
{
    fTracker.StartByKey();

    EXPECT_EQ(fMenus.log, " select0:0 open0:0 select1:0");
}

TEST_F(MenuTrackerTest, ArrowsStepOverWhatCannotBeChosenAndGoRound)
{
    fTracker.StartByKey();

    fTracker.Key("\x1f"); // down
    EXPECT_EQ(fTracker.Selected(1), 2);

    fTracker.Key("\x1f");
    fTracker.Key("\x1f");
    EXPECT_EQ(fTracker.Selected(1), 0);

    fTracker.Key("\x1e"); // up
    EXPECT_EQ(fTracker.Selected(1), 3);
}

TEST_F(MenuTrackerTest, RightEntersASubmenuAndLeftLeavesIt)
{
    fTracker.StartByKey();
    fTracker.Key("\x1e");

    fTracker.Key("\x1d"); // right
    EXPECT_EQ(fTracker.CountLevels(), 3);
    EXPECT_EQ(fTracker.Selected(2), 0);

    fTracker.Key("\x1c"); // left
    EXPECT_EQ(fTracker.CountLevels(), 2);
    EXPECT_EQ(fTracker.Selected(1), 3);
}

TEST_F(MenuTrackerTest, RightAndLeftWalkTheBarRoundItsEnds)
{
    fTracker.StartByKey();

    fTracker.Key("\x1d");
    EXPECT_EQ(fTracker.Selected(0), 1);
    EXPECT_EQ(fTracker.Selected(1), 0);

    fTracker.Key("\x1c");
    fTracker.Key("\x1c");
    EXPECT_EQ(fTracker.Selected(0), 2);
    EXPECT_EQ(fTracker.CountLevels(), 1);

    fTracker.Key("\x1d");
    EXPECT_EQ(fTracker.Selected(0), 0);
}

TEST_F(MenuTrackerTest, EscapeLeavesLevelByLevel)
{
    fTracker.StartByKey();
    fTracker.Key("\x1e");
    fTracker.Key("\x1d");

    fTracker.Key("\x1b");
    EXPECT_EQ(fTracker.CountLevels(), 2);

    fTracker.Key("\x1b");
    EXPECT_FALSE(fTracker.IsActive());
}

TEST_F(MenuTrackerTest, EnterChoosesTheCurrentItem)
{
    fTracker.StartByKey();
    fTracker.Key("\x1f");

    fTracker.Key("\n");

    EXPECT_TRUE(fMenus.log.ends_with(" choose1:2"));
}

TEST_F(MenuTrackerTest, LetterSelectsAndATriggerChooses)
{
    fTracker.StartByKey();

    fTracker.Key("c");
    EXPECT_EQ(fTracker.Selected(1), 2);
    EXPECT_TRUE(fTracker.IsActive());

    fTracker.Key("C");
    EXPECT_TRUE(fMenus.log.ends_with(" choose1:2"));
}

TEST_F(MenuTrackerTest, ClickThatOpensAMenuWithoutBarLeavesItOpen)
{
    fTracker.StartWithoutBarByPress(2, kTitleC, 0);
    fTracker.Release(kTitleC, 100'000);
    EXPECT_TRUE(fTracker.IsActive());
    EXPECT_EQ(fTracker.Selected(0), 2);

    fTracker.Press(kTitleC, 900'000);
    fTracker.Release(kTitleC, 1'000'000);
    EXPECT_TRUE(fMenus.log.ends_with(" choose0:2"));
}

TEST_F(MenuTrackerTest, LongPressThatOpensAMenuWithoutBarChooses)
{
    fTracker.StartWithoutBarByPress(0, kTitle, 0);
    fTracker.Move(kTitleC);
    fTracker.Release(kTitleC, 600'000);

    EXPECT_TRUE(fMenus.log.ends_with(" choose0:2"));
}

TEST_F(MenuTrackerTest, MenuWithoutBarBeginsAtItsCurrentItem)
{
    fTracker.StartWithoutBar(1);
    EXPECT_EQ(fTracker.Selected(0), 1);

    fTracker.Key("\x1f"); // down
    EXPECT_EQ(fTracker.Selected(0), 2);
}

TEST_F(MenuTrackerTest, NothingHappensAfterTheEnd)
{
    ClickTitle();
    fTracker.Cancel();
    fMenus.log.clear();

    fTracker.Move(kFirst);
    fTracker.Press(kFirst, 0);
    fTracker.Release(kFirst, 0);
    fTracker.Key("\n");
    fTracker.Cancel();

    EXPECT_EQ(fMenus.log, "");
}

} // namespace
