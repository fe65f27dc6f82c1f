#pragma once

#include <GraphicsDefs.h>
#include <SupportDefs.h>

// The bytes that named keys produce.
enum {
    B_BACKSPACE = 0x08,
    B_RETURN = 0x0a, // what Enter gives, under both names
    B_ENTER = 0x0a,
    B_SPACE = 0x20,
    B_TAB = 0x09,
    B_ESCAPE = 0x1b,
    B_SUBSTITUTE = 0x1a,
    B_LEFT_ARROW = 0x1c,
    B_RIGHT_ARROW = 0x1d,
    B_UP_ARROW = 0x1e,
    B_DOWN_ARROW = 0x1f,
    B_INSERT = 0x05,
    B_DELETE = 0x7f,
    B_HOME = 0x01,
    B_END = 0x04,
    B_PAGE_UP = 0x0b,
    B_PAGE_DOWN = 0x0c,
    B_FUNCTION_KEY = 0x10,
};

// The "key" of a message whose byte is B_FUNCTION_KEY.
enum {
    B_F1_KEY = 2,
    B_F2_KEY,
    B_F3_KEY,
    B_F4_KEY,
    B_F5_KEY,
    B_F6_KEY,
    B_F7_KEY,
    B_F8_KEY,
    B_F9_KEY,
    B_F10_KEY,
    B_F11_KEY,
    B_F12_KEY,
    B_PRINT_KEY,
    B_SCROLL_KEY,
    B_PAUSE_KEY,
};

// Modifier keys. The Ctrl key is both Command and Control, Alt is Option.
enum : uint32 {
    B_SHIFT_KEY = 0x0001,
    B_COMMAND_KEY = 0x0002,
    B_CONTROL_KEY = 0x0004,
    B_CAPS_LOCK = 0x0008,
    B_SCROLL_LOCK = 0x0010,
    B_NUM_LOCK = 0x0020,
    B_OPTION_KEY = 0x0040,
    B_MENU_KEY = 0x0080,
    B_LEFT_SHIFT_KEY = 0x0100,
    B_RIGHT_SHIFT_KEY = 0x0200,
    B_LEFT_COMMAND_KEY = 0x0400,
    B_RIGHT_COMMAND_KEY = 0x0800,
    B_LEFT_CONTROL_KEY = 0x1000,
    B_RIGHT_CONTROL_KEY = 0x2000,
    B_LEFT_OPTION_KEY = 0x4000,
    B_RIGHT_OPTION_KEY = 0x8000,
};

enum : uint32 {
    B_PRIMARY_MOUSE_BUTTON = 0x01,
    B_SECONDARY_MOUSE_BUTTON = 0x02,
    B_TERTIARY_MOUSE_BUTTON = 0x04,
};

/// Where the pointer is, compared with the message before.
enum { B_ENTERED_VIEW = 0, B_INSIDE_VIEW, B_EXITED_VIEW, B_OUTSIDE_VIEW };

enum orientation { B_HORIZONTAL, B_VERTICAL };
enum alignment { B_ALIGN_LEFT, B_ALIGN_RIGHT, B_ALIGN_CENTER };
enum border_style { B_PLAIN_BORDER, B_FANCY_BORDER, B_NO_BORDER };
enum button_width { B_WIDTH_AS_USUAL, B_WIDTH_FROM_WIDEST, B_WIDTH_FROM_LABEL };
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
};

// Levels for tint_color().
constexpr float B_LIGHTEN_MAX_TINT = 0.0f;
constexpr float B_LIGHTEN_2_TINT = 0.385f;
constexpr float B_LIGHTEN_1_TINT = 0.590f;
constexpr float B_NO_TINT = 1.0f;
constexpr float B_DARKEN_1_TINT = 1.147f;
constexpr float B_DARKEN_2_TINT = 1.295f;
constexpr float B_DARKEN_3_TINT = 1.407f;
constexpr float B_DARKEN_4_TINT = 1.555f;
constexpr float B_DARKEN_MAX_TINT = 2.0f;
constexpr float B_DISABLED_LABEL_TINT = B_DARKEN_3_TINT;
constexpr float B_HIGHLIGHT_BACKGROUND_TINT = B_DARKEN_2_TINT;
constexpr float B_DISABLED_MARK_TINT = B_LIGHTEN_2_TINT;

/// The colour that controls use for `which`; black for an unknown one. Thread: any.
rgb_color ui_color(color_which which);

/// `color` mixed with white (tint below 1) or black (above 1); 0 gives white, 2 gives black.
/// Thread: any.
rgb_color tint_color(rgb_color color, float tint);

/// The longest time between the presses of a double click. Thread: any.
status_t get_click_speed(bigtime_t* speed);

/// The modifier keys that are held now, as last seen. Thread: any.
uint32 modifiers();

constexpr float B_V_SCROLL_BAR_WIDTH = 14.0f;
constexpr float B_H_SCROLL_BAR_HEIGHT = 14.0f;
