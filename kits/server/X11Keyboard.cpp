#include "X11Keyboard.h"

#include "KeysDown.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QWindow>
#include <qguiapplication_platform.h>

#include <X11/XKBlib.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace kits::x11 {

namespace {

QNativeInterface::QX11Application* Application()
{
    // The headless platform offers the interface too, with no display behind it.
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) {
        return nullptr;
    }
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
}

template<typename Type>
using Reply = std::unique_ptr<Type, decltype(&std::free)>;

/// What the X server tells of the keyboard, in its order, beside the key events themselves.
class KeyboardListener : public QAbstractNativeEventFilter
{
public:
    const std::vector<int32>& KeysAtFocus() const { return fKeysAtFocus; }
    uint32 LastTaken() const { return fLastTaken; }
    bool IsFirstPress(int32 code, uint32 time) { return fDown.IsFirst(code, time); }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        const bool followsFocus = std::exchange(fIsFocus, false);
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
            KeyMoved(*reinterpret_cast<const xcb_key_press_event_t*>(event));
            break;
        case XCB_LEAVE_NOTIFY:
            PointerLeft(*reinterpret_cast<const xcb_leave_notify_event_t*>(event));
            break;
        case XCB_FOCUS_OUT:
            fLastTaken = fLatest;
            break;
        case XCB_FOCUS_IN:
            fKeysAtFocus.clear();
            fIsFocus = true;
            break;
        case XCB_KEYMAP_NOTIFY:
            // The event that says which keys are down comes right behind that of the focus, before
            // any key.
            if (followsFocus) {
                FocusCame(*reinterpret_cast<const xcb_keymap_notify_event_t*>(event));
            }
            break;
        default:
            break;
        }
        return false;
    }

private:
    void KeyMoved(const xcb_key_press_event_t& event)
    {
        fLatest = event.time;
        if ((event.response_type & 0x7f) == XCB_KEY_PRESS) {
            fDown.Pressed(event.detail, event.time);
        } else {
            fDown.Released(event.detail);
        }
    }

    void PointerLeft(const xcb_leave_notify_event_t& event)
    {
        fLatest = event.time;
        if (event.mode == XCB_NOTIFY_MODE_GRAB) {
            fLastTaken = event.time;
        }
    }

    void FocusCame(const xcb_keymap_notify_event_t& event)
    {
        for (int32 code = 8; code < 256; ++code) {
            // The first byte of the whole map, of codes that no keyboard has, is not sent.
            if ((event.keys[code / 8 - 1] & (1 << (code % 8))) != 0) {
                fKeysAtFocus.push_back(code);
            }
        }
        fDown.Found(fKeysAtFocus);
    }

    std::vector<int32> fKeysAtFocus;
    KeysDown fDown;
    uint32 fLatest = 0; // the time of the last event that has one
    uint32 fLastTaken = 0;
    bool fIsFocus = false; // the event before was that of a focus
};

// Repeats come without releases between them.
bool gHasDetectableRepeats = false;

KeyboardListener& Listener()
{
    static KeyboardListener listener; // the application forgets it when it ends
    return listener;
}

} // namespace

bool UseDetectableRepeats()
{
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return false;
    }
    int isSupported = 0;
    XkbSetDetectableAutoRepeat(application->display(), 1, &isSupported);
    XFlush(application->display());
    gHasDetectableRepeats = isSupported != 0;
    return gHasDetectableRepeats;
}

void TellKeysAtFocus(QWindow* window)
{
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return;
    }
    xcb_connection_t* connection = application->connection();
    const auto id = static_cast<xcb_window_t>(window->winId());
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, id),
                                        nullptr),
        &std::free);
    if (attributes != nullptr) {
        const uint32 mask = attributes->your_event_mask | XCB_EVENT_MASK_KEYMAP_STATE;
        xcb_change_window_attributes(connection, id, XCB_CW_EVENT_MASK, &mask);
    }
}

void HearKeyboard()
{
    if (Application() != nullptr) {
        qGuiApp->installNativeEventFilter(&Listener());
    }
}

std::vector<int32> KeysAtFocus()
{
    return Listener().KeysAtFocus();
}

bool IsFirstPress(int32 code, uint32 time)
{
    return gHasDetectableRepeats && Listener().IsFirstPress(code, time);
}

uint32 LastTaken()
{
    return Listener().LastTaken();
}

std::optional<uint32> FocusedWindow()
{
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return std::nullopt;
    }
    xcb_connection_t* connection = application->connection();
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr),
        &std::free);
    return reply == nullptr ? std::nullopt : std::optional<uint32>(reply->focus);
}

void Beep()
{
    if (QNativeInterface::QX11Application* application = Application()) {
        xcb_bell(application->connection(), 0);
        xcb_flush(application->connection());
    }
}

void SetBackground(QWindow* window, uint8 grey)
{
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return;
    }
    const uint32 pixel = (uint32{0xff} << 24) | (uint32{grey} << 16) | (uint32{grey} << 8) | grey;
    xcb_change_window_attributes(application->connection(),
                                 static_cast<xcb_window_t>(window->winId()), XCB_CW_BACK_PIXEL,
                                 &pixel);
}

} // namespace kits::x11
