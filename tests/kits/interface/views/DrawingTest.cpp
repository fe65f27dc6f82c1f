#include "WindowFixture.h"

#include "interface/graphics/PixelConversion.h"

#include <Bitmap.h>
#include <Region.h>
#include <Screen.h>

#include <cmath>
#include <cstring>

using kits::testing::Picture;
using kits::testing::TakePicture;

namespace {

constexpr rgb_color kRed = {255, 0, 0, 255};
constexpr rgb_color kGreen = {0, 255, 0, 255};
constexpr rgb_color kBlue = {0, 0, 255, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr rgb_color kBlack = {0, 0, 0, 255};

class DrawingTest : public WindowFixture
{
protected:
    Picture Draw(const std::function<void(BView&)>& paint)
    {
        NotingView* view = Add(BRect(0, 0, 199, 99), "canvas");
        view->paint = paint;
        Show();
        return TakePicture(fWindow);
    }

    static int Edge(const Picture& picture, int units)
    {
        return static_cast<int>(std::floor(static_cast<float>(units) * picture.scale + 0.5f));
    }
    static rgb_color At(const Picture& picture, int x, int y)
    {
        return picture.At(Edge(picture, x), Edge(picture, y));
    }
};

TEST_F(DrawingTest, FillsTheRectangleWithItsRightAndBottomEdge)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(10, 20, 19, 24));
    });

    const int left = Edge(picture, 10);
    const int right = Edge(picture, 20);
    const int top = Edge(picture, 20);
    const int bottom = Edge(picture, 25);
    EXPECT_EQ(picture.Count(kRed, 0, 0, picture.width, picture.height),
              (right - left) * (bottom - top));
    EXPECT_EQ(picture.At(left, top), kRed);
    EXPECT_EQ(picture.At(right - 1, bottom - 1), kRed);
    EXPECT_EQ(picture.At(right, bottom - 1), kWhite);
}

TEST_F(DrawingTest, NeighboursMeetWithoutGapAndOverlap)
{
    const Picture picture = Draw([](BView& view) {
        for (int i = 0; i < 30; ++i) {
            const auto x = static_cast<float>(3 * i);
            view.SetHighColor(i % 2 == 0 ? kRed : kBlue);
            view.FillRect(BRect(x, 10, x + 2, 10));
        }
    });

    const int y = Edge(picture, 10);
    const int end = Edge(picture, 90);
    EXPECT_EQ(picture.Count(kRed, 0, y, end, y + 1) + picture.Count(kBlue, 0, y, end, y + 1), end);
    EXPECT_EQ(picture.Count(kWhite, end, y, end + 1, y + 1), 1);
}

TEST_F(DrawingTest, LinesAreEquallyBroadEverywhere)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kRed);
        for (int i = 0; i < 20; ++i) {
            const auto y = static_cast<float>(3 * i);
            view.StrokeLine(BPoint(5, y), BPoint(50, y));
        }
    });

    const int breadth = std::max(1, static_cast<int>(std::floor(picture.scale + 0.25f)));
    const int x = Edge(picture, 10);
    for (int i = 0; i < 20; ++i) {
        const int top = Edge(picture, 3 * i);
        EXPECT_EQ(picture.Count(kRed, x, top, x + 1, top + Edge(picture, 2)), breadth) << i;
    }
}

TEST_F(DrawingTest, StrokedRectangleIsClosedAndHollow)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kRed);
        view.StrokeRect(BRect(10, 10, 30, 20));
    });

    for (const auto& corner :
         {std::pair(10, 10), std::pair(30, 10), std::pair(10, 20), std::pair(30, 20)}) {
        EXPECT_EQ(At(picture, corner.first, corner.second), kRed);
    }
    EXPECT_EQ(At(picture, 20, 15), kWhite);
    EXPECT_EQ(At(picture, 9, 10), kWhite);
    EXPECT_EQ(At(picture, 32, 15), kWhite);
}

TEST_F(DrawingTest, InvertingTwiceLeavesThePicture)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(0, 0, 9, 9));
        view.InvertRect(BRect(5, 0, 14, 9));
        view.SetDrawingMode(B_OP_INVERT);
        view.FillRect(BRect(10, 0, 14, 9));
    });

    EXPECT_EQ(At(picture, 2, 2), kRed);
    EXPECT_EQ(At(picture, 7, 2), (rgb_color{0, 255, 255, 255}));
    EXPECT_EQ(At(picture, 12, 2), kWhite);
}

TEST_F(DrawingTest, MixesByAlpha)
{
    const Picture picture = Draw([](BView& view) {
        view.SetDrawingMode(B_OP_ALPHA);
        view.SetHighColor(0, 0, 0, 128);
        view.FillRect(BRect(0, 0, 9, 9));
    });

    EXPECT_NEAR(At(picture, 5, 5).red, 127, 2);
}

TEST_F(DrawingTest, PatternTakesBothColoursOrOne)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kRed);
        view.SetLowColor(kBlue);
        view.FillRect(BRect(0, 0, 15, 15), B_MIXED_COLORS);
        view.SetDrawingMode(B_OP_OVER);
        view.FillRect(BRect(20, 0, 35, 15), B_MIXED_COLORS);
    });

    const int y = Edge(picture, 16);
    const int all = Edge(picture, 16) * y;
    EXPECT_EQ(picture.Count(kRed, 0, 0, Edge(picture, 16), y) +
                  picture.Count(kBlue, 0, 0, Edge(picture, 16), y),
              all);
    EXPECT_EQ(picture.Count(kBlue, Edge(picture, 20), 0, Edge(picture, 36), y), 0);
    EXPECT_GT(picture.Count(kRed, Edge(picture, 20), 0, Edge(picture, 36), y), all / 3);
}

TEST_F(DrawingTest, StaysInsideItsViewAndOutOfItsChildren)
{
    NotingView* outer = Add(BRect(10, 10, 59, 59), "outer");
    NotingView* inner = Add(BRect(10, 10, 19, 19), "inner", outer);
    outer->paint = [](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(-100, -100, 300, 300));
    };
    inner->SetViewColor(kGreen);
    Show();

    const Picture picture = TakePicture(fWindow);

    EXPECT_EQ(At(picture, 9, 30), kWhite);
    EXPECT_EQ(At(picture, 10, 10), kRed);
    EXPECT_EQ(At(picture, 59, 59), kRed);
    EXPECT_EQ(At(picture, 60, 59), kWhite);
    EXPECT_EQ(At(picture, 20, 20), kGreen);
    EXPECT_EQ(At(picture, 29, 29), kGreen);
    EXPECT_EQ(At(picture, 30, 29), kRed);
}

TEST_F(DrawingTest, LaterSiblingsCoverEarlierOnes)
{
    NotingView* below = Add(BRect(0, 0, 49, 49), "below");
    NotingView* above = Add(BRect(25, 25, 74, 74), "above");
    below->SetViewColor(kRed);
    above->SetViewColor(kBlue);
    Show();

    TakePicture(fWindow);
    Locked([&] {
        below->SetHighColor(kGreen);
        below->FillRect(below->Bounds());
    });
    const Picture picture = TakePicture(fWindow);

    EXPECT_EQ(At(picture, 10, 10), kGreen);
    EXPECT_EQ(At(picture, 30, 30), kBlue);
}

TEST_F(DrawingTest, TransparentChildShowsItsParent)
{
    NotingView* parent = Add(BRect(0, 0, 49, 49), "parent");
    NotingView* child = Add(BRect(10, 10, 39, 39), "child", parent);
    parent->SetViewColor(kGreen);
    child->SetViewColor(B_TRANSPARENT_COLOR);
    child->paint = [](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(0, 0, 4, 4));
    };
    Show();

    const Picture picture = TakePicture(fWindow);

    EXPECT_EQ(At(picture, 12, 12), kRed);
    EXPECT_EQ(At(picture, 30, 30), kGreen);
}

TEST_F(DrawingTest, DrawsOutsideOfDraw)
{
    NotingView* view = Add(BRect(0, 0, 99, 99), "view");
    Show();
    TakePicture(fWindow);

    Locked([&] {
        view->SetHighColor(kBlue);
        view->FillRect(BRect(50, 50, 59, 59));
    });

    EXPECT_EQ(At(TakePicture(fWindow), 55, 55), kBlue);
}

TEST_F(DrawingTest, ConstrainedClipLimitsDrawing)
{
    const Picture picture = Draw([](BView& view) {
        BRegion clip(BRect(0, 0, 9, 99));
        clip.Include(BRect(20, 0, 29, 99));
        view.PushState();
        view.ConstrainClippingRegion(&clip);
        view.SetHighColor(kRed);
        view.FillRect(view.Bounds());
        view.PopState();
        view.SetHighColor(kBlue);
        view.FillRect(BRect(15, 0, 16, 1));
    });

    EXPECT_EQ(At(picture, 5, 50), kRed);
    EXPECT_EQ(At(picture, 12, 50), kWhite);
    EXPECT_EQ(At(picture, 25, 50), kRed);
    EXPECT_EQ(At(picture, 15, 0), kBlue);
}

TEST_F(DrawingTest, TextStandsOnItsBaseLine)
{
    const Picture picture = Draw([](BView& view) {
        view.SetHighColor(kBlack);
        view.DrawString("HHH", BPoint(10, 40));
    });

    const int base = Edge(picture, 40);
    // How dark the stems are is up to the font's hinting.
    const int top = base - Edge(picture, 12);
    EXPECT_LT(picture.Count(kWhite, 0, top, picture.width, base),
              picture.width * (base - top) - 10);
    EXPECT_EQ(picture.Count(kWhite, 0, base, picture.width, picture.height),
              picture.width * (picture.height - base));
}

TEST_F(DrawingTest, BrokenTextIsDrawnWithReplacements)
{
    float penX = 0;
    float width = 0;
    Draw([&](BView& view) {
        view.DrawString("a\xff\xfe z", BPoint(10, 40));
        penX = view.PenLocation().x;
        width = view.StringWidth("a\xef\xbf\xbd\xef\xbf\xbd z");
    });

    Locked([&] { EXPECT_FLOAT_EQ(penX, 10 + width); });
}

TEST_F(DrawingTest, UnseenCharactersAreDrawnAsTheyAreMeasured)
{
    float penX = 0;
    const Picture picture = Draw([&](BView& view) {
        view.DrawString("a\u202Egpj.exe\n", BPoint(10, 20));
        penX = view.PenLocation().x - view.StringWidth("a\u2039202E\u203Agpj.exe\u20390A\u203A");
        view.DrawString("a\u2039202E\u203Agpj.exe\u20390A\u203A", BPoint(10, 40));
        view.DrawString("ab", BPoint(10, 60));
        view.DrawString("a\u200Bb", BPoint(10, 80));
    });
    const auto line = [&](int base) {
        std::vector<rgb_color> pixels;
        for (int y = Edge(picture, base - 15); y < Edge(picture, base + 5); y++) {
            for (int x = 0; x < picture.width; x++) {
                pixels.push_back(picture.At(x, y));
            }
        }
        return pixels;
    };

    EXPECT_TRUE(line(20) == line(40));
    EXPECT_FALSE(line(60) == line(80));
    Locked([&] { EXPECT_FLOAT_EQ(penX, 10); });
}

TEST_F(DrawingTest, BitmapsLeaveWhatIsTransparent)
{
    BBitmap bitmap(BRect(0, 0, 3, 3), B_CMAP8);
    const BBitmap* drawn = &bitmap;
    std::memset(bitmap.Bits(), B_TRANSPARENT_8_BIT, 16);
    static_cast<uint8*>(bitmap.Bits())[5] = 0;
    const Picture picture = Draw([drawn](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(0, 0, 49, 49));
        view.SetDrawingMode(B_OP_OVER);
        view.DrawBitmap(drawn, BPoint(10, 10));
    });

    EXPECT_EQ(At(picture, 10, 10), kRed);
    // Between two densities the picture is smoothed.
    EXPECT_LT(At(picture, 11, 11).red, 160);
    EXPECT_EQ(At(picture, 13, 13), kRed);
}

TEST_F(DrawingTest, DoublePictureIsUsedOnDenseScreens)
{
    BBitmap bitmap(BRect(0, 0, 1, 1), B_RGBA32);
    const uint8 blue[] = {255, 0, 0, 255};
    std::vector<uint8> doubled;
    for (int i = 0; i < 16; ++i) {
        doubled.insert(doubled.end(), blue, blue + 4);
    }
    ASSERT_EQ(bitmap.SetDoubleBits(doubled.data(), 64, B_RGBA32), B_OK);
    const Picture picture = Draw([&bitmap](BView& view) {
        view.SetDrawingMode(B_OP_ALPHA);
        view.DrawBitmap(&bitmap, BPoint(0, 0));
    });

    EXPECT_EQ(picture.At(0, 0), picture.scale > 1 ? kBlue : kWhite);
}

/// A large bitmap is drawn in parts, in one of these colour spaces.
class BitmapPartsTest : public DrawingTest, public testing::WithParamInterface<color_space>
{
protected:
    void DrawInParts(color_space space)
    {
        BBitmap bitmap(BRect(0, 0, 1599, 1599), space);
        std::memset(bitmap.Bits(), space == B_CMAP8 ? 31 : 255,
                    static_cast<size_t>(bitmap.BitsLength()));
        int64 converted = -1;
        const Picture picture = Draw([&](BView& view) {
            view.SetHighColor(kRed);
            view.FillRect(BRect(0, 0, 99, 99));
            const int64 before = kits::CountConvertedPixels();
            for (const drawing_mode mode : {B_OP_COPY, B_OP_OVER}) {
                view.SetDrawingMode(mode);
                for (int i = 0; i < 16; ++i) {
                    const auto at = static_cast<float>(i % 4 * 400);
                    const auto down = static_cast<float>(i / 4 * 400);
                    const BRect from(at, down, at + 399, down + 399);
                    const auto left = static_cast<float>(i % 4 * 10);
                    const auto top = static_cast<float>(i / 4 * 10);
                    view.DrawBitmap(&bitmap, from, BRect(left, top, left + 9, top + 9));
                }
            }
            converted = kits::CountConvertedPixels() - before;
        });

        EXPECT_EQ(converted, 0) << "colour space " << space;
        EXPECT_EQ(At(picture, 20, 20), kWhite) << "colour space " << space;
    }
};

TEST_P(BitmapPartsTest, AreDrawnFromThePixelsThemselves)
{
    DrawInParts(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Spaces, BitmapPartsTest, testing::Values(B_RGB32, B_RGBA32, B_CMAP8),
                         [](const auto& each) { return "Space" + std::to_string(each.param); });

TEST_F(DrawingTest, DrawsWhatWasWrittenLast)
{
    BBitmap bitmap(BRect(0, 0, 9, 9), B_CMAP8);
    auto* bits = static_cast<uint8*>(bitmap.Bits());
    const Picture picture = Draw([&](BView& view) {
        std::memset(bits, BScreen().IndexForColor(kRed), 100);
        view.DrawBitmap(&bitmap, BPoint(0, 0));
        std::memset(bits, BScreen().IndexForColor(kBlue), 100);
        view.DrawBitmap(&bitmap, BPoint(20, 0));
    });

    EXPECT_EQ(At(picture, 5, 5), kRed);
    EXPECT_EQ(At(picture, 25, 5), kBlue);
}

TEST_F(DrawingTest, TheFourthByteOfPlainColoursSaysNothing)
{
    BBitmap bitmap(BRect(0, 0, 9, 9), B_RGB32);
    auto* bits = static_cast<uint8*>(bitmap.Bits());
    for (int i = 0; i < 100; ++i) {
        const uint8 red[] = {0, 0, 255, 0};
        std::memcpy(bits + 4 * i, red, 4);
    }
    const Picture picture = Draw([&](BView& view) {
        view.DrawBitmap(&bitmap, BPoint(0, 0));
        view.SetDrawingMode(B_OP_ALPHA);
        view.DrawBitmap(&bitmap, BPoint(20, 0));
    });

    EXPECT_EQ(At(picture, 5, 5), kRed);
    EXPECT_EQ(At(picture, 25, 5), kRed);
}

} // namespace
