#include "panes/PaneLayout.h"

#include <InterfaceDefs.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr float kStripHeight = 22;
constexpr float kListTop = 24;    // below the header
constexpr float kFooterRoom = 25; // from the footer's top to the pane's bottom

float NotNegative(float size)
{
    return std::max(size, 0.0f);
}

} // namespace

PaneLayout LayOutPane(float width, float height, PaneStrips strips)
{
    PaneLayout layout;
    const float top = strips.header ? kListTop : 0;
    const float bottom = strips.footer ? height - kFooterRoom : height;
    layout.headerWidth = NotNegative(width);
    layout.headerHeight = kStripHeight;
    layout.listPlace = BPoint(0, top);
    layout.listWidth = NotNegative(width - B_V_SCROLL_BAR_WIDTH - 1);
    layout.listHeight = NotNegative(bottom - top - B_H_SCROLL_BAR_HEIGHT - 1);
    layout.footerPlace = BPoint(0, height - kFooterRoom);
    layout.footerWidth = NotNegative(width - 1);
    layout.footerHeight = kStripHeight;
    return layout;
}

} // namespace norvane
