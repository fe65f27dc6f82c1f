#include "ViewerFixture.h"

#include <Bitmap.h>
#include <Screen.h>
#include <ViewDescription.h>

#include <cmath>

namespace {

using namespace norvane;
using kits::testing::WaitFor;

class ViewerImageTest : public ViewerFixture
{
protected:
    BRect Frame()
    {
        return Locked([this] { return fWindow->Frame(); });
    }
    float ImageScale()
    {
        return Locked([this] { return Image()->Scale(); });
    }
    /// Where the picture begins below the window's top.
    float Top()
    {
        return Locked([this] { return fWindow->KeyMenuBar()->Frame().bottom + 1; });
    }
    const BRect fScreen = BScreen().Frame();
};

TEST_F(ViewerImageTest, ShowsALargeImageAsLargeAsTheScreenAllows)
{
    WriteImage("a.png", 4000, 1000);
    OpenImage("a.png");

    const float fitting = (fScreen.Width() - 14 - 12) / 4000;
    EXPECT_FLOAT_EQ(ImageScale(), fitting);
    EXPECT_STREQ(fWindow->Title(), "a.png");
    EXPECT_EQ(Frame().Width(), std::floor(3999 * fitting) + 14);
    EXPECT_EQ(Frame().Height(), Top() - 1 + std::floor(999 * fitting) + 14 + 1);
    EXPECT_EQ(Range(Image(), B_HORIZONTAL), 0);
    EXPECT_EQ(Range(Image(), B_VERTICAL), 0);
}

TEST_F(ViewerImageTest, ShowsATallImageAsHighAsTheScreenAllows)
{
    WriteImage("a.png", 1000, 4000);
    OpenImage("a.png");

    EXPECT_FLOAT_EQ(ImageScale(), (fScreen.Height() - 14 - Top() - 32) / 4000);
}

TEST_F(ViewerImageTest, EnlargesASmallImage)
{
    WriteImage("a.png", 20, 10);
    OpenImage("a.png");

    EXPECT_FLOAT_EQ(ImageScale(), (fScreen.Width() - 14 - 12) / 20);
    EXPECT_TRUE(Item("Max")->IsMarked());
}

TEST_F(ViewerImageTest, TakesAScaleAndLimitsTheWindowToIt)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");

    Scale(0.5f);

    EXPECT_EQ(ImageScale(), 0.5f);
    const float width = std::floor(399 * 0.5f) + 14;
    const float height = Top() - 1 + std::floor(299 * 0.5f) + 14 + 1;
    EXPECT_TRUE(WaitFor([&] { return Frame().Width() == width && Frame().Height() == height; }));
    float least = 0;
    float most = 0;
    float lowest = 0;
    float highest = 0;
    Locked([&] {
        fWindow->GetSizeLimits(&least, &most, &lowest, &highest);
        return 0;
    });
    EXPECT_EQ(least, 46);
    EXPECT_EQ(most, width);
    EXPECT_EQ(lowest, Top() - 1 + 14 + 1 + 32);
    EXPECT_EQ(highest, height);
}

TEST_F(ViewerImageTest, ScrollsWhatIsLargerThanTheWindow)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");
    Scale(2.0f);
    kits::testing::ResizeWindow(fWindow, 300, 200);
    ASSERT_TRUE(WaitFor([this] { return Frame().Width() == 300; }));
    TImageView* image = Image();

    EXPECT_EQ(Range(image, B_HORIZONTAL), std::floor(399 * 2.0f) - (300 - 14));
    Key(B_RIGHT_ARROW);
    EXPECT_EQ(Value(image, B_HORIZONTAL), std::floor((300 - 14) / 8.0f));
    Key(B_END);
    EXPECT_EQ(Value(image, B_VERTICAL), Range(image, B_VERTICAL));
    Key(B_PAGE_UP);
    EXPECT_LT(Value(image, B_VERTICAL), Range(image, B_VERTICAL));
    Key(B_HOME);
    EXPECT_EQ(Value(image, B_VERTICAL), 0);
    Key(B_DOWN_ARROW);
    EXPECT_GT(Value(image, B_VERTICAL), 0);
}

TEST_F(ViewerImageTest, StretchingTakesTheScaleMenuAway)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");
    Scale(0.5f);
    EXPECT_TRUE(Item("50%")->IsEnabled());

    Send(kStretchToFit);

    EXPECT_TRUE(Item("Stretch to Fit")->IsMarked());
    EXPECT_FALSE(Item("50%")->IsEnabled());
    EXPECT_EQ(Locked([this] { return Image()->Mode(); }), kStretched);
    float least = 0;
    float most = 0;
    float lowest = 0;
    float highest = 0;
    Locked([&] {
        fWindow->GetSizeLimits(&least, &most, &lowest, &highest);
        return 0;
    });
    EXPECT_EQ(most, fScreen.Width());

    Send(kStretchToFit);
    EXPECT_FALSE(Item("Stretch to Fit")->IsMarked());
    EXPECT_TRUE(Item("50%")->IsEnabled());
    EXPECT_EQ(Locked([this] { return Image()->Mode(); }), kFixedScale);
    EXPECT_EQ(ImageScale(), 0.5f);
}

TEST_F(ViewerImageTest, StretchedImageFillsTheView)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");
    Scale(0.5f);
    Send(kStretchToFit);
    kits::testing::ResizeWindow(fWindow, 500, 120);
    ASSERT_TRUE(WaitFor([this] { return Frame().Width() == 500; }));

    const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);

    EXPECT_EQ(picture.At(500 - 14 - 2, static_cast<int32>(Top())), (rgb_color{255, 0, 0, 255}));
    EXPECT_EQ(picture.At(0, 120 - 14 - 2), (rgb_color{255, 0, 0, 255}));
}

TEST_F(ViewerImageTest, ChoosingAScaleBeforeTheImageIsThereHolds)
{
    WriteImage("a.png", 4000, 3000);
    Begin("a.png");
    ASSERT_TRUE(WaitFor([this] { return Image() != nullptr; }));
    Scale(0.5f);

    ASSERT_TRUE(WaitFor([this] { return Locked([this] { return Image()->HasImage(); }); }));

    EXPECT_EQ(ImageScale(), 0.5f);
}

TEST_F(ViewerImageTest, SaysInsideWhyThereIsNoImage)
{
    fTree.Write("a.png", "no picture");
    Begin("a.png");
    const auto words = [this] {
        BViewDescription described;
        if (Image() != nullptr) {
            Locked([&] {
                Image()->Describe(&described);
                return 0;
            });
        }
        return described.value;
    };

    EXPECT_TRUE(WaitFor([&] { return !words().empty(); }));

    EXPECT_EQ(words(), "This image cannot be shown: nothing here reads its format.");
    EXPECT_EQ(Frame().Width(), 250);
    const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);
    EXPECT_GT(picture.Count({110, 110, 110, 255}, 0, static_cast<int32>(Top()), 230, 150), 20);
    Scale(2.0f);
    Send(kStretchToFit);
    Send(kStretchToFit);
    EXPECT_EQ(Range(Image(), B_HORIZONTAL), 0);
}

TEST_F(ViewerImageTest, TransparentImageLiesOnWhite)
{
    QImage image(40, 40, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    ASSERT_TRUE(image.save(QString::fromStdString(fTree.Path("a.png")), "PNG"));
    OpenImage("a.png");

    const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);

    EXPECT_EQ(picture.At(10, static_cast<int32>(Top()) + 10), (rgb_color{255, 255, 255, 255}));
}

TEST(ImageViewTest, HasNoSizeWithoutAWindow)
{
    const TImageView view(BRect(0, 0, 99, 99), 0, kLargestFit);
    float width = -5;
    float height = -5;

    view.GetMaxSize(&width, &height);

    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
}

} // namespace
