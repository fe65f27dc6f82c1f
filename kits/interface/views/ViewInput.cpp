#include <View.h>

#include "ToolTips.h"
#include "ViewAccess.h"
#include "ViewState.h"
#include "WindowAccess.h"
#include "WindowKeys.h"
#include "WindowMouse.h"
#include "WindowState.h"
#include "WindowViews.h"

#include "server/WindowServer.h"

#include <AppDefs.h>
#include <Cursor.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>

// Focus, keys that no view wants, event masks, the pointer's shape, and what a window forgets when
// a view leaves.

namespace kits {

class CursorAccess
{
public:
    static BCursorID IdOf(const BCursor& cursor) { return cursor.fId; }
};

namespace {

PointerShape PointerShapeOf(const BCursor* cursor)
{
    switch (cursor != nullptr ? CursorAccess::IdOf(*cursor) : B_CURSOR_ID_SYSTEM_DEFAULT) {
    case B_CURSOR_ID_I_BEAM:
        return PointerShape::kText;
    case B_CURSOR_ID_RESIZE_EAST_WEST:
        return PointerShape::kResizeHorizontal;
    default:
        return PointerShape::kArrow;
    }
}

} // namespace

} // namespace kits

void BView::KeyDown(const char* bytes, int32 byteCount)
{
    if (fHost == nullptr) {
        return;
    }
    const uint32 held = ::modifiers();
    BMessage* message = Window()->CurrentMessage();
    const bool isKey = message != nullptr && message->what == B_KEY_DOWN;
    const uint32 down = isKey ? static_cast<uint32>(message->GetInt32("modifiers", 0)) : held;
    if (byteCount == 1 && bytes[0] == B_TAB && (down & (B_COMMAND_KEY | B_OPTION_KEY)) == 0) {
        kits::MoveFocus(kits::WindowAccess::State(*Window()), (down & B_SHIFT_KEY) == 0);
    } else if (isKey && NextHandler() != nullptr) {
        NextHandler()->MessageReceived(message);
    }
}

bool BView::IsFocus() const
{
    return fHost != nullptr && Window()->CurrentFocus() == this;
}

void BView::MakeFocus(bool focus)
{
    CheckLock();
    if (fHost == nullptr || focus == IsFocus()) {
        return;
    }
    BWindow* window = Window();
    kits::WindowState& state = kits::WindowAccess::State(*window);
    if (!focus) {
        state.focus = nullptr;
        window->SetPreferredHandler(nullptr);
        return;
    }
    if (state.focus != nullptr) {
        state.focus->MakeFocus(false);
    }
    // The former focus may have given it to another view, or closed this one.
    if (fHost == nullptr || (state.focus != nullptr && state.focus != this)) {
        return;
    }
    state.focus = this;
    window->SetPreferredHandler(this);
}

status_t BView::SetEventMask(uint32 mask, uint32 /*options*/)
{
    CheckLock();
    fEventMask = mask;
    if (fHost != nullptr) {
        kits::ViewListens(*Window(), *this);
    }
    return B_OK;
}

status_t BView::SetMouseEventMask(uint32 mask, uint32 /*options*/)
{
    CheckLock();
    const BMessage* message = fHost != nullptr ? Window()->CurrentMessage() : nullptr;
    if (message == nullptr || message->what != B_MOUSE_DOWN) {
        return B_ERROR; // there is no release to wait for
    }
    kits::WindowState& state = kits::WindowAccess::State(*Window());
    fMouseEventMask = mask;
    if ((mask & B_POINTER_EVENTS) != 0) {
        state.captured = this;
    } else if (state.captured == this) {
        state.captured = nullptr;
    }
    return B_OK;
}

void BView::GetMouse(BPoint* location, uint32* buttons, bool /*checkMessageQueue*/)
{
    CheckLock();
    BPoint where;
    uint32 down = 0;
    kits::WindowServer::Get().GetMouse(&where, &down);
    if (location != nullptr) {
        *location = ConvertFromScreen(where);
    }
    if (buttons != nullptr) {
        *buttons = down;
    }
}

void BView::SetViewCursor(const BCursor* cursor, bool /*sync*/)
{
    CheckLock();
    kits::ViewAccess::State(*this).pointer = kits::PointerShapeOf(cursor);
    if (fHost != nullptr) {
        kits::ShapePointer(kits::WindowAccess::State(*Window()));
    }
}

namespace kits {

namespace {

void Forget(std::vector<BView*>& views, const BView* view)
{
    views.erase(std::remove(views.begin(), views.end(), view), views.end());
}

void CountPulse(WindowState& state, const BView& view, bool wantsPulse)
{
    bool& isCounted = ViewAccess::State(view).isPulsed;
    if (isCounted != wantsPulse) {
        isCounted = wantsPulse;
        state.pulsedViews += wantsPulse ? 1 : -1;
    }
}

bool IsInside(const BView* view, const BView& tree)
{
    while (view != nullptr && view != &tree) {
        view = ViewAccess::TreeParent(*view);
    }
    return view != nullptr;
}

} // namespace

void ViewJoined(BWindow& window, BView& view)
{
    window.AddHandler(&view);
    view.SetNextHandler(view.Parent() != nullptr ? static_cast<BHandler*>(view.Parent()) : &window);
    ViewListens(window, view);
}

void ViewLeft(BWindow& window, const BView& view)
{
    WindowState& state = WindowAccess::State(window);
    ViewAccess::State(view).isPointerInside = false;
    for (BView** place : {&state.focus, &state.pointed, &state.captured}) {
        if (*place == &view) {
            *place = nullptr;
        }
    }
    std::replace(state.delivering.begin(), state.delivering.end(), const_cast<BView*>(&view),
                 static_cast<BView*>(nullptr));
    Forget(state.listening, &view);
    if (state.tips != nullptr) {
        state.tips->ViewGone(&view);
    }
    if (state.defaultButton == &view) {
        state.defaultButton = nullptr;
    }
    if (state.keyMenus != nullptr && &state.keyMenus->View() == &view) {
        state.keyMenus = nullptr;
    }
    ShapePointer(state);
    CountPulse(state, view, false);
    window.RemoveHandler(const_cast<BView*>(&view));
}

void ViewHidden(BWindow& window, BView& view)
{
    WindowState& state = WindowAccess::State(window);
    if (IsInside(state.focus, view)) {
        state.focus->MakeFocus(false);
    }
    if (IsInside(state.captured, view)) {
        state.captured = nullptr;
    }
    if (IsInside(state.pointed, view)) {
        state.pointed = nullptr;
    }
    ShapePointer(state);
}

void ViewListens(BWindow& window, BView& view)
{
    WindowState& state = WindowAccess::State(window);
    CountPulse(state, view, (view.Flags() & B_PULSE_NEEDED) != 0);
    Forget(state.listening, &view);
    if (view.EventMask() != 0) {
        state.listening.push_back(&view);
    }
}

BLooper* LooperOf(BWindow* window)
{
    return window;
}

bool IsHidden(const BWindow& window)
{
    return window.IsHidden();
}

bool IsLocked(const BWindow& window)
{
    return window.IsLocked();
}

} // namespace kits
