#include "ListWindowFixture.h"

#include <cmath>

namespace {

using namespace norvane;

/// How columns are dragged in the header strip. Columns of 40 units begin at 0, 41, 82, 123, ...
class ColumnDragTest : public ListWindowFixture
{
protected:
    static constexpr float kMiddle = 8; // of the strip's height

    static BPoint At(float x) { return BPoint(x, kMiddle); }

    void OpenWith(const std::vector<uint32>& flags)
    {
        Open();
        for (const uint32 columnFlags : flags) {
            AddColumn(40, columnFlags | CLV_SORT_KEYABLE);
        }
    }

    void Drag(float from, float to)
    {
        Press(At(from));
        Move(At((from + to) / 2));
        Move(At(to));
        Release(At(to));
    }

    std::vector<std::string> Told()
    {
        return Locked([&] { return fList->orders; });
    }
};

TEST_F(ColumnDragTest, AColumnGoesWhereItIsDropped)
{
    OpenWith({0, 0, 0});
    Drag(20, 70);
    EXPECT_EQ(Order(), "102");
    Drag(100, 20);
    EXPECT_EQ(Order(), "210");
    EXPECT_EQ(Told(), (std::vector<std::string>{"102", "210"}));
    EXPECT_EQ(Keys(), "");
}

TEST_F(ColumnDragTest, TheListKeepsItsOrderUntilTheRelease)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(110));
    EXPECT_EQ(Order(), "012");
    EXPECT_TRUE(Told().empty());
    Release(At(110));
    EXPECT_EQ(Order(), "120");
}

TEST_F(ColumnDragTest, AColumnThatIsBroughtBackStaysAndDoesNotSort)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(110));
    Move(At(22));
    Release(At(22));
    EXPECT_EQ(Order(), "012");
    EXPECT_TRUE(Told().empty());
    EXPECT_EQ(Keys(), "");
}

TEST_F(ColumnDragTest, AHandThatTremblesStillClicks)
{
    OpenWith({0, 0});
    Press(At(20));
    Move(BPoint(21, kMiddle + 1));
    Release(BPoint(21, kMiddle + 1));
    EXPECT_EQ(Keys(), "0a ");
    Press(At(20));
    Move(BPoint(20, kMiddle + 2));
    Release(At(20));
    EXPECT_EQ(Keys(), "0a ");
    Press(At(20));
    Release(At(25));
    EXPECT_EQ(Keys(), "0a ");
}

TEST_F(ColumnDragTest, AButtonThatIsHeldStillSorts)
{
    OpenWith({0, 0});
    Press(At(20));
    bigtime_t speed = 0;
    get_click_speed(&speed);
    snooze(2 * speed + 100'000); // the time itself is what is tested
    Settle();
    EXPECT_EQ(Keys(), "");
    Release(At(20));
    EXPECT_EQ(Keys(), "0a ");
}

TEST_F(ColumnDragTest, TiedColumnsMoveTogether)
{
    OpenWith({0, CLV_LOCK_WITH_RIGHT, 0, 0});
    Drag(100, 20); // the second of the pair
    EXPECT_EQ(Order(), "1203");
    Drag(100, 10);
    EXPECT_EQ(Order(), "0123");
}

TEST_F(ColumnDragTest, ColumnsThatShareACellMoveTogether)
{
    OpenWith({CLV_MERGE_WITH_RIGHT, 0, 0});
    Drag(20, 100);
    EXPECT_EQ(Order(), "201");
}

TEST_F(ColumnDragTest, AGroupIsPassedAsAWhole)
{
    OpenWith({0, CLV_LOCK_WITH_RIGHT, 0, 0});
    Drag(20, 55); // not yet past the middle of the two
    EXPECT_EQ(Order(), "0123");
    Drag(20, 75);
    EXPECT_EQ(Order(), "1203");
}

TEST_F(ColumnDragTest, LockedColumnsHoldTheirPlaces)
{
    OpenWith({CLV_LOCK_AT_BEGINNING, 0, 0, CLV_LOCK_AT_END});
    Drag(60, 0);
    EXPECT_EQ(Order(), "0123");
    Drag(60, 290);
    EXPECT_EQ(Order(), "0213");
    Drag(20, 110);
    Drag(140, 20);
    EXPECT_EQ(Order(), "0213");
    EXPECT_EQ(Keys(), "");
}

TEST_F(ColumnDragTest, AColumnThatMayNotBeMovedIsNotDragged)
{
    OpenWith({CLV_NOT_MOVABLE, CLV_LOCK_WITH_RIGHT, CLV_NOT_MOVABLE, 0});
    Drag(20, 110);
    Drag(60, 10); // tied to one that may not
    EXPECT_EQ(Order(), "0123");
    EXPECT_EQ(Keys(), "");
}

TEST_F(ColumnDragTest, HiddenColumnsAreNotCounted)
{
    OpenWith({0, CLV_HIDDEN, 0, CLV_HIDDEN | CLV_LOCK_WITH_RIGHT, 0});
    Drag(20, 70);
    EXPECT_EQ(Order(), "12034");
    Drag(100, 10);
    EXPECT_EQ(Order(), "13420");
}

TEST_F(ColumnDragTest, EscapePutsTheOldOrderBack)
{
    OpenWith({0, 0, 0});
    Locked([&] { fList->MakeFocus(); });
    Press(At(20));
    Move(At(110));
    kits::testing::TypeKey(B_ESCAPE);
    Settle();
    Move(At(112));
    Release(At(112));
    EXPECT_EQ(Order(), "012");
    EXPECT_EQ(Keys(), "");
}

TEST_F(ColumnDragTest, EscapeGivesAResizedColumnItsOldWidth)
{
    OpenWith({0, 0});
    Press(At(40));
    Move(At(90));
    EXPECT_EQ(Width(0), 90);
    kits::testing::TypeKey(B_ESCAPE);
    Settle();
    EXPECT_EQ(Width(0), 40);
    Move(At(95));
    EXPECT_EQ(Width(0), 40);
    Release(At(95));
}

TEST_F(ColumnDragTest, AWindowThatIsHiddenMeanwhileKeepsTheOldOrder)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(110));
    Locked([&] { fWindow->Hide(); });
    Settle();
    Release(At(110));
    Locked([&] { fWindow->Show(); });
    Settle();
    EXPECT_EQ(Order(), "012");
    EXPECT_TRUE(Told().empty());
}

TEST_F(ColumnDragTest, AWindowThatLosesTheKeyboardMeanwhileKeepsTheOldOrder)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(110));
    auto* other = new BWindow(BRect(500, 100, 600, 200), "other", B_TITLED_WINDOW, 0);
    other->Show();
    ASSERT_TRUE(kits::testing::WaitForFocus(other));
    Settle();
    Release(At(110));
    EXPECT_EQ(Order(), "012");
    ASSERT_TRUE(other->Lock());
    other->Quit();
}

TEST_F(ColumnDragTest, ColumnsThatChangeMeanwhileEndTheDrag)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(110));
    const std::unique_ptr<CLVColumn> taken(Locked([&] { return fList->ColumnAt(2); }));
    Locked([&] { return fList->RemoveColumn(taken.get()); });
    Release(At(110));
    EXPECT_EQ(Order(), "01");
    EXPECT_TRUE(Told().empty());
}

TEST_F(ColumnDragTest, AnotherButtonDoesNotDrop)
{
    OpenWith({0, 0, 0});
    Press(At(20));
    Move(At(70));
    Press(At(70), B_SECONDARY_MOUSE_BUTTON);
    Release(At(70), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Order(), "012");
    Release(At(70));
    EXPECT_EQ(Order(), "102");
}

TEST_F(ColumnDragTest, TheListScrollsToWhereAColumnIsDragged)
{
    Open();
    AddColumns({200, 200, 200});
    Press(At(100));
    Move(At(kWidth - 2));
    const auto left = [&] {
        return Locked([&] { return fList->Bounds().left; });
    };
    EXPECT_TRUE(kits::testing::WaitFor([&] { return left() == 602 - kWidth; }));
    Release(At(kWidth - 2));
    EXPECT_EQ(Order(), "120");
}

TEST_F(ColumnDragTest, TheDraggedCellFollowsThePointer)
{
    OpenWith({0, 0, 0, 0});
    Press(At(20));
    Move(At(57)); // its left edge to 37: the second column has not made room yet
    const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);
    const auto device = [&](float units) {
        return static_cast<int>(std::floor(units * picture.scale + 0.5f));
    };
    constexpr rgb_color kOutline = {96, 96, 96, 255};
    const int y = device(10);
    EXPECT_EQ(picture.At(device(37), y), kOutline);
    EXPECT_EQ(picture.At(device(77), y), kOutline);
    EXPECT_NE(picture.At(device(36), y), kOutline);
    Release(At(57));
}

TEST_F(ColumnDragTest, TheLastColumnGrowsBeyondTheView)
{
    Open();
    AddColumns({100, 150});
    Press(At(251));
    Move(At(700));
    Release(At(700));
    EXPECT_EQ(Width(1), 599);
    const float end = Locked([&] {
        float min = 0;
        float max = 0;
        fList->Container()->ScrollBar(B_HORIZONTAL)->GetRange(&min, &max);
        return max;
    });
    EXPECT_EQ(end, 700 - kWidth);
}

TEST_F(ColumnDragTest, ThePointerSaysWhereAnEdgeCanBeDragged)
{
    using kits::PointerShape;
    using kits::testing::PointerOver;
    OpenWith({0, CLV_NOT_RESIZABLE, 0});
    Move(At(20));
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
    for (const float edge : {38.0f, 40.0f, 42.0f}) {
        Move(At(edge));
        EXPECT_EQ(PointerOver(fWindow), PointerShape::kResizeHorizontal) << edge;
    }
    Move(At(43));
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
    Move(At(81)); // of the one that keeps its width
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
    Move(At(122));
    Move(BPoint(122, 60)); // on the rows
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
}

TEST_F(ColumnDragTest, ThePointerKeepsItsShapeWhileAnEdgeIsDragged)
{
    using kits::PointerShape;
    using kits::testing::PointerOver;
    OpenWith({0, 0});
    Move(At(40));
    Press(At(40));
    Move(BPoint(90, 100));
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kResizeHorizontal);
    Move(BPoint(5, 100)); // left of the smallest width
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kResizeHorizontal);
    Release(BPoint(5, 100));
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
}

TEST_F(ColumnDragTest, AClickOnTheArrowsPartOfACellSortsByTheColumnBesideIt)
{
    Open(true);
    Locked([&] { fList->AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER)); });
    AddColumn(100, CLV_SORT_KEYABLE);
    Click(At(10));
    EXPECT_EQ(Keys(), "1a ");
}

} // namespace
