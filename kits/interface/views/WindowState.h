#pragma once

#include "KeyMenus.h"
#include "ViewHost.h"

#include <Message.h>
#include <Messenger.h>
#include <Rect.h>
#include <WindowConstants.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace kits {

class ToolTips;

struct WindowShortcut
{
    uint32 key;
    uint32 modifiers;
    std::unique_ptr<BMessage> message;
    BMessenger target;
};

/// What a BWindow keeps. Guarded by the window's lock.
struct WindowState
{
    std::string title;
    window_look look = B_TITLED_WINDOW_LOOK;
    window_feel feel = B_NORMAL_WINDOW_FEEL;
    uint32 flags = 0;
    BRect frame;     // screen units
    BRect toldFrame; // as FrameMoved() and FrameResized() last said
    FrameAsks asks;
    // The size that came although the limits forbid it, and was refused; none: not valid. One that
    // comes again is taken: somebody insists who is stronger.
    BRect refusedSize;
    BRect beforeZoom;
    float minWidth = 0;
    float maxWidth = 32768;
    float minHeight = 0;
    float maxHeight = 32768;
    float maxZoomWidth = 32768;
    float maxZoomHeight = 32768;

    int32 hideLevel = 1; // made hidden
    bool isActive = false;
    bool awaitsActivation = false; // was shown to take the focus, and nothing was heard since
    bool isMinimized = false;
    bool isQuitting = false;
    bool takesFocus = true;
    bool takesKeys = true;
    PointerShape pointer = PointerShape::kArrow; // as the screen was told
    int32 opener = 0;                            // its token

    std::unique_ptr<ViewHost> host;
    std::vector<ViewHost*> popUps;  // borrowed; open menus, a tip
    std::shared_ptr<ToolTips> tips; // null before the first message; goes before the host

    BView* focus = nullptr;
    BView* defaultButton = nullptr; // a BButton
    KeyMenus* keyMenus = nullptr;   // borrowed; of the key menu bar
    std::vector<WindowShortcut> shortcuts;
    InputInterceptor* interceptor = nullptr;

    int32 keyHolds = 0; // while there are any, keys wait
    std::vector<std::unique_ptr<BMessage>> heldKeys;

    BView* pointed = nullptr;  // where the pointer was last
    BView* captured = nullptr; // the view that asked for the mouse until the release
    std::vector<BView*>
        delivering; // those whose hooks are about to be called; cleared when one goes
    std::vector<BView*> listening; // those with an event mask

    bigtime_t answersAfterFrame = 0;
    bigtime_t answersAfterKey = 0;
    bool wasQuiet = false;    // for so long, since the first frame
    bool takesAnswers = true; // the message being handled may answer

    uint64 publishedFrame = 0; // what the server was told last: of which frame, with which focus
    const BView* publishedFocus = nullptr; // compared only
    bool isTextPublished = false;
    bool isTreePublished = false;
    std::vector<BRect> publishedDrops; // areas
    std::unordered_map<const void*, int32>
        thingIds; // of rows and menu items, for assistive programs
    int32 lastThing = 0;

    bigtime_t pulseRate = 500'000;
    bigtime_t nextPulse = 0;
    int32 pulsedViews = 0;
};

} // namespace kits
