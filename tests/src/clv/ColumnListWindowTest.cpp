#include "ListWindowFixture.h"
#include "clv/ScrollViewCorner.h"

namespace {

using namespace norvane;

/// What a column list does once it is in a window: scroll bars, scrolling, clicks on arrows.
class ColumnListWindowTest : public ListWindowFixture
{
protected:
    struct Bar
    {
        float min;
        float max;
        float smallStep;
        float largeStep;
        float proportion;
    };

    BScrollBar* BarOf(orientation direction) { return fList->Container()->ScrollBar(direction); }

    Bar Read(orientation direction)
    {
        return Locked([&] {
            Bar read{};
            const BScrollBar* bar = BarOf(direction);
            bar->GetRange(&read.min, &read.max);
            bar->GetSteps(&read.smallStep, &read.largeStep);
            read.proportion = bar->Proportion();
            return read;
        });
    }

    BRect ListBounds()
    {
        return Locked([&] { return fList->Bounds(); });
    }

    rgb_color CornerColor()
    {
        return Locked([&] { return fList->Container()->Corner()->ViewColor(); });
    }

    static constexpr rgb_color kIdle = {240, 240, 240, 255};
    static constexpr rgb_color kBusy = {216, 216, 216, 255};
    static constexpr float kRowStep = 21; // a row and the unit below it
};

TEST_F(ColumnListWindowTest, TheHorizontalBarGoesToTheEndOfTheLastColumn)
{
    Open();
    AddColumns({250, 250});
    const Bar bar = Read(B_HORIZONTAL);
    EXPECT_EQ(bar.min, 0);
    EXPECT_EQ(bar.max, 501 - kWidth);
    EXPECT_EQ(bar.smallStep, 20);
    EXPECT_EQ(bar.largeStep, kWidth);
    EXPECT_FLOAT_EQ(bar.proportion, kWidth / 501);
}

TEST_F(ColumnListWindowTest, TheVerticalBarGoesToTheEndOfTheLastRow)
{
    Open();
    AddColumns({100});
    AddRows(30);
    const float height = ListBounds().Height();
    const float data = Locked([&] { return fList->DataHeight(); });
    EXPECT_EQ(data, 30 * kRowStep - 1);
    const Bar bar = Read(B_VERTICAL);
    EXPECT_EQ(bar.min, 0);
    EXPECT_EQ(bar.max, data - height);
    EXPECT_FLOAT_EQ(bar.proportion, height / data);
}

TEST_F(ColumnListWindowTest, BarsHaveNowhereToGoWhereAllIsSeen)
{
    Open();
    AddColumns({100, 100});
    AddRows(3);
    for (const orientation direction : {B_HORIZONTAL, B_VERTICAL}) {
        const Bar bar = Read(direction);
        EXPECT_EQ(bar.max, 0);
        EXPECT_EQ(bar.proportion, 1);
    }
}

TEST_F(ColumnListWindowTest, BarsFollowTheListsSize)
{
    Open();
    AddColumns({250, 250});
    AddRows(30);
    const float room = Read(B_VERTICAL).max;
    Locked([&] { fWindow->ResizeBy(100, 50); });
    Settle();
    EXPECT_EQ(Read(B_HORIZONTAL).max, 501 - kWidth - 100);
    EXPECT_EQ(Read(B_VERTICAL).max, room - 50);
    Locked([&] { fWindow->ResizeBy(200, 0); });
    Settle();
    EXPECT_EQ(Read(B_HORIZONTAL).max, 0);
}

TEST_F(ColumnListWindowTest, ScrollsBackWhenAColumnGetsNarrower)
{
    Open();
    AddColumns({250, 250});
    ScrollTo(501 - kWidth, 0);
    Locked([&] { fList->ColumnAt(1)->SetWidth(200); });
    EXPECT_EQ(ListBounds().left, 451 - kWidth);
    EXPECT_EQ(Read(B_HORIZONTAL).max, 451 - kWidth);
    Locked([&] { fList->ColumnAt(1)->SetWidth(20); });
    EXPECT_EQ(ListBounds().left, 0);
    EXPECT_EQ(Read(B_HORIZONTAL).max, 0);
}

TEST_F(ColumnListWindowTest, ScrollsBackWhenRowsGo)
{
    Open();
    AddColumns({100});
    AddRows(30);
    ScrollTo(0, Read(B_VERTICAL).max);
    Locked([&] { return fList->RemoveItems(15, 15); });
    EXPECT_EQ(ListBounds().bottom, 15 * kRowStep - 1);
    EXPECT_EQ(Locked([&] { return BarOf(B_VERTICAL)->Value(); }), ListBounds().top);
    Locked([&] { return fList->RemoveItems(3, 12); });
    EXPECT_EQ(ListBounds().top, 0);
    EXPECT_EQ(Read(B_VERTICAL).max, 0);
}

TEST_F(ColumnListWindowTest, ScrollsBackWithoutBarsToo)
{
    Open(false, false);
    AddColumns({250, 250});
    AddRows(30);
    ScrollTo(501 - kWidth, 100);
    Locked([&] {
        fList->ColumnAt(1)->SetWidth(200);
        fList->RemoveItems(3, 27);
    });
    EXPECT_EQ(ListBounds().LeftTop(), BPoint(451 - kWidth, 0));
}

TEST_F(ColumnListWindowTest, TheStripFollowsSidewaysAndNotDown)
{
    Open();
    AddColumns({250, 250});
    AddRows(30);
    const auto strip = [&] {
        return Locked([&] { return fList->HeaderStrip()->Bounds().LeftTop(); });
    };
    ScrollTo(70, 42);
    EXPECT_EQ(strip(), BPoint(70, 0));
    Locked([&] { BarOf(B_HORIZONTAL)->SetValue(30); });
    EXPECT_EQ(strip(), BPoint(30, 0));
    kits::testing::TurnWheel(fList->Container(), BPoint(100, 100), 0, 1);
    Settle();
    EXPECT_GT(strip().x, 30);
    EXPECT_EQ(strip().x, ListBounds().left);
}

TEST_F(ColumnListWindowTest, AClickOnTheScrolledStripMeansTheColumnThatIsSeenThere)
{
    Open();
    AddColumns({250, 250});
    ScrollTo(501 - kWidth, 0);
    Click(BPoint(150, 8)); // the second column begins at 49 now
    EXPECT_EQ(Keys(), "1a ");
}

TEST_F(ColumnListWindowTest, TheCornerFillsTheSquareBetweenTheBars)
{
    Open();
    Locked([&] {
        const BRect corner = fList->Container()->Corner()->Frame();
        EXPECT_EQ(corner.Width(), 13);
        EXPECT_EQ(corner.Height(), 13);
        EXPECT_EQ(corner.left, BarOf(B_HORIZONTAL)->Frame().right + 1);
        EXPECT_EQ(corner.top, BarOf(B_VERTICAL)->Frame().bottom + 1);
        EXPECT_EQ(corner.RightBottom(), fList->Container()->Bounds().RightBottom());
    });
}

TEST_F(ColumnListWindowTest, TheCornersColourTellsWhetherThereAreRowsToScroll)
{
    Open();
    AddColumns({250, 250});
    EXPECT_EQ(CornerColor(), kIdle);
    AddRows(30);
    EXPECT_EQ(CornerColor(), kBusy);
    Locked([&] { fList->MakeEmpty(); });
    EXPECT_EQ(CornerColor(), kIdle);
}

/// An outline of a with a1 below it, and b.
class OutlineWindowTest : public ColumnListWindowTest
{
protected:
    void OpenTree()
    {
        Open(true);
        Locked([&] {
            fList->AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
            fList->AddColumn(new CLVColumn("name", 400));
            fA = fList->Add("a", 0, true);
            fList->Add("a1", 1);
            fList->Add("b");
        });
        // An arrow is where its row was painted.
        ASSERT_FALSE(kits::testing::TakePicture(fWindow).IsEmpty());
    }

    /// The middle of the arrow of `a`, in the container's coordinates.
    BPoint Arrow()
    {
        return Locked([&] {
            const BRect button = fA->ExpanderButtonRect();
            const BPoint middle((button.left + button.right) / 2, (button.top + button.bottom) / 2);
            return middle - fList->Bounds().LeftTop() + fList->Frame().LeftTop();
        });
    }

    std::string Names()
    {
        return Locked([&] { return fList->Names(); });
    }

    int32 Selected()
    {
        return Locked([&] { return fList->CurrentSelection(); });
    }

    TestRow* fA = nullptr;
};

TEST_F(OutlineWindowTest, AClickOnAnArrowCollapsesAndExpandsAndSelectsNothing)
{
    OpenTree();
    Click(Arrow());
    EXPECT_EQ(Names(), "a b ");
    Click(Arrow());
    EXPECT_EQ(Names(), "a a1 b ");
    EXPECT_EQ(Selected(), -1);
}

TEST_F(OutlineWindowTest, AClickBesideAnArrowSelectsTheRow)
{
    OpenTree();
    Click(Arrow() + BPoint(40, 0));
    EXPECT_EQ(Names(), "a a1 b ");
    EXPECT_EQ(Selected(), 0);
}

TEST_F(OutlineWindowTest, ARowWithoutAnArrowIsSelectedThere)
{
    OpenTree();
    Click(Arrow() + BPoint(0, 2 * kRowStep));
    EXPECT_EQ(Names(), "a a1 b ");
    EXPECT_EQ(Selected(), 2);
}

TEST_F(OutlineWindowTest, AnArrowIsFoundWhereItIsScrolledTo)
{
    OpenTree();
    ScrollTo(5, 0);
    Click(Arrow());
    EXPECT_EQ(Names(), "a b ");
}

TEST_F(OutlineWindowTest, CellsAreNotDrawnWholeOnAGroundThatIsThere)
{
    OpenTree();
    Locked([&] {
        ASSERT_EQ(fA->cells.size(), 2u);
        for (const TestRow::Cell& cell : fA->cells) {
            EXPECT_FALSE(cell.complete) << cell.column;
        }
    });
}

} // namespace
