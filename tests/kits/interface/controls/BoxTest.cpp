#include "ControlWindow.h"

#include <Box.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <StringView.h>

#include <memory>

namespace {

using namespace kits::testing;

class BoxTest : public ControlTest
{
protected:
    BoxTest() { fBox = Add(new BBox(BRect(10, 10, 109, 59), "box")); }

    BBox* fBox;
};

TEST_F(BoxTest, LabelIsATextOrAView)
{
    EXPECT_EQ(fBox->Label(), nullptr);

    fBox->SetLabel("Text");
    EXPECT_STREQ(fBox->Label(), "Text");
    EXPECT_EQ(fBox->LabelView(), nullptr);

    auto* view = new BView(BRect(0, 0, 39, 9), "label", B_FOLLOW_NONE, B_WILL_DRAW);
    EXPECT_EQ(Locked([&] { return fBox->SetLabel(view); }), B_OK);
    EXPECT_EQ(fBox->LabelView(), view);
    EXPECT_EQ(view->Parent(), fBox);
    EXPECT_EQ(fBox->Label(), nullptr);

    Locked([this] {
        fBox->SetLabel("Again");
        return 0;
    });
    EXPECT_EQ(fBox->LabelView(), nullptr);
    EXPECT_EQ(fBox->CountChildren(), 0);
}

TEST_F(BoxTest, BorderIsDrawnAsItIsSet)
{
    Show();
    const rgb_color ground = TakePicture(fWindow).At(50, 35);
    EXPECT_NE(TakePicture(fWindow).At(10, 35), ground);

    Locked([this] {
        fBox->SetBorder(B_NO_BORDER);
        return 0;
    });

    EXPECT_EQ(fBox->Border(), B_NO_BORDER);
    EXPECT_EQ(TakePicture(fWindow).At(10, 35), ground);
}

class ScrollViewTest : public ControlTest
{
protected:
    ScrollViewTest()
    {
        fTarget = new BView(BRect(20, 20, 119, 69), "target", B_FOLLOW_NONE, B_WILL_DRAW);
        fScroller =
            Add(new BScrollView("scroller", fTarget, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false, true));
    }

    BView* fTarget;
    BScrollView* fScroller;
};

TEST_F(ScrollViewTest, AnotherTargetTakesThePlace)
{
    const std::unique_ptr<BView> old(fTarget);
    const BPoint place = fTarget->Frame().LeftTop();
    auto* other = new BView(BRect(0, 0, 99, 49), "other", B_FOLLOW_NONE, B_WILL_DRAW);

    Locked([&] {
        fScroller->SetTarget(other);
        return 0;
    });

    EXPECT_EQ(fScroller->Target(), other);
    EXPECT_EQ(fScroller->ScrollBar(B_VERTICAL)->Target(), other);
    EXPECT_EQ(other->Parent(), fScroller);
    EXPECT_EQ(other->Frame().LeftTop(), place);
    EXPECT_EQ(old->Parent(), nullptr);
}

TEST_F(ScrollViewTest, OnlyTheFancyBorderIsHighlighted)
{
    EXPECT_EQ(fScroller->SetBorderHighlighted(true), B_OK);
    EXPECT_TRUE(fScroller->IsBorderHighlighted());
    EXPECT_EQ(fScroller->SetBorderHighlighted(false), B_OK);

    fScroller->SetBorder(B_PLAIN_BORDER);

    EXPECT_EQ(fScroller->Border(), B_PLAIN_BORDER);
    EXPECT_EQ(fScroller->SetBorderHighlighted(true), B_ERROR);
    EXPECT_FALSE(fScroller->IsBorderHighlighted());
}

TEST_F(ScrollViewTest, HighlightedBorderIsSeen)
{
    Show();
    const rgb_color plain = TakePicture(fWindow).At(18, 40);

    Locked([this] { return fScroller->SetBorderHighlighted(true); });

    EXPECT_NE(TakePicture(fWindow).At(18, 40), plain);
}

TEST_F(ControlTest, StringViewStandsWhereItsAlignmentSays)
{
    auto* view = Add(new BStringView(BRect(0, 0, 199, 19), "string", "l"));
    Show();
    const auto letterColumn = [&] {
        const Picture picture = TakePicture(fWindow);
        for (int32 x = 0; x < 200; x++) {
            if (picture.Count(picture.At(199, 0), x, 0, x + 1, 20) < 20) {
                return x;
            }
        }
        return int32{-1};
    };
    const int32 left = letterColumn();

    Locked([view] {
        view->SetAlignment(B_ALIGN_RIGHT);
        return 0;
    });

    EXPECT_EQ(view->Alignment(), B_ALIGN_RIGHT);
    EXPECT_LT(left, 10);
    EXPECT_GT(letterColumn(), 180);
}

} // namespace
