#include "interface/graphics/PictureShrinking.h"

#include <gtest/gtest.h>

namespace {

using kits::IsShrunk;
using kits::ShrinkPicture;

QImage Stripes(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, x % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        }
    }
    return image;
}

TEST(PictureShrinkingTest, EachPixelIsTheAverageOfWhatItStandsFor)
{
    const QImage image = Stripes(40, 20);
    const QRect target(0, 0, 20, 10);

    const QImage half = ShrinkPicture(image, QRectF(image.rect()), target, target);

    ASSERT_EQ(half.size(), QSize(20, 10));
    EXPECT_EQ(half.pixel(0, 0), qRgb(128, 128, 128));
    EXPECT_EQ(half.pixel(19, 9), qRgb(128, 128, 128));
}

TEST(PictureShrinkingTest, PixelsAtABorderCountByTheirShare)
{
    QImage image(3, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(0, 0, 0));
    image.setPixel(1, 0, qRgb(255, 255, 255));
    image.setPixel(2, 0, qRgb(0, 0, 0));
    const QRect target(0, 0, 2, 1);

    const QImage shrunk = ShrinkPicture(image, QRectF(image.rect()), target, target);

    EXPECT_EQ(shrunk.pixel(0, 0), qRgb(85, 85, 85)); // a third of the white one
    EXPECT_EQ(shrunk.pixel(1, 0), qRgb(85, 85, 85));
}

TEST(PictureShrinkingTest, PartsFitEachOther)
{
    QImage image(701, 503, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, x * y % 256));
        }
    }
    const QRect target(10, 20, 300, 200);
    const QRect part(97, 63, 41, 29);

    const QImage whole = ShrinkPicture(image, QRectF(image.rect()), target, target);
    const QImage alone = ShrinkPicture(image, QRectF(image.rect()), target, part);

    EXPECT_EQ(alone, whole.copy(part.translated(-target.topLeft())));
}

TEST(PictureShrinkingTest, TransparentPixelsLendNoColour)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 0, 0, 255));
    image.setPixel(1, 0, qRgba(0, 255, 0, 0));
    const QRect target(0, 0, 1, 1);

    const QImage shrunk = ShrinkPicture(image, QRectF(image.rect()), target, target);

    EXPECT_EQ(shrunk.pixelColor(0, 0), QColor(255, 0, 0, 128));
}

TEST(PictureShrinkingTest, LooksAtPartOfWhatIsMuchLarger)
{
    const QImage image = Stripes(4001, 1);
    const QRect target(0, 0, 40, 1);

    const QImage shrunk = ShrinkPicture(image, QRectF(image.rect()), target, target);

    for (int x = 0; x < 40; ++x) {
        EXPECT_GT(qRed(shrunk.pixel(x, 0)), 20) << x;
        EXPECT_LT(qRed(shrunk.pixel(x, 0)), 235) << x;
    }
}

TEST(PictureShrinkingTest, OneSideMayGrow)
{
    const QImage image = Stripes(40, 2);
    const QRect target(0, 0, 20, 6);

    const QImage shrunk = ShrinkPicture(image, QRectF(image.rect()), target, target);

    EXPECT_EQ(shrunk.pixel(5, 5), qRgb(128, 128, 128));
}

TEST(PictureShrinkingTest, OnlyWhatGetsSmallerIsShrunk)
{
    const QImage image = Stripes(40, 20);

    EXPECT_TRUE(IsShrunk(image, QRectF(image.rect()), QRect(0, 0, 39, 20)));
    EXPECT_FALSE(IsShrunk(image, QRectF(image.rect()), QRect(0, 0, 40, 20)));
    EXPECT_FALSE(IsShrunk(image, QRectF(image.rect()), QRect(0, 0, 80, 40)));
    EXPECT_FALSE(IsShrunk(image.convertToFormat(QImage::Format_Indexed8), QRectF(image.rect()),
                          QRect(0, 0, 4, 2)));
}

} // namespace
