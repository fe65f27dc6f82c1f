#include "ControlWindow.h"

#include <StatusBar.h>

#include <string>

namespace {

using namespace kits::testing;

constexpr rgb_color kFilled = {50, 150, 255, 255};

// Notes what it is asked to draw.
class WatchedBar : public BStatusBar
{
public:
    using BStatusBar::BStatusBar;

    void Draw(BRect updateRect) override
    {
        drawn = draws++ == 0 ? updateRect : drawn | updateRect;
        BStatusBar::Draw(updateRect);
    }

    BRect drawn;
    int32 draws = 0;
};

class StatusBarTest : public ControlTest
{
protected:
    StatusBarTest()
    {
        fBar = Add(new WatchedBar(BRect(10, 31, 209, 41), "bar", "Copying: ", " Bytes"));
        Show();
        TakePicture(fWindow);
    }

    template<typename Change>
    BRect DrawnBy(Change change)
    {
        Locked([&] {
            fBar->draws = 0;
            fBar->drawn = BRect();
            change();
            return 0;
        });
        TakePicture(fWindow);
        return Locked([this] { return fBar->drawn; });
    }

    int32 FilledPixels()
    {
        const Picture picture = TakePicture(fWindow);
        return picture.Count(kFilled, 10, 60, 210, 61);
    }

    WatchedBar* fBar;
};

TEST_F(StatusBarTest, KeepsPlaceAndWidthAndSetsItsHeight)
{
    EXPECT_EQ(Locked([this] { return fBar->Frame(); }), BRect(10, 31, 209, 31 + 15 + 16 + 1));
}

TEST_F(StatusBarTest, BarHeightSetsTheHeight)
{
    Locked([this] {
        fBar->SetBarHeight(22);
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fBar->Frame().Height(); }), 15 + 22 + 1);
}

TEST_F(StatusBarTest, ResizingKeepsTheOwnHeight)
{
    Locked([this] {
        fBar->ResizeTo(120, 80);
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fBar->Frame(); }), BRect(10, 31, 130, 63));
}

TEST_F(StatusBarTest, FillsInProportion)
{
    EXPECT_EQ(FilledPixels(), 0);

    Locked([this] {
        fBar->SetMaxValue(1000);
        fBar->Update(500);
        return 0;
    });
    const int32 half = FilledPixels();
    EXPECT_NEAR(half, 97, 3);

    Locked([this] {
        fBar->Update(9000);
        return 0;
    });
    EXPECT_NEAR(FilledPixels(), 196, 3);
    EXPECT_EQ(Locked([this] { return fBar->CurrentValue(); }), 1000);
}

TEST_F(StatusBarTest, SmallStepsDrawNothing)
{
    const BRect drawn = DrawnBy([this] { fBar->Update(0.01f); });

    EXPECT_FALSE(drawn.IsValid());
}

TEST_F(StatusBarTest, StepDrawsOnlyTheColumnsThatChange)
{
    Locked([this] {
        fBar->Update(50);
        return 0;
    });
    TakePicture(fWindow);

    const BRect drawn = DrawnBy([this] { fBar->Update(10); });

    EXPECT_TRUE(drawn.IsValid());
    EXPECT_GE(drawn.left, 95);
    EXPECT_LE(drawn.right, 122);
    EXPECT_GE(drawn.top, 16);
}

TEST_F(StatusBarTest, SameTextDrawsNothing)
{
    Locked([this] {
        fBar->Update(0, "a.txt", "10");
        return 0;
    });
    TakePicture(fWindow);

    EXPECT_FALSE(DrawnBy([this] { fBar->Update(0, "a.txt", "10"); }).IsValid());
    EXPECT_TRUE(DrawnBy([this] { fBar->Update(0, "b.txt"); }).IsValid());
    EXPECT_EQ(Locked([this] { return std::string(fBar->TrailingText()); }), "10");
}

TEST_F(StatusBarTest, BytesAreCountedBeyondAFloatsReach)
{
    Locked([this] {
        fBar->SetMaxValue(1e9f);
        fBar->Update(5e8f);
        for (int32 i = 0; i < 20'000; i++) {
            fBar->Update(1);
        }
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fBar->CurrentValue(); }), 500'020'000);
}

TEST_F(StatusBarTest, ResetEmptiesEverythingAndSetsTheLabels)
{
    Locked([this] {
        fBar->SetMaxValue(7);
        fBar->Update(5, "text", "trailing");
        fBar->Reset("Moving: ");
        return 0;
    });

    EXPECT_EQ(Locked([this] { return fBar->CurrentValue(); }), 0);
    EXPECT_EQ(Locked([this] { return fBar->MaxValue(); }), 100);
    EXPECT_STREQ(Locked([this] { return fBar->Text(); }), "");
    EXPECT_STREQ(Locked([this] { return fBar->Label(); }), "Moving: ");
    EXPECT_STREQ(Locked([this] { return fBar->TrailingLabel(); }), "");
}

TEST_F(StatusBarTest, MaximumOfNothingIsAnEmptyBar)
{
    Locked([this] {
        fBar->SetMaxValue(0);
        fBar->Update(10);
        return 0;
    });

    EXPECT_EQ(FilledPixels(), 0);
    EXPECT_EQ(Locked([this] { return fBar->CurrentValue(); }), 0);
}

TEST_F(StatusBarTest, IsFilledInItsColour)
{
    constexpr rgb_color kOther = {200, 40, 40, 255};
    Locked([this] {
        fBar->Update(50);
        return 0;
    });
    ASSERT_GT(FilledPixels(), 0);

    const BRect drawn = DrawnBy([this, kOther] { fBar->SetBarColor(kOther); });

    EXPECT_EQ(FilledPixels(), 0);
    EXPECT_GT(TakePicture(fWindow).Count(kOther, 10, 60, 210, 61), 0);
    EXPECT_EQ(Locked([this] { return fBar->BarColor(); }), kOther);
    EXPECT_EQ(drawn.Height(), fBar->BarHeight());
}

} // namespace
