#include "ApplicationEnvironment.h"

#include <InterfaceDefs.h>
#include <Screen.h>

#include <gtest/gtest.h>

namespace {

TEST(ScreenTest, MainScreenIsThere)
{
    const BScreen screen;

    EXPECT_TRUE(screen.IsValid());
    EXPECT_EQ(screen.ID(), B_MAIN_SCREEN_ID);
    EXPECT_EQ(screen.ColorSpace(), B_RGB32);
    EXPECT_EQ(screen.ColorMap(), system_colors());
    EXPECT_TRUE(screen.Frame().Contains(screen.AvailableFrame()));
}

TEST(ScreenTest, AnotherIsNot)
{
    const BScreen screen(screen_id{7});

    EXPECT_FALSE(screen.IsValid());
    EXPECT_EQ(screen.ID(), screen_id{7});
    EXPECT_EQ(screen.ColorSpace(), B_NO_COLOR_SPACE);
    EXPECT_FALSE(screen.Frame().IsValid());
}

TEST(InterfaceDefsTest, ControlsAreGreyAndAnUnknownColourIsBlack)
{
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR), (rgb_color{216, 216, 216, 255}));
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR), ui_color(B_MENU_BACKGROUND_COLOR));
    EXPECT_EQ(ui_color(static_cast<color_which>(999)), (rgb_color{0, 0, 0, 255}));
}

TEST(InterfaceDefsTest, TellsTheDesktopsClickSpeed)
{
    bigtime_t speed = 0;

    EXPECT_EQ(get_click_speed(&speed), B_OK);

    EXPECT_GT(speed, 50'000);
    EXPECT_LT(speed, 5'000'000);
    EXPECT_EQ(get_click_speed(nullptr), B_BAD_VALUE);
}

} // namespace
