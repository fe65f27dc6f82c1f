#include "NativeShape.h"

#include "ViewAccess.h"
#include "WindowAccess.h"
#include "WindowState.h"

#include "app/LooperCore.h"
#include "kernel/Mutex.h"

#include <Font.h>
#include <String.h>
#include <View.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <vector>

namespace kits {

namespace {

struct Tokens
{
    Mutex mutex;
    std::unordered_map<const BWindow*, int32> ofWindows GUARDED_BY(mutex);
};

Tokens& AllTokens()
{
    static Tokens tokens;
    return tokens;
}

void CollectPulsed(BView& view, std::vector<BView*>& pulsed)
{
    if ((view.Flags() & B_PULSE_NEEDED) != 0) {
        pulsed.push_back(&view);
    }
    for (BView* child : ViewAccess::Children(view)) {
        CollectPulsed(*child, pulsed);
    }
}

} // namespace

void RememberToken(const BWindow* window, int32 token)
{
    Tokens& tokens = AllTokens();
    MutexLock lock(tokens.mutex);
    tokens.ofWindows[window] = token;
}

void ForgetToken(const BWindow* window)
{
    Tokens& tokens = AllTokens();
    MutexLock lock(tokens.mutex);
    tokens.ofWindows.erase(window);
}

int32 WindowAccess::TokenOf(const BWindow* window)
{
    Tokens& tokens = AllTokens();
    MutexLock lock(tokens.mutex);
    const auto found = tokens.ofWindows.find(window);
    return found != tokens.ofWindows.end() ? found->second : 0;
}

int32 TokenOfThisThread()
{
    const std::shared_ptr<LooperCore> core = LooperCore::OfThisThread();
    return core != nullptr && core->IsWindow() ? WindowAccess::TokenOf(core->Window()) : 0;
}

BRect WholeFrame(BRect frame)
{
    return BRect(std::round(frame.left), std::round(frame.top), std::round(frame.right),
                 std::round(frame.bottom));
}

WindowShape ShapeOf(const WindowState& state)
{
    WindowShape shape;
    shape.title = BFont::VisibleText(state.title.c_str()).String();
    shape.frame = state.frame;
    shape.asks = state.asks;
    shape.look = state.look;
    shape.feel = state.feel;
    shape.flags = state.flags;
    shape.minWidth = state.minWidth;
    shape.maxWidth = state.maxWidth;
    shape.minHeight = state.minHeight;
    shape.maxHeight = state.maxHeight;
    return shape;
}

void SendShape(WindowState& state)
{
    state.host->Link().SetShape(ShapeOf(state));
}

BRect WithinLimits(const WindowState& state, BRect frame)
{
    const float width = std::clamp(frame.Width(), state.minWidth, state.maxWidth);
    const float height = std::clamp(frame.Height(), state.minHeight, state.maxHeight);
    return BRect(frame.left, frame.top, frame.left + width, frame.top + height);
}

void HideNative(WindowState& state)
{
    if (state.host->IsShown()) {
        state.host->SetHidden();
        state.host->Link().Hide();
    }
}

void Pulse(WindowState& state)
{
    std::vector<BView*>& pulsed = state.delivering;
    pulsed.clear();
    CollectPulsed(*state.host->Root(), pulsed);
    for (size_t i = 0; i < state.delivering.size(); ++i) {
        if (state.delivering[i] != nullptr) {
            state.delivering[i]->Pulse();
        }
    }
    state.delivering.clear();
}

} // namespace kits
