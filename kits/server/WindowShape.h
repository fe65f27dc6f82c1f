#pragma once

#include "FrameNews.h"

#include <Rect.h>
#include <SupportDefs.h>
#include <WindowConstants.h>

#include <string>

namespace kits {

/// Everything the native window is told, sent whole; the server applies what differs.
struct WindowShape
{
    enum class Kind : uint8 {
        kWindow,
        kPopUp, // a menu: no frame, takes no focus, transient for its opener, kept off nothing
        kTip,   // the same for what is only read: the pointer goes through it
    };

    Kind kind = Kind::kWindow;
    std::string title;
    // The client area, in screen units; right and bottom included. Of a window that is there
    // already only what was asked for anew is heeded: its place, its size or both.
    BRect frame;
    FrameAsks asks;
    window_look look = B_TITLED_WINDOW_LOOK;
    window_feel feel = B_NORMAL_WINDOW_FEEL;
    uint32 flags = 0;
    // As BWindow::SetSizeLimits: widths and heights of frames (pixels - 1).
    float minWidth = 0;
    float maxWidth = 32768;
    float minHeight = 0;
    float maxHeight = 32768;
};

/// What the pointer looks like over a window.
enum class PointerShape : uint8 {
    kArrow,
    kText,
    kResizeHorizontal,
    kResizeVertical,
    kHand,
    kWait,
};

} // namespace kits
