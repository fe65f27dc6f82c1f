#include <Window.h>

#include "NativeShape.h"
#include "ToolTips.h"
#include "ViewAccess.h"
#include "WindowAccess.h"
#include "WindowKeys.h"
#include "WindowMouse.h"
#include "WindowState.h"
#include "WindowViews.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "server/FrontImage.h"
#include "server/InputMessages.h"

#include <AppDefs.h>
#include <Message.h>
#include <MessageQueue.h>
#include <OS.h>
#include <View.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

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

// Takes what the screen tells, apart from what the window asked for since: that is still on its way
// there, and if something else becomes of it that is told too.
void FollowScreen(WindowState& state, const FrameNews::News& news)
{
    const BRect size = news.frame.OffsetToCopy(B_ORIGIN);
    const bool isPlaceNews = news.asks.place == state.asks.place;
    const bool isSizeNews = news.asks.size == state.asks.size;
    BRect frame = isSizeNews ? size : state.frame.OffsetToCopy(B_ORIGIN);
    const BRect allowed = WithinLimits(state, frame);
    const bool isRefused = isSizeNews && allowed != size && state.refusedSize != size;
    if (isSizeNews) {
        state.refusedSize = isRefused ? size : BRect();
    }
    frame = isRefused ? allowed : frame;
    frame.OffsetTo(isPlaceNews ? news.frame.LeftTop() : state.frame.LeftTop());
    if (frame != state.frame) {
        state.frame = frame;
        state.host->SetFrame(frame);
    }
    if (isRefused) {
        state.asks.size++;
        state.asks.corrected = news.serial;
        SendShape(state);
    }
}

void FrameChanged(BWindow& window, WindowState& state)
{
    if (const std::optional<FrameNews::News> news = state.host->Link().News().Take()) {
        FollowScreen(state, *news);
    }
    const BRect frame = state.frame;
    const BRect told = std::exchange(state.toldFrame, frame);
    if (told.LeftTop() != frame.LeftTop()) {
        window.FrameMoved(frame.LeftTop());
    }
    if (told.Width() != frame.Width() || told.Height() != frame.Height()) {
        window.FrameResized(frame.Width(), frame.Height());
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

void kits::WindowAccess::HoldKeys(BWindow& window)
{
    State(window).keyHolds++;
}

void kits::WindowAccess::ReleaseKeys(BWindow& window)
{
    WindowState& state = State(window);
    if (--state.keyHolds == 0) {
        LooperRegistry::FindLooper(&window)->PutInFront(std::exchange(state.heldKeys, {}));
    }
}

BHandler* BWindow::TargetOf(BMessage* message, BHandler* target)
{
    if (fState->keyHolds > 0 && target == this &&
        (kits::IsKey(message->what) || message->what == B_INPUT_METHOD_EVENT)) {
        fState->heldKeys.emplace_back(DetachCurrentMessage());
        return nullptr;
    }
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
    if (message->WasDropped()) {
        BView* view = kits::DropTarget(*fState, *message);
        return view != nullptr ? static_cast<BHandler*>(view) : this;
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
    if (kits::ToolTips::Of(*this).Saw(*message)) {
        return;
    }
    switch (message->what) {
    case B_KEY_DOWN:
        kits::KeyDown(*this, *fState, message, *target);
        break;
    case B_KEY_UP:
        kits::KeyUp(message, *target);
        break;
    case B_MODIFIERS_CHANGED:
        kits::ModifiersChanged(*fState, message, *target);
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
    case kits::kFrameChanged:
        kits::FrameChanged(*this, *fState);
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
