#include <InterfaceDefs.h>

#include "server/WindowServer.h"

#include <cmath>

namespace {

uint8 Mix(uint8 from, uint8 to, float share)
{
    const float mixed =
        static_cast<float>(from) + (static_cast<float>(to) - static_cast<float>(from)) * share;
    return static_cast<uint8>(std::lround(mixed));
}

} // namespace

rgb_color ui_color(color_which which)
{
    switch (which) {
    case B_PANEL_BACKGROUND_COLOR:
    case B_MENU_BACKGROUND_COLOR:
    case B_CONTROL_BACKGROUND_COLOR:
        return {216, 216, 216, 255};
    case B_WINDOW_TAB_COLOR:
        return {255, 203, 0, 255};
    case B_KEYBOARD_NAVIGATION_COLOR:
    case B_NAVIGATION_BASE_COLOR:
        return {0, 0, 229, 255};
    case B_DESKTOP_COLOR:
        return {51, 102, 152, 255};
    case B_MENU_SELECTED_BACKGROUND_COLOR:
    case B_CONTROL_HIGHLIGHT_COLOR:
        return {152, 152, 152, 255};
    case B_DOCUMENT_BACKGROUND_COLOR:
    case B_SHINE_COLOR:
        return {255, 255, 255, 255};
    case B_CONTROL_BORDER_COLOR:
        return {96, 96, 96, 255};
    case B_SHADOW_COLOR:
        return {152, 152, 152, 255};
    case B_TOOL_TIP_BACKGROUND_COLOR:
        return {255, 255, 225, 255};
    case B_TOOL_TIP_TEXT_COLOR:
    case B_MENU_ITEM_TEXT_COLOR:
    case B_MENU_SELECTED_ITEM_TEXT_COLOR:
    case B_PANEL_TEXT_COLOR:
    case B_DOCUMENT_TEXT_COLOR:
    case B_CONTROL_TEXT_COLOR:
        break;
    }
    return {0, 0, 0, 255};
}

rgb_color tint_color(rgb_color color, float tint)
{
    const uint8 goal = tint < B_NO_TINT ? 255 : 0;
    const float share = tint < B_NO_TINT ? 1 - tint : tint - 1;
    const float kept = share < 0 ? 0 : (share > 1 ? 1 : share);
    return {Mix(color.red, goal, kept), Mix(color.green, goal, kept), Mix(color.blue, goal, kept),
            color.alpha};
}

status_t get_click_speed(bigtime_t* speed)
{
    if (speed == nullptr) {
        return B_BAD_VALUE;
    }
    *speed = kits::WindowServer::Get().ClickSpeed();
    return B_OK;
}

uint32 modifiers()
{
    return kits::WindowServer::Get().Modifiers();
}
