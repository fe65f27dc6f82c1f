#pragma once

#include <SupportDefs.h>

/// The numbers in messages from keyboard and mouse: keys, modifiers, buttons, the pointer's way.

/// The bytes that named keys produce.
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

/// The "key" of a message whose byte is B_FUNCTION_KEY.
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

/// Modifier keys. The Ctrl key is both Command and Control, Alt is Option.
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

/// Mouse buttons, as bits.
enum : uint32 {
    B_PRIMARY_MOUSE_BUTTON = 0x01,
    B_SECONDARY_MOUSE_BUTTON = 0x02,
    B_TERTIARY_MOUSE_BUTTON = 0x04,
};

/// Where the pointer is, compared with the message before.
enum { B_ENTERED_VIEW = 0, B_INSIDE_VIEW, B_EXITED_VIEW, B_OUTSIDE_VIEW };
