#include <Window.h>

#include "NativeShape.h"
#include "ViewAccess.h"
#include "WindowKeys.h"
#include "WindowMouse.h"
#include "WindowState.h"
#include "WindowViews.h"

#include "server/FrontImage.h"
#include "server/InputMessages.h"

#include <AppDefs.h>
#include <Message.h>
#include <MessageQueue.h>
#include <OS.h>
#include <View.h>

#include <algorithm>
#include <atomic>

// What a window does with the messages that the screen sends it.

namespace kits {

namespace {

// While messages never end, the window is painted this often all the same.
constexpr bigtime_t kLongestWithoutPaint = 50'000;

// When a key was last pressed in any window: a person who types does not answer a question.
std::atomic<bigtime_t> gLastKeyTime{0};

bool IsMouse(uint32 what)
{
    return what == B_MOUSE_DOWN || what == B_MOUSE_UP || what == B_MOUSE_MOVED ||
           what == B_MOUSE_WHEEL_CHANGED;
}

bool IsKey(uint32 what)
{
    return what == B_KEY_DOWN || what == B_KEY_UP || what == B_UNMAPPED_KEY_DOWN ||
           what == B_UNMAPPED_KEY_UP || what == B_MODIFIERS_CHANGED;
}

// Returns when the one before was. Windows may get to their keys in another order.
bigtime_t KeyPressed(bigtime_t when)
{
    bigtime_t before = gLastKeyTime;
    while (before < when && !gLastKeyTime.compare_exchange_weak(before, when)) {
    }
    return before;
}

// Whether the message may press a default button, cancel, or work a control.
bool MayAnswer(const BMessage& message, WindowState& state)
{
    if (!IsMouse(message.what) && !IsKey(message.what)) {
        return true;
    }
    const bigtime_t when = message.GetInt64("when", system_time());
    const bigtime_t first = state.host->Link().Front().firstPresentTime;
    bool mayAnswer =
        state.answersAfterFrame == 0 || (first != 0 && when >= first + state.answersAfterFrame);
    if (message.what == B_KEY_DOWN) {
        const bigtime_t quietSince = std::max(first, KeyPressed(when));
        state.wasQuiet = state.wasQuiet || state.answersAfterKey == 0 ||
                         (first != 0 && when >= quietSince + state.answersAfterKey);
        const bool isFresh = !message.HasInt32("be:key_repeat") && !message.HasBool("kits:early");
        mayAnswer = mayAnswer && isFresh && state.wasQuiet;
    }
    return mayAnswer;
}

void TellActivated(BView& view, bool active)
{
    view.WindowActivated(active);
    for (size_t i = 0; i < ViewAccess::Children(view).size(); ++i) {
        TellActivated(*ViewAccess::Children(view)[i], active);
    }
}

// The window's frame after a message that tells of its new place or its new size.
BRect FrameFrom(const BMessage& message, BRect frame)
{
    BPoint leftTop;
    if (message.FindPoint("where", &leftTop) != B_OK) {
        leftTop = frame.LeftTop();
    }
    const int32 width = message.GetInt32("width", frame.IntegerWidth());
    const int32 height = message.GetInt32("height", frame.IntegerHeight());
    return BRect(leftTop, leftTop + BPoint(static_cast<float>(width), static_cast<float>(height)));
}

// The frame that came may be one that the limits do not allow; then the window insists.
void FrameChanged(BWindow& window, WindowState& state, BRect frame)
{
    const float width = std::clamp(frame.Width(), state.minWidth, state.maxWidth);
    const float height = std::clamp(frame.Height(), state.minHeight, state.maxHeight);
    const BRect allowed(frame.left, frame.top, frame.left + width, frame.top + height);
    if (allowed != state.frame) {
        state.frame = allowed;
        state.host->SetFrame(allowed);
    }
    if (state.host->IsShown()) {
        // So that the screen knows which frame the window has, or is to have.
        SendShape(state);
    }
    const BRect told = std::exchange(state.toldFrame, allowed);
    if (told.LeftTop() != allowed.LeftTop()) {
        window.FrameMoved(allowed.LeftTop());
    }
    if (told.Width() != allowed.Width() || told.Height() != allowed.Height()) {
        window.FrameResized(allowed.Width(), allowed.Height());
    }
}

void Activated(BWindow& window, WindowState& state, bool active)
{
    state.awaitsActivation = false;
    if (state.isActive == active) {
        return;
    }
    state.isActive = active;
    window.WindowActivated(active);
    TellActivated(*state.host->Root(), active);
}

void PaintIfStarved(BWindow& window, WindowState& state)
{
    if (state.host->HasWork() && !window.MessageQueue()->IsEmpty() &&
        system_time() > state.host->DueTime() + kLongestWithoutPaint) {
        window.UpdateIfNeeded();
    }
}

} // namespace

} // namespace kits

using kits::WindowState;

BHandler* BWindow::TargetOf(BMessage* message, BHandler* target)
{
    fState->takesAnswers = kits::MayAnswer(*message, *fState);
    if (fState->interceptor != nullptr && fState->interceptor->Intercept(message)) {
        return nullptr;
    }
    const int32 token = message->GetInt32("window", 0);
    if (token != 0 && token != fState->host->Link().Token()) {
        return nullptr; // of a menu that has closed meanwhile
    }
    if (target != this) {
        return target;
    }
    if (kits::IsKey(message->what) || message->what == B_INPUT_METHOD_EVENT) {
        return fState->focus != nullptr ? static_cast<BHandler*>(fState->focus) : this;
    }
    if (kits::IsMouse(message->what)) {
        BView* view = kits::MouseTarget(*fState, *message);
        return view != nullptr ? static_cast<BHandler*>(view) : this;
    }
    return target;
}

void BWindow::DispatchMessage(BMessage* message, BHandler* target)
{
    bool active = false;
    switch (message->what) {
    case B_KEY_DOWN:
        kits::KeyDown(*this, *fState, message, target);
        break;
    case B_KEY_UP:
        kits::KeyUp(message, target);
        break;
    case B_MODIFIERS_CHANGED:
        kits::ModifiersChanged(*fState, message, target);
        break;
    case B_MOUSE_DOWN:
        kits::MouseDown(*fState, message, dynamic_cast<BView*>(target));
        break;
    case B_MOUSE_UP:
        kits::MouseUp(*fState, *message, dynamic_cast<BView*>(target));
        break;
    case B_MOUSE_MOVED:
        kits::MouseMoved(*fState, *message, dynamic_cast<BView*>(target));
        break;
    case B_WINDOW_ACTIVATED:
        if (message->FindBool("active", &active) == B_OK) {
            kits::Activated(*this, *fState, active);
        }
        break;
    case B_WINDOW_MOVED:
    case B_WINDOW_RESIZED:
        kits::FrameChanged(*this, *fState, kits::FrameFrom(*message, fState->frame));
        break;
    default:
        DispatchRest(message, target);
    }
    kits::PaintIfStarved(*this, *fState);
}

void BWindow::DispatchRest(BMessage* message, BHandler* target)
{
    BRect screen;
    switch (message->what) {
    case B_MINIMIZE:
        fState->isMinimized = message->GetBool("minimize", fState->isMinimized);
        break;
    case B_ZOOM:
        break; // the screen has done it; the new frame comes by itself
    case B_SCREEN_CHANGED:
        message->FindRect("frame", &screen);
        ScreenChanged(screen, static_cast<color_space>(message->GetInt32("mode", B_RGB32)));
        break;
    case kits::kScaleChanged:
        fState->host->UpdateScale();
        break;
    default:
        BLooper::DispatchMessage(message, target);
    }
}
