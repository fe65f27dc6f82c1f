#include "WindowFixture.h"

#include <cmath>

using kits::testing::Picture;
using kits::testing::TakePicture;

namespace {

// Every ten units of the document have a colour of their own.
rgb_color ColorAt(int row)
{
    return rgb_color{static_cast<uint8>(row * 13 & 255), static_cast<uint8>(row * 7 & 255), 0, 255};
}

class ScrollingTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        fView = Add(BRect(10, 10, 109, 59), "rows");
        fView->paint = [](BView& view) {
            const BRect bounds = view.Bounds();
            for (int row = 0; row < 300; ++row) {
                const auto top = static_cast<float>(row * 10);
                if (top <= bounds.bottom && top + 9 >= bounds.top) {
                    view.SetHighColor(ColorAt(row));
                    view.FillRect(BRect(0, top, 200, top + 9));
                }
            }
        };
        Show();
        TakePicture(fWindow);
        Locked([this] { fView->drawn.clear(); });
    }

    // The picture must be the document's part from `top` on.
    void ExpectShown(const Picture& picture, int top)
    {
        for (int y = 0; y < 50; ++y) {
            const auto device = [&](int units) {
                return static_cast<int>(
                    std::floor(static_cast<float>(units) * picture.scale + 0.5f));
            };
            EXPECT_EQ(picture.At(device(50), device(10 + y)), ColorAt((top + y) / 10)) << y;
        }
    }

    NotingView* fView = nullptr;
};

TEST_F(ScrollingTest, MovesThePictureAndDrawsTheRest)
{
    Locked([&] { fView->ScrollTo(0, 20); });

    const Picture picture = TakePicture(fWindow);

    ExpectShown(picture, 20);
    Locked([&] {
        ASSERT_EQ(fView->drawn.size(), 1u);
        EXPECT_EQ(fView->drawn[0], BRect(0, 50, 99, 69));
        EXPECT_EQ(fView->Bounds(), BRect(0, 20, 99, 69));
    });
}

TEST_F(ScrollingTest, MovesBackAndForthWithoutPaintingBetween)
{
    Locked([&] {
        fView->ScrollTo(0, 30);
        fView->ScrollTo(0, 10);
        fView->ScrollBy(0, 15);
    });

    ExpectShown(TakePicture(fWindow), 25);
}

TEST_F(ScrollingTest, WhatWasInvalidMovesAlong)
{
    Locked([&] {
        fView->Invalidate(BRect(0, 20, 99, 29));
        fView->ScrollTo(0, 10);
    });

    ExpectShown(TakePicture(fWindow), 10);
    Locked([&] {
        float covered = 0;
        for (const BRect& rect : fView->drawn) {
            covered = std::max(covered, rect.bottom);
            EXPECT_LE(rect.top, 20);
        }
        EXPECT_EQ(covered, 59);
    });
}

TEST_F(ScrollingTest, FarJumpsPaintEverything)
{
    Locked([&] { fView->ScrollTo(0, 1000); });

    ExpectShown(TakePicture(fWindow), 1000);
}

TEST_F(ScrollingTest, ChildrenMoveWithTheirParent)
{
    NotingView* child = nullptr;
    Locked([&] {
        child = Add(BRect(0, 30, 9, 39), "child", fView);
        child->SetViewColor(255, 255, 255);
    });
    TakePicture(fWindow);

    Locked([&] { fView->ScrollTo(0, 20); });
    const Picture picture = TakePicture(fWindow);

    const float scale = picture.scale;
    EXPECT_EQ(picture.At(static_cast<int>(14 * scale), static_cast<int>(24 * scale)).blue, 255);
    EXPECT_EQ(picture.At(static_cast<int>(14 * scale), static_cast<int>(34 * scale)).blue, 0);
    Locked([&] {
        EXPECT_EQ(child->ConvertToScreen(BPoint(0, 0)) - fWindow->Frame().LeftTop(),
                  BPoint(10, 20));
    });
}

TEST_F(ScrollingTest, CopiesBits)
{
    Locked([&] { fView->CopyBits(BRect(0, 0, 99, 9), BRect(0, 40, 99, 49)); });

    const Picture picture = TakePicture(fWindow);

    const auto y = static_cast<int>(std::floor(52 * picture.scale + 0.5f));
    EXPECT_EQ(picture.At(50, y), ColorAt(0));
}

TEST_F(ScrollingTest, CoveredPartsAreNotMoved)
{
    NotingView* cover = nullptr;
    Locked([&] {
        cover = Add(BRect(40, 20, 69, 39), "cover");
        cover->SetViewColor(0, 0, 255);
    });
    TakePicture(fWindow);

    Locked([&] { fView->ScrollTo(0, 10); });
    const Picture picture = TakePicture(fWindow);

    const auto device = [&](int units) {
        return static_cast<int>(std::floor(static_cast<float>(units) * picture.scale + 0.5f));
    };
    for (int y = 10; y < 60; ++y) {
        const bool isCovered = y >= 20 && y < 40;
        EXPECT_EQ(picture.At(device(50), device(y)),
                  isCovered ? (rgb_color{0, 0, 255, 255}) : ColorAt((10 + y - 10) / 10))
            << y;
    }
}

} // namespace
