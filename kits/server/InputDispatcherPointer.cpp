// The pointer: its buttons, moves and wheel, and who has captured it.

#include "InputDispatcher.h"
#include "NativeWindow.h"
#include "Surface.h"
#include "WindowOrder.h"
#include "WindowTable.h"

#include <AppDefs.h>
#include <InputConstants.h>
#include <Message.h>
#include <OS.h>
#include <Point.h>

#include <QCursor>
#include <QGuiApplication>
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

void RememberPointer(QPoint where, uint32 buttons)
{
    const uint64 x = static_cast<uint32>(where.x());
    const uint64 y = static_cast<uint32>(where.y());
    LastInput().where = static_cast<int64>((x << 32) | y);
    LastInput().buttons = buttons;
}

} // namespace

// A modifier may have been pressed or released while another program had the keyboard: of that only
// the pointer's events tell. They know nothing of locks.
void InputDispatcher::PointerModifiersSeen(Qt::KeyboardModifiers modifiers)
{
    constexpr uint32 kLocks = B_CAPS_LOCK | B_NUM_LOCK | B_SCROLL_LOCK;
    const uint32 locks = LastInput().modifiers & kLocks;
    ModifiersSeen(0, (fSides.Modifiers(modifiers, 0) & ~kLocks) | locks);
}

std::unique_ptr<BMessage> InputDispatcher::MouseMessage(uint32 what, int32 target,
                                                        QPoint onScreen) const
{
    // A captured event says which window lies below; any other is told to the window it is for.
    const bool isCaptured = fRouter.Capture() != 0;
    const int32 named = isCaptured ? fWindows.WindowAt(onScreen) : target;
    const NativeWindow* window = fWindows.Find(named);
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

void InputDispatcher::PointerSeen(QPoint onScreen, Qt::MouseButtons buttons,
                                  Qt::KeyboardModifiers modifiers)
{
    RememberPointer(onScreen, ButtonsFrom(buttons));
    PointerModifiersSeen(modifiers);
}

void InputDispatcher::Mouse(int32 native, const QMouseEvent& event)
{
    const QPoint onScreen = PixelOf(event.globalPosition());
    PointerSeen(onScreen, event.buttons(), event.modifiers());
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

void InputDispatcher::PressMouse(int32 native, const QMouseEvent& event)
{
    const QPoint onScreen = PixelOf(event.globalPosition());
    const uint32 button = ButtonsFrom(event.button());
    const InputRouter::MouseTarget target = fRouter.MousePressed(native, button);
    if (target.raise != 0) {
        fClicks.Reset();
        if (NativeWindow* modal = fWindows.Find(target.raise)) {
            fOrder.Activate(*modal);
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

void InputDispatcher::ReleaseMouse(int32 native, const QMouseEvent& event)
{
    const uint32 button = ButtonsFrom(event.button());
    const int32 target = fRouter.MouseReleased(native, button);
    if (target != 0) {
        auto message = MouseMessage(B_MOUSE_UP, target, PixelOf(event.globalPosition()));
        message->AddInt32("button", static_cast<int32>(button));
        Post(target, std::move(message));
    }
    if (event.buttons() == Qt::NoButton && fRouter.Capture() == 0) {
        GiveGrabBack();
    }
}

// The releases of buttons whose own will never come.
void InputDispatcher::PostReleases(int32 window, uint32 buttons) const
{
    for (uint32 button = 1; button != 0 && button <= buttons; button <<= 1) {
        if ((buttons & button) == 0) {
            continue;
        }
        auto message = MouseMessage(B_MOUSE_UP, window, QCursor::pos());
        message->ReplaceInt32("buttons", static_cast<int32>(buttons & ~((button << 1) - 1)));
        message->AddInt32("button", static_cast<int32>(button));
        Post(window, std::move(message));
    }
}

void InputDispatcher::DragEnded(int32 window, uint32 buttons)
{
    fClicks.Reset();
    PostReleases(window, buttons);
}

void InputDispatcher::MoveMouse(int32 native, QPoint onScreen, int32 transit)
{
    const int32 target = fRouter.MouseMoved(native);
    const NativeWindow* window = fWindows.Find(target);
    if (window == nullptr) {
        return;
    }
    auto message = MouseMessage(B_MOUSE_MOVED, target, onScreen);
    message->AddInt32("be:transit", transit);
    window->PostMove(std::move(message));
}

void InputDispatcher::Crossed(int32 native, bool isInside)
{
    MoveMouse(native, QCursor::pos(), isInside ? B_ENTERED_VIEW : B_EXITED_VIEW);
}

void InputDispatcher::Wheel(int32 native, const QWheelEvent& event)
{
    fClicks.Reset();
    fLoneAlt.Disturb();
    const QPoint onScreen = PixelOf(event.globalPosition());
    PointerSeen(onScreen, event.buttons(), event.modifiers());
    const int32 target = fRouter.WheelTurned(native);
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
        if (fRouter.Capture() == window.Token()) {
            fRouter.SetCapture(0);
        }
        // With a button down the grab's end would send its release to another program, or to none.
        if (QGuiApplication::mouseButtons() == Qt::NoButton) {
            GiveGrabBack();
        }
        return;
    }
    fRouter.SetCapture(window.Token());
    fClicks.Reset();
    if (fCanGrabMouse && window.GetSurface() != nullptr) {
        fGrabber = window.Token();
        window.GetSurface()->setMouseGrabEnabled(true);
    }
}

void InputDispatcher::GiveGrabBack()
{
    const NativeWindow* grabber = fWindows.Find(std::exchange(fGrabber, 0));
    if (grabber != nullptr && grabber->GetSurface() != nullptr) {
        grabber->GetSurface()->setMouseGrabEnabled(false);
    }
}

} // namespace kits
