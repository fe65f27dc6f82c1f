#include "panes/PaneLayout.h"

#include <InterfaceDefs.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr float kStripHeight = 22;
constexpr float kListTop = 24;    // below the header
constexpr float kFooterRoom = 25; // from the footer's top to the pane's bottom
constexpr float kFilterRoom = 24; // from the field's top to what is below it
constexpr float kButtonRoom = 100;
constexpr float kLogRoom = 50;

float NotNegative(float size)
{
    return std::max(size, 0.0f);
}

} // namespace

PaneLayout LayOutPane(float width, float height, PaneStrips strips)
{
    PaneLayout layout;
    const float top = strips.header ? kListTop : 0;
    const float listEnd = strips.footer ? height - kFooterRoom : height;
    const float filterEnd = strips.server ? listEnd - kLogRoom : listEnd;
    const float bottom = strips.filter ? filterEnd - kFilterRoom : filterEnd;
    const float buttonRoom = strips.server && strips.header ? kButtonRoom : 0;
    layout.headerWidth = NotNegative(width - buttonRoom);
    layout.headerHeight = kStripHeight;
    layout.listPlace = BPoint(0, top);
    layout.listWidth = NotNegative(width - B_V_SCROLL_BAR_WIDTH - 1);
    layout.listHeight = NotNegative(bottom - top - B_H_SCROLL_BAR_HEIGHT - 1);
    layout.filterPlace = BPoint(0, bottom + 1);
    layout.filterWidth = NotNegative(width - 1);
    layout.filterHeight = kStripHeight;
    layout.footerPlace = BPoint(0, height - kFooterRoom);
    layout.footerWidth = NotNegative(width - 1);
    layout.footerHeight = kStripHeight;
    layout.buttonPlace = BPoint(layout.headerWidth + 1, 0);
    layout.buttonWidth = NotNegative(std::min(width, buttonRoom) - 1);
    layout.logPlace = BPoint(0, filterEnd);
    layout.logWidth = NotNegative(width - 1);
    layout.logHeight = NotNegative(std::min(kLogRoom, listEnd) - 1);
    return layout;
}

} // namespace norvane
