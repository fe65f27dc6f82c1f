#pragma once

#include <SupportDefs.h>

#include <vector>

namespace norvane {

/// One line of a menu of the main window; one without a label is a separator.
struct MenuLine
{
    const char* label = nullptr;
    uint32 what = 0;
    char shortcut = 0;
    uint32 modifiers = 0; // beside the Command key
};

struct MenuColumn
{
    const char* label;
    std::vector<MenuLine> lines;
};

constexpr int32 kMaxPanes = 10;

/// The menus of the main window, from left to right. Lends; valid for ever.
const std::vector<MenuColumn>& MainMenus();

} // namespace norvane
