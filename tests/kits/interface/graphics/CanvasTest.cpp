#include <interface/graphics/Canvas.h>

#include <gtest/gtest.h>

namespace {

using kits::Canvas;

class CanvasTest : public ::testing::TestWithParam<double>
{
protected:
    void SetUp() override
    {
        fCanvas.SetSize(301, 201, GetParam());
        fCanvas.SetClip(QRegion(fCanvas.Image().rect()));
    }
    Canvas fCanvas;
};

TEST_P(CanvasTest, RectanglesTile)
{
    int covered = 0;
    for (int x = 0; x < 301; x += 7) {
        const QRect part = fCanvas.ToDevice(QRect(x, 0, 7, 1));
        EXPECT_EQ(part.left(), covered);
        covered = part.left() + part.width();
    }
}

TEST_P(CanvasTest, CoversTheWindowWhole)
{
    EXPECT_GE(fCanvas.Image().width(), 301 * GetParam());
    EXPECT_GE(fCanvas.Image().height(), 201 * GetParam());
    EXPECT_GE(fCanvas.Thickness(1), 1);
    EXPECT_LE(fCanvas.Thickness(1), GetParam() + 0.25);
}

TEST_P(CanvasTest, KeepsWhatFitsWhenItGrows)
{
    fCanvas.Painter().fillRect(QRect(0, 0, 5, 5), Qt::red);
    fCanvas.Finish();

    EXPECT_FALSE(fCanvas.SetSize(400, 100, GetParam()));

    EXPECT_EQ(fCanvas.Image().pixelColor(4, 4), QColor(Qt::red));
    EXPECT_EQ(fCanvas.Image().pixelColor(6, 6), QColor(Qt::white));
    EXPECT_TRUE(fCanvas.SetSize(400, 100, GetParam() + 1));
}

TEST_P(CanvasTest, MovesOverlappingPixelsBothWays)
{
    for (int y = 0; y < 100; ++y) {
        fCanvas.Painter().fillRect(QRect(0, y, 50, 1), QColor(y, 0, 0));
    }
    fCanvas.Finish();

    fCanvas.Move(QRect(0, 10, 50, 90), 0, 10);
    EXPECT_EQ(fCanvas.Image().pixelColor(10, 99).red(), 89);
    EXPECT_EQ(fCanvas.Image().pixelColor(10, 10).red(), 0);
    fCanvas.Move(QRect(0, 0, 50, 90), 0, -10);
    EXPECT_EQ(fCanvas.Image().pixelColor(10, 0).red(), 0);
    EXPECT_EQ(fCanvas.Image().pixelColor(10, 89).red(), 89);
}

TEST_P(CanvasTest, MovingBeyondTheEdgeIsCut)
{
    fCanvas.Move(QRect(-50, -50, 10000, 10000), 20, -30);
    fCanvas.Move(QRect(0, 0, 10, 10), 100000, 0);

    EXPECT_FALSE(fCanvas.IsNull());
}

INSTANTIATE_TEST_SUITE_P(Scales, CanvasTest, ::testing::Values(1.0, 1.25, 1.5, 1.75, 2.0, 3.0),
                         [](const auto& tested) {
                             return "Percent" +
                                    std::to_string(static_cast<int>(tested.param * 100));
                         });

} // namespace
