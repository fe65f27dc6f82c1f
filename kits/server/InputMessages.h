#pragma once

// The messages that the server posts to a window's looper. Beyond the platform's documented fields:
//
// every input message        "window" (int32) WindowLink::Token() of the window it belongs to;
//                            "when" (int64) system_time(), when it happened
// B_KEY_DOWN, B_UNMAPPED_KEY_DOWN, B_KEY_UP, B_UNMAPPED_KEY_UP
//                            "key" (int32), "modifiers" (int32), "raw_char" (int32), "byte" (int8,
//                            several), "bytes" (string); a repeat has "be:key_repeat" (int32, 1 and
//                            up); "kits:early" (bool, true) on a key typed before the window had
//                            the focus; "kits:shortcut" (string, several): the characters a menu
//                            shortcut is tried with, in order (the layout's, then by position)
// B_MODIFIERS_CHANGED        "modifiers", "be:old_modifiers" (int32)
// B_MOUSE_DOWN, B_MOUSE_UP   "where" (BPoint, window units), "screen_where" (BPoint), "buttons",
//                            "modifiers", "clicks" (int32; down only), "button" (int32: the one
//                            that changed)
// B_MOUSE_MOVED              "where", "screen_where", "buttons", "modifiers"; "be:transit" (int32:
//                            B_ENTERED_VIEW, B_INSIDE_VIEW, B_EXITED_VIEW of the native window;
//                            views work out their own). At most one is waiting in a queue behind a
//                            press or release. While something is dragged, "kits:drag" (int32)
//                            names it: see DraggedMessage
// what is dropped            the dragged message itself, or B_SIMPLE_DATA with "refs" from another
//                            program; "be:actions" (int32): B_COPY_TARGET or B_MOVE_TARGET
// B_MOUSE_WHEEL_CHANGED      "be:wheel_delta_x", "be:wheel_delta_y" (float, whole text lines: the
//                            desktop's lines per notch are counted in already; down and right
//                            positive), "where", "screen_where", "modifiers"
// B_INPUT_METHOD_EVENT       to a text field that an input method writes into: "be:string" (string)
//                            and either "be:confirmed" (bool, true): the text is entered, in place
//                            of "kits:replace_length" units of UTF-16 from "kits:replace_from"
//                            (int32, from the caret); or it is shown as a preview, the caret at
//                            "be:selection" (int32, in its units). "kits:view", "kits:resets"
//                            (int32): which field it is for, as InputMethodState said
// B_WINDOW_ACTIVATED         "active" (bool)
// B_MINIMIZE                 "minimize" (bool)
// B_ZOOM                     none
// B_QUIT_REQUESTED           none
// B_SCREEN_CHANGED           "frame" (BRect), "mode" (int32: a color_space)
// kits::kFrameChanged        none: the frame waits in FrameNews; at most one waits in a queue
// kits::kScaleChanged        "scale" (float): the window came to a screen of another density
// kits::kCaptureLost         none: another program took the mouse while SetMouseCapture was on;
//                            menus close

#include <SupportDefs.h>

namespace kits {

constexpr uint32 kFrameChanged = 'kFrm';
constexpr uint32 kScaleChanged = 'kScl';
constexpr uint32 kCaptureLost = 'kCpL';

} // namespace kits
