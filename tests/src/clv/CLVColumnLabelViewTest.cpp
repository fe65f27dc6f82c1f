#include "clv/CLVColumnLabelView.h"

#include "ListWindowFixture.h"

namespace {

using namespace norvane;

/// What presses on the header strip do.
class CLVColumnLabelViewTest : public ListWindowFixture
{
protected:
    static constexpr float kMiddle = 8; // of the strip's height
};

TEST_F(CLVColumnLabelViewTest, SortsByTheClickedColumnUntilTheThirdClick)
{
    Open();
    AddColumns({100, 100});
    Click(BPoint(50, kMiddle));
    EXPECT_EQ(Keys(), "0a ");
    Click(BPoint(50, kMiddle));
    EXPECT_EQ(Keys(), "0d ");
    Click(BPoint(50, kMiddle));
    EXPECT_EQ(Keys(), "");
}

TEST_F(CLVColumnLabelViewTest, ShiftAddsAKeyAndLeavesTheFirstAlone)
{
    Open();
    AddColumns({100, 100});
    Click(BPoint(50, kMiddle));
    Click(BPoint(50, kMiddle));
    Click(BPoint(150, kMiddle), B_PRIMARY_MOUSE_BUTTON, B_SHIFT_KEY);
    EXPECT_EQ(Keys(), "0d 1a ");
    Click(BPoint(150, kMiddle));
    EXPECT_EQ(Keys(), "1a ");
}

TEST_F(CLVColumnLabelViewTest, APressThatLeavesItsCellDoesNotSort)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(50, kMiddle));
    Move(BPoint(150, kMiddle));
    Release(BPoint(150, kMiddle));
    EXPECT_EQ(Keys(), "");
}

TEST_F(CLVColumnLabelViewTest, NeverMakesAColumnNarrowerThanItsMinimum)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(100, kMiddle));
    Move(BPoint(3, kMiddle));
    EXPECT_EQ(Width(0), 20);
    Release(BPoint(3, kMiddle));
}

TEST_F(CLVColumnLabelViewTest, ANarrowedColumnFollowsThePointerWhereTheListIsScrolledRight)
{
    Open();
    AddColumns({250, 250});
    ScrollTo(501 - kWidth, 0);
    const float edge = kWidth; // of the second column, as far right as the strip goes
    Press(BPoint(edge, kMiddle));
    for (const float step : {10.0f, 20.0f, 30.0f, 60.0f}) {
        Move(BPoint(edge - step, kMiddle));
        EXPECT_EQ(Width(1), 250 - step);
    }
    Move(BPoint(edge, kMiddle));
    EXPECT_EQ(Width(1), 250);
    Release(BPoint(edge, kMiddle));
}

TEST_F(CLVColumnLabelViewTest, OnlyThePrimaryButtonSortsAndResizes)
{
    Open();
    AddColumns({100, 100});
    for (const uint32 button : {B_SECONDARY_MOUSE_BUTTON, B_TERTIARY_MOUSE_BUTTON}) {
        Click(BPoint(50, kMiddle), button);
        EXPECT_EQ(Keys(), "");
        Press(BPoint(100, kMiddle), button);
        Move(BPoint(130, kMiddle));
        EXPECT_EQ(Width(0), 100);
        Release(BPoint(130, kMiddle), button);
    }
}

TEST_F(CLVColumnLabelViewTest, AnotherButtonLeavesAResizeAsItIs)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(100, kMiddle));
    Move(BPoint(120, kMiddle));
    Press(BPoint(120, kMiddle), B_SECONDARY_MOUSE_BUTTON);
    Move(BPoint(140, kMiddle));
    EXPECT_EQ(Width(0), 140);
    Release(BPoint(140, kMiddle), B_SECONDARY_MOUSE_BUTTON);
    Move(BPoint(150, kMiddle));
    EXPECT_EQ(Width(0), 150);
    Release(BPoint(150, kMiddle));
    Move(BPoint(170, kMiddle));
    EXPECT_EQ(Width(0), 150);
    EXPECT_EQ(Keys(), "");
}

TEST_F(CLVColumnLabelViewTest, AnotherButtonOnACellDoesNotMakeAResizeAClick)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(100, kMiddle));
    const BPoint inside(5, kMiddle); // the edge stays at the column's minimum
    Move(inside);
    Press(inside, B_SECONDARY_MOUSE_BUTTON);
    Release(inside);
    Release(inside, B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Keys(), "");
}

TEST_F(CLVColumnLabelViewTest, AColumnThatIsTakenOutIsNotResizedAnyMore)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(100, kMiddle));
    const std::unique_ptr<CLVColumn> taken(Locked([&] { return fList->ColumnAt(0); }));
    Locked([&] { return fList->RemoveColumn(taken.get()); });
    Move(BPoint(150, kMiddle));
    Release(BPoint(150, kMiddle));
    EXPECT_EQ(taken->Width(), 100);
    EXPECT_EQ(Width(0), 100);
}

TEST_F(CLVColumnLabelViewTest, AColumnThatIsTakenOutIsNotSortedBy)
{
    Open();
    AddColumns({100, 100});
    Click(BPoint(150, kMiddle));
    Press(BPoint(50, kMiddle));
    const std::unique_ptr<CLVColumn> taken(Locked([&] { return fList->ColumnAt(0); }));
    Locked([&] { return fList->RemoveColumn(taken.get()); });
    Release(BPoint(50, kMiddle));
    EXPECT_EQ(Keys(), "0a "); // what was the second column
}

TEST_F(CLVColumnLabelViewTest, AColumnThatIsHiddenEndsItsGesture)
{
    Open();
    AddColumns({100, 100});
    Press(BPoint(100, kMiddle));
    Locked([&] { fList->ColumnAt(0)->SetShown(false); });
    Move(BPoint(150, kMiddle));
    Release(BPoint(150, kMiddle));
    EXPECT_EQ(Width(0), 100);
}

} // namespace
