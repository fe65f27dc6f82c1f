#include <Bitmap.h>
#include <GraphicsDefs.h>

#include "interface/graphics/BitmapAccess.h"
#include "interface/graphics/PixelConversion.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

// Which pixels of a bitmap are drawn, and what is converted for it.

namespace {

using kits::BitmapAccess;
using kits::BitmapPart;

constexpr uint32 kRed = 0x00ff0000; // with a fourth byte that is not full
constexpr uint32 kKey = 0xff000000 | uint32{B_TRANSPARENT_COLOR.red} << 16 |
                        uint32{B_TRANSPARENT_COLOR.green} << 8 | B_TRANSPARENT_COLOR.blue;

class BitmapPartTest : public ::testing::Test
{
protected:
    void SetPixel(int32 x, int32 y, uint32 pixel)
    {
        std::memcpy(static_cast<uint8*>(fBitmap.Bits()) + y * fBitmap.BytesPerRow() + x * 4, &pixel,
                    sizeof(pixel));
    }
    BitmapPart Part(const QRectF& part, bool hasAlpha, double scale = 1) const
    {
        return BitmapAccess::Picture(fBitmap, part, scale, hasAlpha);
    }
    // The colour drawn at the part's left top corner.
    static QColor FirstOf(const BitmapPart& part)
    {
        return part.image.pixelColor(part.pixels.topLeft().toPoint());
    }
    // A doubled picture, all blue.
    void Double()
    {
        const uint8 blue[] = {255, 0, 0, 255};
        std::vector<uint8> pixels;
        for (int32 i = 0; i < 4 * kSide * kSide; ++i) {
            pixels.insert(pixels.end(), blue, blue + 4);
        }
        ASSERT_EQ(fBitmap.SetDoubleBits(pixels.data(), static_cast<int32>(pixels.size()), B_RGBA32),
                  B_OK);
    }

    static constexpr int32 kSide = 32;
    BBitmap fBitmap{BRect(0, 0, kSide - 1, kSide - 1), B_RGB32};
};

TEST_F(BitmapPartTest, ConvertsThePartAlone)
{
    SetPixel(8, 9, kRed);
    const int64 before = kits::CountConvertedPixels();

    const BitmapPart part = Part(QRectF(8, 9, 4, 2), false);

    EXPECT_EQ(kits::CountConvertedPixels() - before, 8);
    EXPECT_EQ(part.pixels, QRectF(0, 0, 4, 2));
    EXPECT_EQ(FirstOf(part), QColor(255, 0, 0, 255));
    EXPECT_EQ(part.image.pixel(0, 0), 0xffff0000u); // also in its bytes
    EXPECT_EQ(part.image.pixelColor(1, 0), QColor(Qt::white));
}

TEST_F(BitmapPartTest, TheKeyColourIsTransparentUnlessAllIsToBeCovered)
{
    SetPixel(3, 4, kKey);

    EXPECT_EQ(FirstOf(Part(QRectF(3, 4, 2, 2), true)).alpha(), 0);
    EXPECT_EQ(FirstOf(Part(QRectF(4, 4, 2, 2), true)), QColor(Qt::white));
    EXPECT_EQ(FirstOf(Part(QRectF(3, 4, 2, 2), false)).alpha(), 255);
}

TEST_F(BitmapPartTest, DenseScreensShowTheDoublePicture)
{
    Double();

    EXPECT_EQ(FirstOf(Part(QRectF(1, 1, 4, 4), true, 1)), QColor(Qt::white));
    const BitmapPart dense = Part(QRectF(1, 1, 4, 4), true, 2);
    EXPECT_EQ(FirstOf(dense), QColor(Qt::blue));
    EXPECT_EQ(dense.pixels, QRectF(2, 2, 8, 8));
}

TEST_F(BitmapPartTest, WhatIsWrittenLaterReplacesTheDoublePicture)
{
    const uint8 black[] = {0, 0, 0, 255};
    Double();
    fBitmap.SetBits(black, 4, 0, B_RGB32);
    EXPECT_EQ(FirstOf(Part(QRectF(0, 0, 4, 4), true, 2)), QColor(Qt::black));

    Double();
    SetPixel(0, 0, 0xff00ff00);
    EXPECT_EQ(FirstOf(Part(QRectF(0, 0, 4, 4), true, 2)), QColor(Qt::green));
}

} // namespace
