#include "server/FrontImage.h"

#include <gtest/gtest.h>

using kits::FrontImage;

namespace {

QImage Canvas(QSize size, QColor color)
{
    QImage canvas(size, QImage::Format_RGB32);
    canvas.fill(color);
    return canvas;
}

QRegion TakeDamage(FrontImage& front)
{
    QRegion taken;
    front.TakeDamage([&taken](const QImage&, const QRegion& damage) { taken = damage; });
    return taken;
}

} // namespace

TEST(FrontImageTest, TakesTheWholeCanvasAtFirst)
{
    FrontImage front;

    EXPECT_TRUE(front.Update(Canvas({20, 10}, Qt::red), QRegion(0, 0, 1, 1)));

    EXPECT_EQ(TakeDamage(front), QRegion(0, 0, 20, 10));
    EXPECT_EQ(front.Copy().pixelColor(19, 9), QColor(Qt::red));
}

TEST(FrontImageTest, CopiesNothingButTheDamage)
{
    FrontImage front;
    front.Update(Canvas({20, 10}, Qt::red), QRegion());
    TakeDamage(front);

    front.Update(Canvas({20, 10}, Qt::blue), QRegion(5, 5, 3, 2));

    EXPECT_EQ(TakeDamage(front), QRegion(5, 5, 3, 2));
    EXPECT_EQ(front.Copy().pixelColor(7, 6), QColor(Qt::blue));
    EXPECT_EQ(front.Copy().pixelColor(8, 6), QColor(Qt::red));
    EXPECT_EQ(front.Copy().pixelColor(4, 5), QColor(Qt::red));
}

TEST(FrontImageTest, AsksForOnePresentUntilTheDamageIsTaken)
{
    FrontImage front;
    const QImage canvas = Canvas({20, 10}, Qt::red);

    EXPECT_TRUE(front.Update(canvas, QRegion(canvas.rect())));
    EXPECT_FALSE(front.Update(canvas, QRegion(0, 0, 1, 1)));
    TakeDamage(front);
    EXPECT_TRUE(front.Update(canvas, QRegion(0, 0, 1, 1)));
    EXPECT_EQ(TakeDamage(front), QRegion(0, 0, 1, 1));
}

TEST(FrontImageTest, AsksForNothingWithoutDamage)
{
    FrontImage front;
    const QImage canvas = Canvas({20, 10}, Qt::red);
    front.Update(canvas, QRegion());
    TakeDamage(front);

    EXPECT_FALSE(front.Update(canvas, QRegion()));
    EXPECT_FALSE(front.Update(canvas, QRegion(100, 100, 5, 5))); // outside
}

TEST(FrontImageTest, IsAllDamageWhenTheDensityChanges)
{
    FrontImage front;
    QImage canvas = Canvas({20, 10}, Qt::red);
    front.Update(canvas, QRegion());
    TakeDamage(front);

    canvas.setDevicePixelRatio(2);
    front.Update(canvas, QRegion());

    EXPECT_EQ(TakeDamage(front), QRegion(0, 0, 20, 10));
    EXPECT_EQ(front.Copy().devicePixelRatio(), 2.0);
}
