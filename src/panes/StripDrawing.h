#pragma once

#include <GraphicsDefs.h>

class BView;

namespace norvane {

// The colours of the strips around a pane's list.
inline constexpr rgb_color kStripBackground = {216, 216, 216, 255};
inline constexpr rgb_color kStripLight = {255, 255, 255, 255};
inline constexpr rgb_color kStripShadow = {152, 152, 152, 255};
inline constexpr rgb_color kStripText = {78, 89, 126, 255};

/// How far below a strip's text line its baseline is, in whole units.
int StripBaseline();
/// Where the line of text stands, from the strip's top.
float StripTextBottom(int baseline);

/// Paints what header and footer have in common: background, bevels, one line of text.
void DrawStrip(BView& strip, const char* text, int baseline);

} // namespace norvane
