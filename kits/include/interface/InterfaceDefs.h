#pragma once

#include <GraphicsDefs.h>
#include <InputConstants.h>
#include <SupportDefs.h>

/// Which way a bar or a line runs.
enum orientation { B_HORIZONTAL, B_VERTICAL };
/// At which edge a text is set.
enum alignment { B_ALIGN_LEFT, B_ALIGN_RIGHT, B_ALIGN_CENTER };
/// A line of one unit, the usual bevelled one of more, or none.
enum border_style { B_PLAIN_BORDER, B_FANCY_BORDER, B_NO_BORDER };
/// How wide an alert's buttons are: at least the usual, all as the widest, each as its label.
enum button_width { B_WIDTH_AS_USUAL, B_WIDTH_FROM_WIDEST, B_WIDTH_FROM_LABEL };
/// The values of a control that is on or off.
enum { B_CONTROL_OFF = 0, B_CONTROL_ON = 1 };

/// The colours of controls.
enum color_which {
    B_PANEL_BACKGROUND_COLOR = 1,
    B_MENU_BACKGROUND_COLOR,
    B_WINDOW_TAB_COLOR,
    B_KEYBOARD_NAVIGATION_COLOR,
    B_DESKTOP_COLOR,
    B_MENU_SELECTED_BACKGROUND_COLOR,
    B_MENU_ITEM_TEXT_COLOR,
    B_MENU_SELECTED_ITEM_TEXT_COLOR,
    B_PANEL_TEXT_COLOR,
    B_DOCUMENT_BACKGROUND_COLOR,
    B_DOCUMENT_TEXT_COLOR,
    B_CONTROL_BACKGROUND_COLOR,
    B_CONTROL_TEXT_COLOR,
    B_CONTROL_BORDER_COLOR,
    B_CONTROL_HIGHLIGHT_COLOR,
    B_NAVIGATION_BASE_COLOR,
    B_SHINE_COLOR,
    B_SHADOW_COLOR,
    B_TOOL_TIP_BACKGROUND_COLOR,
    B_TOOL_TIP_TEXT_COLOR,
};

// Levels for tint_color()
constexpr float B_LIGHTEN_MAX_TINT = 0.0f;                     // white
constexpr float B_LIGHTEN_2_TINT = 0.385f;                     // much lighter
constexpr float B_LIGHTEN_1_TINT = 0.590f;                     // lighter
constexpr float B_NO_TINT = 1.0f;                              // the colour itself
constexpr float B_DARKEN_1_TINT = 1.147f;                      // a trace darker
constexpr float B_DARKEN_2_TINT = 1.295f;                      // darker
constexpr float B_DARKEN_3_TINT = 1.407f;                      // still darker
constexpr float B_DARKEN_4_TINT = 1.555f;                      // much darker
constexpr float B_DARKEN_MAX_TINT = 2.0f;                      // black
constexpr float B_DISABLED_LABEL_TINT = B_DARKEN_3_TINT;       // the text of a disabled control
constexpr float B_HIGHLIGHT_BACKGROUND_TINT = B_DARKEN_2_TINT; // the ground of what is chosen
constexpr float B_DISABLED_MARK_TINT = B_LIGHTEN_2_TINT;       // the mark of a disabled control

/// The colour that controls use for `which`; black for an unknown one. Thread: any.
rgb_color ui_color(color_which which);

/// `color` mixed with white (tint below 1) or black (above 1); 0 gives white, 2 gives black.
/// Thread: any.
rgb_color tint_color(rgb_color color, float tint);

/// The longest time between the presses of a double click. Thread: any.
status_t get_click_speed(bigtime_t* speed);

/// The modifier keys that are held now, as last seen. Thread: any.
uint32 modifiers();

/// How broad scroll bars are: their right or bottom less their left or top.
constexpr float B_V_SCROLL_BAR_WIDTH = 14.0f;
constexpr float B_H_SCROLL_BAR_HEIGHT = 14.0f;
