#include "InputRouter.h"

#include "ShowRequest.h"

#include <algorithm>
#include <utility>

namespace kits {

namespace {

// A window manager may refuse the focus; keys must not wait for it for ever.
constexpr bigtime_t kPendingLimit = 1'000'000;

// Whatever a window manager does to the focus because windows came or went, it has done by then: it
// may give it to a new window, back, and to that window again.
constexpr bigtime_t kSettlingLimit = 1'000'000;

// Two events of one repeat carry the same time, or one that differs by the rounding of its
// millisecond.
constexpr bigtime_t kRepeatGap = 1'000;
// Between two windows of ours the focus is nobody's for so long at most, on a busy machine.
constexpr bigtime_t kFocusGap = 500'000;

} // namespace

const InputRouter::Window* InputRouter::Find(int32 window) const
{
    const auto found = fWindows.find(window);
    return found == fWindows.end() ? nullptr : &found->second;
}

// Windows

int32 InputRouter::Shown(int32 window, const ShowRequest& request, bool isPopUp, bigtime_t now)
{
    Window shown;
    shown.opener = request.opener;
    shown.isPopUp = isPopUp;
    shown.isModal = request.isModal;
    shown.isExempt = request.isExemptFromModal;
    shown.isLendingKeys = !request.takesKeys;
    shown.awaitsFocus = request.takesFocus && !isPopUp;
    const bool awaitsKeys = shown.awaitsFocus && request.takesKeys;
    if (awaitsKeys) {
        shown.pendingUntil = now + kPendingLimit;
    }
    fWindows[window] = shown;
    fWindowsChanged = isPopUp ? fWindowsChanged : now;
    fHeirs.erase(window);
    if (request.isModal) {
        std::erase(fModals, window);
        fModals.push_back(window);
    }
    return awaitsKeys && IsShown(request.opener) ? OwnerOf(request.opener) : 0;
}

InputRouter::Leaving InputRouter::WillLeave(int32 window, bigtime_t now)
{
    Leaving leaving;
    if (!IsShown(window)) {
        return leaving;
    }
    fWindowsChanged = Find(window)->isPopUp ? fWindowsChanged : now;
    const bool passesFocus = HasOrAwaitsFocus(window) && !Find(window)->isPopUp;
    if (LendsKeys(window)) {
        fHeirs[window] = OwnerOf(Find(window)->opener);
    }
    std::erase(fModals, window);
    std::erase(fRecent, window);
    if (passesFocus) {
        leaving.successor = Successor(window);
    }
    if (fPressOwner == window) {
        leaving.buttons = fPressButtons;
        fSwallowedButtons |= fPressButtons;
        fPressOwner = 0;
        fPressButtons = 0;
    }
    if (fCapture == window) {
        fCapture = 0;
    }
    if (fFocused == window) {
        FocusLeaves(now);
        fFocused = 0;
    }
    fWindows.erase(window);
    return leaving;
}

int32 InputRouter::Successor(int32 window) const
{
    if (TopmostModal() != 0) {
        return TopmostModal();
    }
    // An opener that is hidden at the moment (an operation during its question) passes it on.
    const Window* leaving = Find(window);
    const int32 opener = leaving == nullptr ? 0 : OwnerOf(leaving->opener);
    if (opener != window && IsShown(opener)) {
        return opener;
    }
    return fRecent.empty() ? 0 : fRecent.back();
}

std::vector<std::pair<int32, int32>> InputRouter::FocusChanged(int32 window)
{
    const int32 owner = OwnerOf(window);
    std::vector<std::pair<int32, int32>> released;
    if (owner == 0) {
        for (const auto& [code, held] : fKeys) {
            if (held.owner != 0 && held.released == 0) {
                released.emplace_back(code, held.owner);
            }
        }
        fKeys.clear();
    }
    fFocused = owner;
    const auto found = fWindows.find(owner);
    if (found == fWindows.end()) {
        return released;
    }
    found->second.hadFocus = true;
    found->second.pendingUntil = 0;
    found->second.awaitsFocus = false;
    std::erase(fRecent, owner);
    fRecent.push_back(owner);
    return released;
}

void InputRouter::FocusComes(int32 window, bigtime_t now)
{
    const int32 owner = OwnerOf(window);
    const bool hadItLast = !fRecent.empty() && fRecent.back() == owner;
    if (!hadItLast && now > fWindowsChanged + kSettlingLimit) {
        PersonChose(window);
    }
}

void InputRouter::FocusLeaves(bigtime_t now)
{
    fFocusLeft = now;
    fDownBefore.clear();
    for (const auto& [code, held] : fKeys) {
        if (held.released == 0) {
            fDownBefore.push_back(code);
        }
    }
}

void InputRouter::KeysFoundDown(const std::vector<int32>& codes, bigtime_t now)
{
    const bool wasAwayForAMoment = fFocusLeft != 0 && now - fFocusLeft < kFocusGap;
    for (const int32 code : codes) {
        if (wasAwayForAMoment &&
            std::find(fDownBefore.begin(), fDownBefore.end(), code) == fDownBefore.end()) {
            continue;
        }
        HeldKey held;
        held.isDead = true;
        fKeys.try_emplace(code, held);
    }
}

void InputRouter::PersonChose(int32 window)
{
    const auto found = fWindows.find(OwnerOf(window));
    if (found != fWindows.end()) {
        found->second.isLendingKeys = false;
    }
}

// Who is behind whom

int32 InputRouter::OwnerOf(int32 window) const
{
    const Window* found = Find(window);
    while (found != nullptr && found->isPopUp) {
        window = found->opener;
        found = Find(window);
    }
    return window;
}

bool InputRouter::IsBelow(int32 window, int32 ancestor) const
{
    // A chain is never longer than the windows there are; an opener's own opener may be gone.
    for (size_t steps = 0; steps <= fWindows.size(); ++steps) {
        if (window == ancestor) {
            return true;
        }
        const Window* found = Find(window);
        if (found == nullptr) {
            return false;
        }
        window = found->opener;
    }
    return false;
}

bool InputRouter::IsBlocked(int32 window) const
{
    const int32 modal = TopmostModal();
    if (modal == 0) {
        return false;
    }
    const Window* owner = Find(OwnerOf(window));
    return owner != nullptr && !owner->isExempt && !IsBelow(window, modal);
}

bool InputRouter::IsPending(const Window& window, bigtime_t now) const
{
    return window.pendingUntil != 0 && now < window.pendingUntil;
}

bool InputRouter::HasOrAwaitsFocus(int32 window) const
{
    const Window* found = Find(window);
    return found != nullptr && (fFocused == window || found->awaitsFocus);
}

bool InputRouter::LendsKeys(int32 window) const
{
    const Window* found = Find(window);
    return found != nullptr && found->isLendingKeys;
}

bool InputRouter::HadFocus(int32 window) const
{
    const Window* found = Find(window);
    return found != nullptr && found->hadFocus;
}

// Keys

int32 InputRouter::KeyTargetOf(int32 native, bigtime_t now) const
{
    int32 target = OwnerOf(native);
    for (size_t steps = fHeirs.size(); steps > 0 && fHeirs.count(target) != 0; --steps) {
        target = fHeirs.at(target);
    }
    const Window* window = Find(target);
    if (window == nullptr) {
        return 0;
    }
    const int32 modal = TopmostModal();
    // Of several alerts the newest has the keys, although the older ones take clicks.
    if (modal != 0 && (IsBlocked(target) || (window->isModal && !IsBelow(target, modal)))) {
        target = modal;
    }
    for (size_t steps = 0; steps < fWindows.size(); ++steps) {
        window = Find(target);
        if (window == nullptr || !window->isLendingKeys || !IsShown(window->opener)) {
            break;
        }
        target = OwnerOf(window->opener);
    }
    // A pending window may have opened another one already.
    for (size_t steps = 0; steps < fWindows.size(); ++steps) {
        const auto pending = std::find_if(fWindows.begin(), fWindows.end(), [&](const auto& entry) {
            return OwnerOf(entry.second.opener) == target && entry.first != target &&
                   IsPending(entry.second, now) && !IsBlocked(entry.first);
        });
        if (pending == fWindows.end()) {
            break;
        }
        target = pending->first;
    }
    return target;
}

void InputRouter::KeyMoved(int32 code, int32 window)
{
    const auto found = fKeys.find(code);
    if (found != fKeys.end() && !found->second.isDead) {
        found->second.owner = window;
    }
}

int32 InputRouter::TextTarget(int32 native, bigtime_t now)
{
    return KeyTargetOf(native, now);
}

bool InputRouter::IsRepeat(const KeyEvent& event)
{
    const auto found = fKeys.find(event.code);
    if (found == fKeys.end()) {
        return false;
    }
    HeldKey& held = found->second;
    if (event.isFirst) {
        fKeys.erase(found);
        return false;
    }
    if (held.released == 0) {
        return true;
    }
    if (event.when - held.released <= kRepeatGap) {
        held.released = 0;
        return true;
    }
    fKeys.erase(found);
    return false;
}

InputRouter::KeyTarget InputRouter::RepeatTarget(HeldKey& held, int32 target) const
{
    KeyTarget result;
    if (held.owner == 0 || held.owner != target) {
        // Coming back to its owner later must not make it act again: the person holds it for what
        // he saw.
        held.isDead = true;
    }
    if (held.isDead) {
        return result;
    }
    result.window = target;
    result.repeat = ++held.repeats;
    result.isEarly = !Find(target)->hadFocus;
    return result;
}

InputRouter::KeyTarget InputRouter::KeyPressed(const KeyEvent& event, bigtime_t now)
{
    const int32 target = KeyTargetOf(event.native, now);
    KeyTarget result;
    if (event.isModifier) {
        result.window = target;
        return result;
    }
    if (IsRepeat(event)) {
        return RepeatTarget(fKeys[event.code], target);
    }
    HeldKey held;
    held.owner = target;
    fKeys[event.code] = held;
    if (target == 0) {
        return result;
    }
    result.window = target;
    result.isEarly = !Find(target)->hadFocus;
    return result;
}

int32 InputRouter::KeyReleased(const KeyEvent& event)
{
    if (event.isModifier) {
        return OwnerOf(event.native);
    }
    const auto found = fKeys.find(event.code);
    if (found == fKeys.end()) {
        return 0;
    }
    const int32 owner = found->second.owner;
    if (fRule == RepeatRule::kTimestamps) {
        found->second.released = event.when;
    } else {
        fKeys.erase(found);
    }
    return IsShown(owner) ? owner : 0;
}

// Mouse

InputRouter::MouseTarget InputRouter::MousePressed(int32 native, uint32 button)
{
    MouseTarget result;
    if (fCapture != 0) {
        fPressOwner = fCapture;
        fPressButtons |= button;
        result.window = fCapture;
        return result;
    }
    if (!IsShown(native)) {
        return result;
    }
    if (fPressButtons != 0) {
        // A second button belongs to the drag that is going on, wherever the pointer is.
        fPressButtons |= button;
        result.window = fPressOwner;
        return result;
    }
    if (IsBlocked(native)) {
        fSwallowedButtons |= button;
        result.raise = TopmostModal();
        return result;
    }
    PersonChose(native);
    fPressOwner = native;
    fPressButtons = button;
    result.window = native;
    return result;
}

int32 InputRouter::MouseMoved(int32 native) const
{
    if (fCapture != 0) {
        return fCapture;
    }
    if (fPressButtons != 0) {
        return fPressOwner;
    }
    return fSwallowedButtons == 0 && IsShown(native) && !IsBlocked(native) ? native : 0;
}

int32 InputRouter::MouseReleased(int32, uint32 button)
{
    fSwallowedButtons &= ~button;
    if ((fPressButtons & button) == 0) {
        return 0;
    }
    fPressButtons &= ~button;
    const int32 owner = fPressOwner;
    if (fPressButtons == 0) {
        fPressOwner = 0;
    }
    return fCapture != 0 ? fCapture : owner;
}

InputRouter::Press InputRouter::DragBegins()
{
    return {std::exchange(fPressOwner, 0), std::exchange(fPressButtons, 0)};
}

int32 InputRouter::WheelTurned(int32 native) const
{
    if (fCapture != 0) {
        return fCapture;
    }
    return IsShown(native) && !IsBlocked(native) ? native : 0;
}

} // namespace kits
