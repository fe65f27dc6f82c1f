#include <Screen.h>

#include "ColorMap.h"

#include "server/WindowServer.h"

using kits::WindowServer;

BScreen::BScreen(screen_id id) : fId(id) {}

bool BScreen::IsValid() const
{
    const WindowServer& server = WindowServer::Get();
    return server.IsRunning() && fId.id >= 0 && fId.id < server.CountScreens();
}

screen_id BScreen::ID() const
{
    return fId;
}

BRect BScreen::Frame() const
{
    return IsValid() ? WindowServer::Get().ScreenFrame(fId.id) : BRect();
}

BRect BScreen::AvailableFrame() const
{
    return IsValid() ? WindowServer::Get().AvailableFrame(fId.id) : BRect();
}

color_space BScreen::ColorSpace() const
{
    return IsValid() ? B_RGB32 : B_NO_COLOR_SPACE;
}

const color_map* BScreen::ColorMap() const
{
    return system_colors();
}

uint8 BScreen::IndexForColor(rgb_color color) const
{
    return IndexForColor(color.red, color.green, color.blue, color.alpha);
}

uint8 BScreen::IndexForColor(uint8 red, uint8 green, uint8 blue, uint8 alpha) const
{
    const rgb_color color = {red, green, blue, alpha};
    return alpha == 0 || color == B_TRANSPARENT_COLOR ? B_TRANSPARENT_8_BIT
                                                      : kits::NearestIndex(red, green, blue);
}

rgb_color BScreen::ColorForIndex(uint8 index) const
{
    return system_colors()->color_list[index];
}
