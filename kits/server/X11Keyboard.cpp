#include "X11Keyboard.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QWindow>
#include <qguiapplication_platform.h>

#include <X11/XKBlib.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

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

std::vector<int32> sKeysAtFocus;

/// Hears which keys are down when a window gets the focus: the event that says so comes right
/// behind that of the focus, before any key.
class FocusKeys : public QAbstractNativeEventFilter
{
public:
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        const int kind = event->response_type & 0x7f;
        if (kind == XCB_FOCUS_IN) {
            sKeysAtFocus.clear();
            fIsFocus = true;
            return false;
        }
        if (kind == XCB_KEYMAP_NOTIFY && fIsFocus) {
            // The first byte of the whole map, of codes that no keyboard has, is not sent.
            const uint8* keys = reinterpret_cast<const xcb_keymap_notify_event_t*>(event)->keys;
            for (int32 code = 8; code < 256; ++code) {
                if ((keys[code / 8 - 1] & (1 << (code % 8))) != 0) {
                    sKeysAtFocus.push_back(code);
                }
            }
        }
        fIsFocus = false;
        return false;
    }

private:
    bool fIsFocus = false; // the event before was that of a focus
};

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
    return isSupported != 0;
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

void HearKeysAtFocus()
{
    if (Application() != nullptr) {
        static FocusKeys keys; // the application forgets it when it ends
        qGuiApp->installNativeEventFilter(&keys);
    }
}

std::vector<int32> KeysAtFocus()
{
    return sKeysAtFocus;
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
