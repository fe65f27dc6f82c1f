#include "X11Keyboard.h"

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

std::vector<int32> HeldKeys()
{
    std::vector<int32> codes;
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return codes;
    }
    xcb_connection_t* connection = application->connection();
    const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> reply(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr), &std::free);
    if (reply == nullptr) {
        return codes;
    }
    for (int32 code = 0; code < 256; ++code) {
        if ((reply->keys[code / 8] & (1 << (code % 8))) != 0) {
            codes.push_back(code);
        }
    }
    return codes;
}

std::optional<uint32> FocusedWindow()
{
    QNativeInterface::QX11Application* application = Application();
    if (application == nullptr) {
        return std::nullopt;
    }
    xcb_connection_t* connection = application->connection();
    const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr),
        &std::free);
    return reply == nullptr ? std::nullopt : std::optional<uint32>(reply->focus);
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
