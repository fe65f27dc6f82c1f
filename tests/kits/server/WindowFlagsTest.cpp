#include "server/WindowFlags.h"

#include <gtest/gtest.h>

using kits::SizeLimitsFor;
using kits::WindowFlagsFor;
using kits::WindowShape;

namespace {

WindowShape Shape(uint32 flags, window_look look = B_TITLED_WINDOW_LOOK)
{
    WindowShape shape;
    shape.frame = BRect(10, 10, 209, 109);
    shape.flags = flags;
    shape.look = look;
    return shape;
}

bool Has(const WindowShape& shape, Qt::WindowType flag)
{
    return (WindowFlagsFor(shape) & flag) == flag;
}

} // namespace

TEST(WindowFlagsTest, GivesAPlainWindowAllButtons)
{
    const WindowShape shape = Shape(0);

    EXPECT_TRUE(Has(shape, Qt::WindowCloseButtonHint));
    EXPECT_TRUE(Has(shape, Qt::WindowMinimizeButtonHint));
    EXPECT_TRUE(Has(shape, Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(Has(shape, Qt::CustomizeWindowHint));
}

TEST(WindowFlagsTest, LeavesOutTheButtonsThatAreForbidden)
{
    EXPECT_FALSE(Has(Shape(B_NOT_CLOSABLE), Qt::WindowCloseButtonHint));
    EXPECT_FALSE(Has(Shape(B_NOT_MINIMIZABLE), Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(Has(Shape(B_NOT_ZOOMABLE), Qt::WindowMaximizeButtonHint));
    EXPECT_FALSE(Has(Shape(B_NOT_RESIZABLE), Qt::WindowMaximizeButtonHint));
}

TEST(WindowFlagsTest, KnowsDialogsMenusAndFloatingWindows)
{
    EXPECT_EQ(WindowFlagsFor(Shape(0, B_MODAL_WINDOW_LOOK)) & Qt::WindowType_Mask, Qt::Dialog);
    EXPECT_EQ(WindowFlagsFor(Shape(0, B_FLOATING_WINDOW_LOOK)) & Qt::WindowType_Mask, Qt::Tool);
    EXPECT_TRUE(Has(Shape(0, B_NO_BORDER_WINDOW_LOOK), Qt::FramelessWindowHint));
    WindowShape menu = Shape(0);
    menu.kind = WindowShape::Kind::kPopUp;
    EXPECT_EQ(WindowFlagsFor(menu) & Qt::WindowType_Mask, Qt::Popup);
}

TEST(SizeLimitsTest, CountPixelsWhereThePlatformCountsDistances)
{
    WindowShape shape = Shape(0);
    shape.minWidth = 99;
    shape.maxHeight = 299;

    EXPECT_EQ(SizeLimitsFor(shape).smallest, QSize(100, 1));
    EXPECT_EQ(SizeLimitsFor(shape).largest, QSize(32769, 300));
}

TEST(SizeLimitsTest, HoldAFixedSizeInTheForbiddenDirections)
{
    const kits::SizeLimits wide = SizeLimitsFor(Shape(B_NOT_V_RESIZABLE));
    const kits::SizeLimits fixed = SizeLimitsFor(Shape(B_NOT_RESIZABLE));

    EXPECT_EQ(wide.smallest, QSize(1, 100));
    EXPECT_EQ(wide.largest.height(), 100);
    EXPECT_EQ(fixed.smallest, QSize(200, 100));
    EXPECT_EQ(fixed.largest, QSize(200, 100));
}

TEST(SizeLimitsTest, NeverCross)
{
    WindowShape shape = Shape(0);
    shape.minWidth = 499;
    shape.maxWidth = 99;

    EXPECT_EQ(SizeLimitsFor(shape).largest.width(), 500);
}

TEST(FrameRectTest, KeepsRightAndBottomIncluded)
{
    const QRect rect = kits::RectFrom(BRect(10, 20, 209, 119));

    EXPECT_EQ(rect, QRect(10, 20, 200, 100));
    EXPECT_EQ(kits::RectTo(rect), BRect(10, 20, 209, 119));
}
