#pragma once

#include <Point.h>
#include <Rect.h>

namespace norvane {

/// What a pane shows besides its list.
struct PaneStrips
{
    bool header = true;
    bool footer = true;
    bool server = false; // the button beside the header, and the log below the list
    bool filter = false; // the field right below the list
};

/// Where a pane's parts stand. Sizes are never below zero.
struct PaneLayout
{
    float headerWidth = 0; // the header stands at the top
    float headerHeight = 0;
    BPoint listPlace;
    float listWidth = 0; // column header and rows, without scroll bars
    float listHeight = 0;
    BPoint filterPlace; // these where there is a filter
    float filterWidth = 0;
    float filterHeight = 0;
    BPoint footerPlace;
    float footerWidth = 0;
    float footerHeight = 0;
    BPoint buttonPlace; // these where the pane is on a server
    float buttonWidth = 0;
    BPoint logPlace;
    float logWidth = 0;
    float logHeight = 0;
};

/// Lays a pane of that size out: header, list, footer from the top; a hidden strip's room is the
/// list's. Units: the numbers of BView::ResizeTo(), the last pixel's place.
PaneLayout LayOutPane(float width, float height, PaneStrips strips);

} // namespace norvane
