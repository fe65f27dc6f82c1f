#pragma once

#include <SupportDefs.h>

/// The numbers that views are made and set up with: flags, resizing modes, event masks, line ends.

// View flags: what a view asks for
constexpr uint32 B_FULL_UPDATE_ON_RESIZE = 0x80000000; // to be drawn whole at a new size
constexpr uint32 B_WILL_DRAW = 0x20000000;             // to have Draw() called
constexpr uint32 B_PULSE_NEEDED = 0x10000000;          // to have Pulse() called
constexpr uint32 B_NAVIGABLE_JUMP = 0x08000000;        // for the platform's sake
constexpr uint32 B_FRAME_EVENTS = 0x04000000;     // to have FrameMoved() and FrameResized() called
constexpr uint32 B_NAVIGABLE = 0x02000000;        // to be where Tab takes the focus
constexpr uint32 B_SUBPIXEL_PRECISE = 0x01000000; // for the platform's sake
constexpr uint32 B_DRAW_ON_CHILDREN = 0x00800000; // to have DrawAfterChildren() called
constexpr uint32 B_INPUT_METHOD_AWARE = 0x00400000; // edits text with input methods

// Resizing modes: for each side of the view, the side of the parent that it follows. FollowRule()
// and the sides are extensions of the platform, which has them in a macro.
constexpr uint32 kViewTop = 1;    // the parent's top
constexpr uint32 kViewLeft = 2;   // its left side
constexpr uint32 kViewBottom = 3; // its bottom
constexpr uint32 kViewRight = 4;  // its right side
constexpr uint32 kViewCenter = 5; // its middle, in the direction of the side

/// Makes a resizing mode of the parent's side that each side follows; 0 for none.
constexpr uint32 FollowRule(uint32 top, uint32 left, uint32 bottom, uint32 right)
{
    return (top << 12) | (left << 8) | (bottom << 4) | right;
}

/// Keeps place and size; or each side follows its own.
constexpr uint32 B_FOLLOW_NONE = 0;
constexpr uint32 B_FOLLOW_ALL_SIDES = FollowRule(kViewTop, kViewLeft, kViewBottom, kViewRight);
constexpr uint32 B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES;
/// Across: stays at the left or right, grows with the parent's width, stays in the middle.
constexpr uint32 B_FOLLOW_LEFT = FollowRule(0, kViewLeft, 0, kViewLeft);
constexpr uint32 B_FOLLOW_RIGHT = FollowRule(0, kViewRight, 0, kViewRight);
constexpr uint32 B_FOLLOW_LEFT_RIGHT = FollowRule(0, kViewLeft, 0, kViewRight);
constexpr uint32 B_FOLLOW_H_CENTER = FollowRule(0, kViewCenter, 0, kViewCenter);
/// Downwards: stays at the top or bottom, grows with the parent's height, stays in the middle.
constexpr uint32 B_FOLLOW_TOP = FollowRule(kViewTop, 0, kViewTop, 0);
constexpr uint32 B_FOLLOW_BOTTOM = FollowRule(kViewBottom, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_TOP_BOTTOM = FollowRule(kViewTop, 0, kViewBottom, 0);
constexpr uint32 B_FOLLOW_V_CENTER = FollowRule(kViewCenter, 0, kViewCenter, 0);

/// Which events a view gets wherever they happen: for SetEventMask() and SetMouseEventMask(). Only
/// B_POINTER_EVENTS is acted on.
enum : uint32 { B_POINTER_EVENTS = 0x00000001, B_KEYBOARD_EVENTS = 0x00000002 };
/// The options of both, taken for the platform's sake.
enum : uint32 {
    B_LOCK_WINDOW_FOCUS = 0x00000001,
    B_SUSPEND_VIEW_FOCUS = 0x00000002,
    B_NO_POINTER_HISTORY = 0x00000004,
    B_FULL_POINTER_HISTORY = 0x00000008,
};

// For SetLineMode()
/// How a broad line ends.
enum cap_mode { B_ROUND_CAP = 0, B_BUTT_CAP = 3, B_SQUARE_CAP = 4 };
/// How two broad lines meet.
enum join_mode { B_ROUND_JOIN = 0, B_MITER_JOIN, B_BEVEL_JOIN, B_BUTT_JOIN, B_SQUARE_JOIN };
