#pragma once

#include <SupportDefs.h>

/// The numbers that views are made and set up with: flags, resizing modes, event masks, line ends.

// View flags.
constexpr uint32 B_FULL_UPDATE_ON_RESIZE = 0x80000000;
constexpr uint32 B_WILL_DRAW = 0x20000000;
constexpr uint32 B_PULSE_NEEDED = 0x10000000;
constexpr uint32 B_NAVIGABLE_JUMP = 0x08000000;
constexpr uint32 B_FRAME_EVENTS = 0x04000000;
constexpr uint32 B_NAVIGABLE = 0x02000000;
constexpr uint32 B_SUBPIXEL_PRECISE = 0x01000000;
constexpr uint32 B_DRAW_ON_CHILDREN = 0x00800000;
constexpr uint32 B_INPUT_METHOD_AWARE = 0x00400000;

// Resizing modes: for each side of the view, the side of the parent that it follows.
constexpr uint32 kViewTop = 1;
constexpr uint32 kViewLeft = 2;
constexpr uint32 kViewBottom = 3;
constexpr uint32 kViewRight = 4;
constexpr uint32 kViewCenter = 5;

/// Makes a resizing mode of the parent's side that each side follows; 0 for none.
constexpr uint32 FollowRule(uint32 top, uint32 left, uint32 bottom, uint32 right)
{
    return (top << 12) | (left << 8) | (bottom << 4) | right;
}

constexpr uint32 B_FOLLOW_NONE = 0;
constexpr uint32 B_FOLLOW_ALL_SIDES = FollowRule(kViewTop, kViewLeft, kViewBottom, kViewRight);
constexpr uint32 B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES;
constexpr uint32 B_FOLLOW_LEFT = FollowRule(0, kViewLeft, 0, kViewLeft);
constexpr uint32 B_FOLLOW_RIGHT = FollowRule(0, kViewRight, 0, kViewRight);
constexpr uint32 B_FOLLOW_LEFT_RIGHT = FollowRule(0, kViewLeft, 0, kViewRight);
constexpr uint32 B_FOLLOW_H_CENTER = FollowRule(0, kViewCenter, 0, kViewCenter);
constexpr uint32 B_FOLLOW_TOP = FollowRule(kViewTop, 0, kViewTop, 0);
constexpr uint32 B_FOLLOW_BOTTOM = FollowRule(kViewBottom, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_TOP_BOTTOM = FollowRule(kViewTop, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_V_CENTER = FollowRule(kViewCenter, 0, kViewCenter, 0);

// For SetEventMask and SetMouseEventMask.
enum : uint32 { B_POINTER_EVENTS = 0x00000001, B_KEYBOARD_EVENTS = 0x00000002 };
enum : uint32 {
    B_LOCK_WINDOW_FOCUS = 0x00000001,
    B_SUSPEND_VIEW_FOCUS = 0x00000002,
    B_NO_POINTER_HISTORY = 0x00000004,
    B_FULL_POINTER_HISTORY = 0x00000008,
};

// For SetLineMode.
enum cap_mode { B_ROUND_CAP = 0, B_BUTT_CAP = 3, B_SQUARE_CAP = 4 };
enum join_mode { B_ROUND_JOIN = 0, B_MITER_JOIN, B_BEVEL_JOIN, B_BUTT_JOIN, B_SQUARE_JOIN };
