#include "InputDispatcher.h"

#include "Departures.h"
#include "InputMessages.h"
#include "InputMethod.h"
#include "NativeWindow.h"
#include "WindowOrder.h"
#include "WindowTable.h"
#include "X11Keyboard.h"

#include <AppDefs.h>
#include <InputConstants.h>
#include <Message.h>
#include <OS.h>

#include <QCursor>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <utility>

namespace kits {

namespace {

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
    if (const NativeWindow* target = fWindows.Find(window)) {
        target->Post(std::move(message));
    }
}

bigtime_t InputDispatcher::EventTime() const
{
    return fEventTime != 0 ? fEventTime : system_time();
}

bool InputDispatcher::Input(int32 window, const QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        const Happening happening(fEventTime, fClock.TimeOf(key.timestamp(), system_time()));
        Key(window, key);
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        const Happening happening(fEventTime, fClock.TimeOf(mouse.timestamp(), system_time()));
        Mouse(window, mouse);
        return true;
    }
    case QEvent::Wheel:
        Wheel(window, static_cast<const QWheelEvent&>(event));
        return true;
    case QEvent::Enter:
    case QEvent::Leave:
        Crossed(window, event.type() == QEvent::Enter);
        return true;
    case QEvent::InputMethod:
        TextInput(window, static_cast<const QInputMethodEvent&>(event));
        return true;
    default:
        return false;
    }
}

// Closing

void InputDispatcher::CloseAsked(int32 window)
{
    fCloseAsked.insert(window);
    if (ServeClose(window)) {
        return;
    }
    if (NativeWindow* modal = fWindows.Find(fRouter.TopmostModal())) {
        fOrder.Activate(*modal);
    }
}

// Whether the window was asked to close, now or before, and has been told.
bool InputDispatcher::ServeClose(int32 window)
{
    if (fRouter.IsBlocked(window) || fCloseAsked.erase(window) == 0) {
        return false;
    }
    Post(window, std::make_unique<BMessage>(B_QUIT_REQUESTED));
    return true;
}

void InputDispatcher::ServeCloses()
{
    for (const int32 window : fWindows.Shown()) {
        ServeClose(window);
    }
    std::erase_if(fCloseAsked, [this](int32 window) { return fWindows.Find(window) == nullptr; });
}

// Keys

void InputDispatcher::Key(int32 native, const QKeyEvent& event)
{
    const bool isPress = event.type() == QEvent::KeyPress;
    const NativeKey key{event.key(), event.text(), event.modifiers(), event.nativeScanCode(),
                        event.nativeModifiers()};
    InputRouter::KeyEvent routed;
    routed.native = native;
    routed.code = KeyCode(key);
    routed.isModifier = IsModifierKey(key.key);
    routed.when = static_cast<bigtime_t>(event.timestamp()) * 1000;
    if (isPress) {
        routed.isFirst = x11::IsFirstPress(routed.code, static_cast<uint32>(event.timestamp()));
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
        const int32 owner = fRouter.KeyReleased(routed);
        ModifiersSeen(owner, modifiers, isAlone ? Alt::kAlone : Alt::kOther);
        if (!routed.isModifier) {
            PostKeyUp(owner, routed.code);
        }
        return;
    }
    const InputRouter::KeyTarget target = fRouter.KeyPressed(routed, system_time());
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

// Key messages of the characters, unless a text field shows a preview or text of it is replaced.
void InputDispatcher::TextInput(int32 native, const QInputMethodEvent& event)
{
    const int32 target = fRouter.TextTarget(native, system_time());
    const NativeWindow* window = fWindows.Find(target);
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
        keyTarget.isEarly = target != 0 && !fRouter.HadFocus(target);
        PostKey(B_KEY_DOWN, keyTarget, key, 0);
    }
}

// Focus

void InputDispatcher::FocusChanged(QWindow* window)
{
    const NativeWindow* native = fWindows.Find(window);
    if (native != nullptr && !fRouter.IsShown(native->Token())) {
        // It has left and passed the focus on, but the window manager was slower.
        if (NativeWindow* successor = fWindows.Find(fSuccessor)) {
            fOrder.Activate(*successor);
        }
        return;
    }
    fLoneAlt.Disturb();
    fDepartures.FocusMoved();
    const int32 token = native == nullptr ? 0 : native->Token();
    const bool comesFromOutside = fRouter.Focused() == 0;
    if (token == 0 && !comesFromOutside) {
        fRouter.FocusLeaves(system_time());
    }
    fRouter.FocusComes(token, system_time());
    for (const auto& [code, owner] : fRouter.FocusChanged(token)) {
        PostKeyUp(owner, code);
    }
    if (token == 0) {
        fSides.Clear();
        if (const int32 capture = fRouter.Capture()) {
            auto lost = std::make_unique<BMessage>(kCaptureLost);
            lost->AddInt32("window", capture);
            Post(capture, std::move(lost));
        }
    } else if (comesFromOutside) {
        fRouter.KeysFoundDown(x11::KeysAtFocus(), system_time());
    }
    TellActivation();
}

void InputDispatcher::TellActivation()
{
    const int32 active = fRouter.Focused();
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
        fWindows.Raise(active);
        tell(active, true);
    }
}

bool InputDispatcher::WindowLeaves(int32 token)
{
    const InputRouter::Leaving leaving = fRouter.WillLeave(token, system_time());
    PostReleases(token, leaving.buttons);
    if (fGrabber == token) {
        GiveGrabBack();
    }
    // Before the window goes: the system would leave the focus nowhere, or give it to anybody.
    NativeWindow* successor = fWindows.Find(leaving.successor);
    if (successor != nullptr) {
        fSuccessor = leaving.successor;
        fOrder.Activate(*successor);
    }
    TellActivation();
    return successor != nullptr;
}

} // namespace kits
