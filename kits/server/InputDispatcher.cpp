#include "InputDispatcher.h"

#include "InputMessages.h"
#include "InputMethod.h"
#include "NativeWindow.h"
#include "ServerState.h"
#include "Surface.h"
#include "X11Keyboard.h"

#include <AppDefs.h>
#include <InputConstants.h>
#include <Message.h>
#include <OS.h>
#include <Point.h>

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace kits {

namespace {

BPoint PointFrom(QPoint point)
{
    return BPoint(static_cast<float>(point.x()), static_cast<float>(point.y()));
}

// The platform's points are pixels: a fraction stays in the pixel it lies in.
QPoint PixelOf(const QPointF& point)
{
    return QPoint(static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y())));
}

/// As long as it lives, an event of this time is dispatched.
class Happening
{
public:
    Happening(bigtime_t& current, bigtime_t when) : fCurrent(current) { fCurrent = when; }
    ~Happening() { fCurrent = 0; }
    Happening(const Happening&) = delete;
    Happening& operator=(const Happening&) = delete;

private:
    bigtime_t& fCurrent;
};

void RememberPointer(QPoint where, uint32 buttons)
{
    const uint64 x = static_cast<uint32>(where.x());
    const uint64 y = static_cast<uint32>(where.y());
    LastInput().where = static_cast<int64>((x << 32) | y);
    LastInput().buttons = buttons;
}

// "kits:code" tells the server, when it hands the message over to another window, which key it was.
std::unique_ptr<BMessage> KeyMessage(uint32 what, const PlatformKey& key, int32 code,
                                     uint32 modifiers, bigtime_t when)
{
    auto message = std::make_unique<BMessage>(what);
    message->AddInt64("when", when);
    message->AddInt32("key", key.key);
    message->AddInt32("modifiers", static_cast<int32>(modifiers));
    message->AddInt32("raw_char", key.rawChar);
    for (const char byte : key.bytes) {
        message->AddInt8("byte", static_cast<int8>(byte));
    }
    message->AddString("bytes", key.bytes.c_str());
    for (const std::string& shortcut : key.shortcuts) {
        message->AddString("kits:shortcut", shortcut.c_str());
    }
    message->AddInt32("kits:code", code);
    return message;
}

} // namespace

InputSnapshot& LastInput()
{
    static InputSnapshot snapshot;
    return snapshot;
}

void InputDispatcher::Post(int32 window, std::unique_ptr<BMessage> message) const
{
    if (const NativeWindow* target = fState.windows.Find(window)) {
        target->Post(std::move(message));
    }
}

bigtime_t InputDispatcher::EventTime() const
{
    return fEventTime != 0 ? fEventTime : system_time();
}

// Keys

void InputDispatcher::Key(const NativeWindow& native, const QKeyEvent& event)
{
    const Happening happening(fEventTime, fClock.TimeOf(event.timestamp(), system_time()));
    const bool isPress = event.type() == QEvent::KeyPress;
    const NativeKey key{event.key(), event.text(), event.modifiers(), event.nativeScanCode(),
                        event.nativeModifiers()};
    InputRouter::KeyEvent routed;
    routed.native = native.Token();
    routed.code = KeyCode(key);
    routed.isModifier = IsModifierKey(key.key);
    routed.when = static_cast<bigtime_t>(event.timestamp()) * 1000;
    if (const auto unseen = x11::UnseenRelease(routed.code)) {
        routed.unseenRelease = bigtime_t{*unseen} * 1000;
    }
    fSides.Changed(key.scanCode, isPress);
    const uint32 modifiers = fSides.Modifiers(key.modifiers, key.nativeModifiers);
    // A release that only makes room for the next repeat is none.
    if (!isPress && event.isAutoRepeat()) {
        return;
    }
    if (!routed.isModifier) {
        fLoneAlt.Disturb();
    }
    const bool isAlone =
        fLoneAlt.Changed(LastInput().modifiers, modifiers, event.timestamp(), x11::LastTaken());
    if (!isPress) {
        const int32 owner = fState.router.KeyReleased(routed);
        ModifiersSeen(owner, modifiers, isAlone ? Alt::kAlone : Alt::kOther);
        if (!routed.isModifier) {
            PostKeyUp(owner, routed.code);
        }
        return;
    }
    const InputRouter::KeyTarget target = fState.router.KeyPressed(routed, system_time());
    ModifiersSeen(target.window, modifiers);
    if (routed.isModifier) {
        return;
    }
    const PlatformKey translated = TranslateKey(key);
    fHeld[routed.code] = translated;
    PostKey(translated.bytes.empty() ? B_UNMAPPED_KEY_DOWN : B_KEY_DOWN, target, translated,
            routed.code);
}

void InputDispatcher::PostKey(uint32 what, const InputRouter::KeyTarget& target,
                              const PlatformKey& key, int32 code)
{
    if (target.window == 0) {
        return;
    }
    auto message = KeyMessage(what, key, code, LastInput().modifiers, EventTime());
    message->AddInt32("window", target.window);
    if (target.repeat > 0) {
        message->AddInt32("be:key_repeat", target.repeat);
    }
    if (target.isEarly) {
        message->AddBool("kits:early", true);
    }
    Post(target.window, std::move(message));
}

void InputDispatcher::PostKeyUp(int32 window, int32 code)
{
    const auto held = fHeld.find(code);
    if (held == fHeld.end()) {
        return;
    }
    if (window != 0) {
        const uint32 what = held->second.bytes.empty() ? B_UNMAPPED_KEY_UP : B_KEY_UP;
        auto message = KeyMessage(what, held->second, code, LastInput().modifiers, EventTime());
        message->AddInt32("window", window);
        Post(window, std::move(message));
    }
    fHeld.erase(held);
}

void InputDispatcher::ModifiersSeen(int32 target, uint32 modifiers, Alt alt)
{
    const uint32 old = LastInput().modifiers.exchange(modifiers);
    if (old == modifiers || target == 0) {
        return;
    }
    auto message = std::make_unique<BMessage>(B_MODIFIERS_CHANGED);
    message->AddInt64("when", system_time());
    message->AddInt32("window", target);
    message->AddInt32("modifiers", static_cast<int32>(modifiers));
    message->AddInt32("be:old_modifiers", static_cast<int32>(old));
    if (alt == Alt::kAlone) {
        message->AddBool("kits:alt_alone", true);
    }
    Post(target, std::move(message));
}

// A modifier may have been pressed or released while another program had the keyboard: of that only
// the pointer's events tell. They know nothing of locks.
void InputDispatcher::PointerModifiersSeen(Qt::KeyboardModifiers modifiers)
{
    constexpr uint32 kLocks = B_CAPS_LOCK | B_NUM_LOCK | B_SCROLL_LOCK;
    const uint32 locks = LastInput().modifiers & kLocks;
    ModifiersSeen(0, (fSides.Modifiers(modifiers, 0) & ~kLocks) | locks);
}

void InputDispatcher::TextInput(const NativeWindow& native, const QInputMethodEvent& event)
{
    const int32 target = fState.router.TextTarget(native.Token(), system_time());
    const NativeWindow* window = fState.windows.Find(target);
    const bool isTextField = window != nullptr && window->GetPublished().inputMethod.isTextField;
    const bool isPlain =
        event.preeditString().isEmpty() && event.replacementLength() == 0 && fPreviewing != target;
    if (isPlain || !isTextField) {
        Commit(target, event.commitString());
        return;
    }
    for (auto& message : TextInputMessages(window->GetPublished().inputMethod, event)) {
        message->AddInt32("window", target);
        Post(target, std::move(message));
    }
    fPreviewing = event.preeditString().isEmpty() ? 0 : target;
}

void InputDispatcher::PreviewEnded(int32 window)
{
    if (fPreviewing == window) {
        fPreviewing = 0;
    }
}

void InputDispatcher::Commit(int32 target, const QString& text)
{
    for (const char32_t character : text.toUcs4()) {
        PlatformKey key;
        key.bytes = QString::fromUcs4(&character, 1).toStdString();
        key.rawChar = static_cast<int32>(character);
        InputRouter::KeyTarget keyTarget;
        keyTarget.window = target;
        keyTarget.isEarly = target != 0 && !fState.router.HadFocus(target);
        PostKey(B_KEY_DOWN, keyTarget, key, 0);
    }
}

// Mouse

std::unique_ptr<BMessage> InputDispatcher::MouseMessage(uint32 what, int32 target,
                                                        QPoint onScreen) const
{
    // A captured event says which window lies below; any other is told to the window it is for.
    const bool isCaptured = fState.router.Capture() != 0;
    const int32 named = isCaptured ? fState.windows.WindowAt(onScreen) : target;
    const NativeWindow* window = fState.windows.Find(named);
    const bool hasPlace = window != nullptr && window->GetSurface() != nullptr;
    const QPoint inWindow = hasPlace ? window->GetSurface()->mapFromGlobal(onScreen) : onScreen;
    auto message = std::make_unique<BMessage>(what);
    message->AddInt64("when", EventTime());
    message->AddInt32("window", named);
    message->AddPoint("where", PointFrom(inWindow));
    message->AddPoint("screen_where", PointFrom(onScreen));
    message->AddInt32("buttons", static_cast<int32>(LastInput().buttons.load()));
    message->AddInt32("modifiers", static_cast<int32>(LastInput().modifiers.load()));
    return message;
}

void InputDispatcher::Mouse(const NativeWindow& native, const QMouseEvent& event)
{
    const Happening happening(fEventTime, fClock.TimeOf(event.timestamp(), system_time()));
    const QPoint onScreen = PixelOf(event.globalPosition());
    RememberPointer(onScreen, ButtonsFrom(event.buttons()));
    PointerModifiersSeen(event.modifiers());
    if (event.type() != QEvent::MouseMove) {
        fLoneAlt.Disturb();
    }
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        PressMouse(native, event);
        break;
    case QEvent::MouseButtonRelease:
        ReleaseMouse(native, event);
        break;
    case QEvent::MouseMove:
        MoveMouse(native, onScreen, B_INSIDE_VIEW);
        break;
    default:
        break; // the system's own double clicks: the presses are counted here
    }
}

void InputDispatcher::PressMouse(const NativeWindow& native, const QMouseEvent& event)
{
    const QPoint onScreen = PixelOf(event.globalPosition());
    const uint32 button = ButtonsFrom(event.button());
    const InputRouter::MouseTarget target = fState.router.MousePressed(native.Token(), button);
    if (target.raise != 0) {
        fClicks.Reset();
        if (NativeWindow* modal = fState.windows.Find(target.raise)) {
            modal->Activate();
        }
        return;
    }
    if (target.window == 0) {
        return;
    }
    const QStyleHints* hints = QGuiApplication::styleHints();
    const int32 clicks = fClicks.Count({target.window, button, onScreen, EventTime()},
                                       hints->mouseDoubleClickInterval() * bigtime_t{1000},
                                       hints->mouseDoubleClickDistance());
    auto message = MouseMessage(B_MOUSE_DOWN, target.window, onScreen);
    message->AddInt32("button", static_cast<int32>(button));
    message->AddInt32("clicks", clicks);
    Post(target.window, std::move(message));
}

void InputDispatcher::ReleaseMouse(const NativeWindow& native, const QMouseEvent& event)
{
    const uint32 button = ButtonsFrom(event.button());
    const int32 target = fState.router.MouseReleased(native.Token(), button);
    if (target != 0) {
        auto message = MouseMessage(B_MOUSE_UP, target, PixelOf(event.globalPosition()));
        message->AddInt32("button", static_cast<int32>(button));
        Post(target, std::move(message));
    }
    if (event.buttons() == Qt::NoButton && fState.router.Capture() == 0) {
        GiveGrabBack();
    }
}

void InputDispatcher::MoveMouse(const NativeWindow& native, QPoint onScreen, int32 transit)
{
    const int32 target = fState.router.MouseMoved(native.Token());
    const NativeWindow* window = fState.windows.Find(target);
    if (window == nullptr) {
        return;
    }
    auto message = MouseMessage(B_MOUSE_MOVED, target, onScreen);
    message->AddInt32("be:transit", transit);
    window->PostMove(std::move(message));
}

void InputDispatcher::Crossed(const NativeWindow& native, bool isInside)
{
    MoveMouse(native, QCursor::pos(), isInside ? B_ENTERED_VIEW : B_EXITED_VIEW);
}

void InputDispatcher::Wheel(const NativeWindow& native, const QWheelEvent& event)
{
    fClicks.Reset();
    fLoneAlt.Disturb();
    const QPoint onScreen = PixelOf(event.globalPosition());
    RememberPointer(onScreen, ButtonsFrom(event.buttons()));
    PointerModifiersSeen(event.modifiers());
    const int32 target = fState.router.WheelTurned(native.Token());
    if (target == 0) {
        fWheel.Reset();
        return;
    }
    const QPoint lines =
        fWheel.Add(event.angleDelta(), QGuiApplication::styleHints()->wheelScrollLines());
    if (lines.isNull()) {
        return;
    }
    auto message = MouseMessage(B_MOUSE_WHEEL_CHANGED, target, onScreen);
    message->AddFloat("be:wheel_delta_x", static_cast<float>(lines.x()));
    message->AddFloat("be:wheel_delta_y", static_cast<float>(lines.y()));
    Post(target, std::move(message));
}

// Capture

void InputDispatcher::SetCapture(const NativeWindow& window, bool on)
{
    if (!on) {
        if (fState.router.Capture() == window.Token()) {
            fState.router.SetCapture(0);
        }
        // With a button down the grab's end would send its release to another program, or to none.
        if (QGuiApplication::mouseButtons() == Qt::NoButton) {
            GiveGrabBack();
        }
        return;
    }
    fState.router.SetCapture(window.Token());
    fClicks.Reset();
    if (fState.canGrabMouse && window.GetSurface() != nullptr) {
        fGrabber = window.Token();
        window.GetSurface()->setMouseGrabEnabled(true);
    }
}

void InputDispatcher::GiveGrabBack()
{
    const NativeWindow* grabber = fState.windows.Find(std::exchange(fGrabber, 0));
    if (grabber != nullptr && grabber->GetSurface() != nullptr) {
        grabber->GetSurface()->setMouseGrabEnabled(false);
    }
}

// Focus

void InputDispatcher::FocusChanged(QWindow* window)
{
    const NativeWindow* native = fState.windows.Find(window);
    if (native != nullptr && !fState.router.IsShown(native->Token())) {
        // It has left and passed the focus on, but the window manager was slower.
        if (NativeWindow* successor = fState.windows.Find(fSuccessor)) {
            successor->Activate();
        }
        return;
    }
    fLoneAlt.Disturb();
    fState.departures.FocusMoved();
    const int32 token = native == nullptr ? 0 : native->Token();
    const bool comesFromOutside = fState.router.Focused() == 0;
    if (token == 0 && !comesFromOutside) {
        fState.router.FocusLeaves(system_time());
    }
    fState.router.FocusComes(token, system_time());
    for (const auto& [code, owner] : fState.router.FocusChanged(token)) {
        PostKeyUp(owner, code);
    }
    if (token == 0) {
        fSides.Clear();
        if (const int32 capture = fState.router.Capture()) {
            auto lost = std::make_unique<BMessage>(kCaptureLost);
            lost->AddInt32("window", capture);
            Post(capture, std::move(lost));
        }
    } else if (comesFromOutside) {
        fState.router.KeysFoundDown(x11::KeysAtFocus(), system_time());
    }
    TellActivation();
}

void InputDispatcher::TellActivation()
{
    const int32 active = fState.router.Focused();
    if (active == fActive) {
        return;
    }
    const auto tell = [this](int32 window, bool isActive) {
        auto message = std::make_unique<BMessage>(B_WINDOW_ACTIVATED);
        message->AddInt64("when", system_time());
        message->AddInt32("window", window);
        message->AddBool("active", isActive);
        Post(window, std::move(message));
    };
    if (fActive != 0) {
        tell(fActive, false);
    }
    fActive = active;
    if (active != 0) {
        fState.windows.Raise(active);
        tell(active, true);
    }
}

bool InputDispatcher::WindowLeaves(int32 token)
{
    const InputRouter::Leaving leaving = fState.router.WillLeave(token, system_time());
    for (uint32 button = 1; button != 0 && button <= leaving.buttons; button <<= 1) {
        if ((leaving.buttons & button) == 0) {
            continue;
        }
        auto message = MouseMessage(B_MOUSE_UP, token, QCursor::pos());
        message->ReplaceInt32("buttons",
                              static_cast<int32>(leaving.buttons & ~((button << 1) - 1)));
        message->AddInt32("button", static_cast<int32>(button));
        Post(token, std::move(message));
    }
    if (fGrabber == token) {
        GiveGrabBack();
    }
    // Before the window goes: the system would leave the focus nowhere, or give it to anybody.
    NativeWindow* successor = fState.windows.Find(leaving.successor);
    if (successor != nullptr) {
        fSuccessor = leaving.successor;
        successor->Activate();
    }
    TellActivation();
    return successor != nullptr;
}

} // namespace kits
