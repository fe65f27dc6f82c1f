#include "ControlWindow.h"

#include <ScrollBar.h>

namespace {

using namespace kits::testing;

// An upright bar of 15 x 200 units that scrolls a view of 100 x 200 over 1000 units.
class ScrollBarTest : public ControlTest
{
protected:
    ScrollBarTest()
    {
        fTarget = Add(
            new BView(BRect(0, 0, 99, 199), "target", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW));
        fBar = Add(new BScrollBar(BRect(100, 0, 114, 199), "bar", fTarget, 0, 1000, B_VERTICAL));
        fBar->SetProportion(0.2f);
        fBar->SetSteps(10, 180);
    }

    float Value()
    {
        return Locked([this] { return fBar->Value(); });
    }

    float TargetTop()
    {
        return Locked([this] { return fTarget->Bounds().top; });
    }

    BView* fTarget;
    BScrollBar* fBar;
};

TEST_F(ScrollBarTest, MovesItsTargetAndFollowsIt)
{
    Show();

    Locked([this] {
        fBar->SetValue(120);
        return 0;
    });
    EXPECT_EQ(TargetTop(), 120);

    Locked([this] {
        fTarget->ScrollTo(BPoint(0, 300));
        return 0;
    });
    EXPECT_EQ(Value(), 300);
}

TEST_F(ScrollBarTest, TargetKnowsItsBar)
{
    EXPECT_EQ(fTarget->ScrollBar(B_VERTICAL), fBar);
    EXPECT_EQ(fTarget->ScrollBar(B_HORIZONTAL), nullptr);
}

TEST_F(ScrollBarTest, ValueStaysWithinTheRange)
{
    Show();

    Locked([this] {
        fBar->SetValue(5000);
        return 0;
    });
    EXPECT_EQ(Value(), 1000);

    Locked([this] {
        fBar->SetRange(0, 50);
        return 0;
    });
    EXPECT_EQ(Value(), 50);
    EXPECT_EQ(TargetTop(), 50);
}

TEST_F(ScrollBarTest, ArrowsStepByTheSmallStep)
{
    Show();

    Click(fBar, BPoint(7, 193));
    EXPECT_EQ(Value(), 10);

    Click(fBar, BPoint(7, 193));
    Click(fBar, BPoint(7, 5));
    EXPECT_EQ(Value(), 10);
}

TEST_F(ScrollBarTest, TroughStepsByAPage)
{
    Show();

    Click(fBar, BPoint(7, 150));
    EXPECT_EQ(Value(), 180);

    Click(fBar, BPoint(7, 17));
    EXPECT_EQ(Value(), 0);
}

TEST_F(ScrollBarTest, HeldArrowGoesOnUntilItIsReleased)
{
    Show();

    PressMouse(fBar, BPoint(7, 193));
    EXPECT_TRUE(WaitFor([this] { return Value() >= 50; }));
    ReleaseMouse(fBar, BPoint(7, 193));
    const float released = Value();

    TypeKey('x'); // something else to wait for
    EXPECT_EQ(Value(), released);
}

TEST_F(ScrollBarTest, HeldTroughStopsUnderThePointer)
{
    Show();

    PressMouse(fBar, BPoint(7, 100));
    // The thumb, 34 units long, ends under the pointer.
    EXPECT_TRUE(WaitFor([this] { return Value() >= 360; }));
    EXPECT_FALSE(WaitFor([this] { return Value() > 720; }, 300'000));
    ReleaseMouse(fBar, BPoint(7, 100));
}

TEST_F(ScrollBarTest, ThumbFollowsThePointerFarOutside)
{
    Show();

    PressMouse(fBar, BPoint(7, 20));
    MoveMouse(fBar, BPoint(7, 60));
    const float inside = Value();
    EXPECT_GT(inside, 200);

    MoveMouseAt(Locked([this] { return fBar->ConvertToScreen(BPoint(180, 60)); }));
    EXPECT_EQ(Value(), inside);

    MoveMouseAt(Locked([this] { return fBar->ConvertToScreen(BPoint(180, 500)); }));
    EXPECT_EQ(Value(), 1000);
    ReleaseMouse(fBar, BPoint(7, 60));
}

TEST_F(ScrollBarTest, WheelOverTheBarScrolls)
{
    Show();

    TurnWheel(fBar, BPoint(7, 100), 1);

    EXPECT_GT(Value(), 0);
}

TEST_F(ScrollBarTest, EmptyRangeTakesNoClicks)
{
    Show();
    Locked([this] {
        fBar->SetRange(0, 0);
        return 0;
    });

    Click(fBar, BPoint(7, 193));
    Click(fBar, BPoint(7, 100));

    EXPECT_EQ(Value(), 0);
}

TEST_F(ScrollBarTest, TargetThatGoesIsForgotten)
{
    Show();
    Locked([this] {
        fTarget->RemoveSelf();
        delete fTarget;
        fBar->SetValue(70);
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fBar->Target(); }), nullptr);
    EXPECT_EQ(Value(), 70);
}

TEST_F(ScrollBarTest, TellsHowItWasSetUp)
{
    float small = 0;
    float large = 0;
    fBar->GetSteps(&small, &large);

    EXPECT_EQ(small, 10);
    EXPECT_EQ(large, 180);
    EXPECT_EQ(fBar->Proportion(), 0.2f);
    EXPECT_EQ(fBar->Orientation(), B_VERTICAL);
}

TEST_F(ScrollBarTest, TellsEachNewValueOnce)
{
    class Listening : public BScrollBar
    {
    public:
        using BScrollBar::BScrollBar;
        void ValueChanged(float value) override
        {
            values.push_back(value);
            BScrollBar::ValueChanged(value);
        }
        std::vector<float> values;
    };
    auto* bar =
        Add(new Listening(BRect(120, 0, 134, 199), "listening", nullptr, 0, 100, B_VERTICAL));

    Locked([bar] {
        bar->SetValue(20);
        bar->SetValue(20);
        bar->SetValue(500);
        return 0;
    });

    EXPECT_EQ(bar->values, (std::vector<float>{20, 100}));
}

} // namespace
