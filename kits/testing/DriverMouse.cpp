#include "Driver.h"
#include "Native.h"

#include <View.h>
#include <Window.h>

#include <QCursor>
#include <QPointer>
#include <QWindow>
#include <private/qhighdpiscaling_p.h>
#include <qpa/qwindowsysteminterface.h>

#include <functional>

namespace kits::testing {

namespace {

// What the synthetic mouse holds down, and on which window: the system keeps a drag at the window
// it began on. Server thread only.
struct MouseState
{
    Qt::MouseButtons buttons;
    QPointer<QWindow> pressed;
};

MouseState& Mouse()
{
    static MouseState state;
    return state;
}

Qt::MouseButton ButtonOf(uint32 button)
{
    switch (button) {
    case B_SECONDARY_MOUSE_BUTTON:
        return Qt::RightButton;
    case B_TERTIARY_MOUSE_BUTTON:
        return Qt::MiddleButton;
    case 0x08:
        return Qt::BackButton;
    case 0x10:
        return Qt::ForwardButton;
    default:
        return Qt::LeftButton;
    }
}

Qt::KeyboardModifiers ModifiersOf(uint32 modifiers)
{
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    result.setFlag(Qt::ControlModifier, (modifiers & (B_COMMAND_KEY | B_CONTROL_KEY)) != 0);
    result.setFlag(Qt::AltModifier, (modifiers & B_OPTION_KEY) != 0);
    return result;
}

QPointF CentreOf(BPoint point)
{
    // The middle of the pixel, so that no rounding on the way moves it to a neighbour.
    return QPointF(static_cast<qreal>(point.x) + 0.25, static_cast<qreal>(point.y) + 0.25);
}

// Native events speak of device pixels.
QPointF NativeGlobal(const QWindow* window, QPointF global)
{
    return QHighDpi::toNativePixels(global, window->screen());
}

QPointF NativeLocal(const QWindow* window, QPointF global)
{
    return QHighDpi::toNativeLocalPosition(window->mapFromGlobal(global), window);
}

void Send(QWindow* window, BPoint screen, Qt::MouseButton button, QEvent::Type type,
          uint32 modifiers)
{
    if (window == nullptr) {
        return;
    }
    const QPointF global = CentreOf(screen);
    QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
        window, NativeLocal(window, global), NativeGlobal(window, global), Mouse().buttons, button,
        type, ModifiersOf(modifiers));
}

// A place on the screen and how to find the native window there.
struct Target
{
    BPoint screen;
    std::function<QWindow*()> find;
};

Target TargetOf(BView* view, BPoint where)
{
    BWindow* window = view->Window();
    Target target;
    if (window == nullptr || !window->Lock()) {
        target.find = [] {
            return nullptr;
        };
        return target;
    }
    target.screen = view->ConvertToScreen(where);
    window->Unlock();
    target.find = [window, screen = target.screen] {
        return NativeAt(window, screen);
    };
    return target;
}

Target TargetAt(BPoint screen)
{
    return {screen, [screen] {
                return NativeAt(screen);
            }};
}

void Press(const Target& target, uint32 button, uint32 modifiers)
{
    OnServer([&] {
        MouseState& mouse = Mouse();
        if (mouse.buttons == Qt::NoButton) {
            mouse.pressed = target.find();
        }
        mouse.buttons |= ButtonOf(button);
        Send(mouse.pressed, target.screen, ButtonOf(button), QEvent::MouseButtonPress, modifiers);
    });
}

void Move(const Target& target, uint32 modifiers)
{
    OnServer([&] {
        QWindow* window = Mouse().buttons != Qt::NoButton ? Mouse().pressed.data() : target.find();
        Send(window, target.screen, Qt::NoButton, QEvent::MouseMove, modifiers);
    });
}

void Release(const Target& target, uint32 button, uint32 modifiers)
{
    OnServer([&] {
        MouseState& mouse = Mouse();
        mouse.buttons &= ~Qt::MouseButtons(ButtonOf(button));
        QWindow* window = mouse.pressed != nullptr ? mouse.pressed.data() : target.find();
        Send(window, target.screen, ButtonOf(button), QEvent::MouseButtonRelease, modifiers);
        if (mouse.buttons == Qt::NoButton) {
            mouse.pressed = nullptr;
        }
    });
}

} // namespace

void Click(BView* view, BPoint where, uint32 button, int32 clicks, uint32 modifiers)
{
    const Target target = TargetOf(view, where);
    Move(target, modifiers);
    for (int32 click = 0; click < clicks; ++click) {
        Press(target, button, modifiers);
        Release(target, button, modifiers);
    }
}

void Click(BView* view)
{
    BWindow* window = view->Window();
    if (window == nullptr || !window->Lock()) {
        return;
    }
    const BRect bounds = view->Bounds();
    window->Unlock();
    Click(view, BPoint((bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2));
}

void PressMouse(BView* view, BPoint where, uint32 button, uint32 modifiers)
{
    Press(TargetOf(view, where), button, modifiers);
}

void MoveMouse(BView* view, BPoint where, uint32 modifiers)
{
    Move(TargetOf(view, where), modifiers);
}

void ReleaseMouse(BView* view, BPoint where, uint32 button, uint32 modifiers)
{
    Release(TargetOf(view, where), button, modifiers);
}

void Drag(BView* view, BPoint from, BPoint to, int32 steps, uint32 button, uint32 modifiers)
{
    PressMouse(view, from, button, modifiers);
    for (int32 step = 1; step <= steps; ++step) {
        const float part = static_cast<float>(step) / static_cast<float>(steps);
        MoveMouse(view, BPoint(from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part),
                  modifiers);
    }
    ReleaseMouse(view, to, button, modifiers);
}

void TurnWheel(BView* view, BPoint where, float notchesDown, float notchesRight, uint32 modifiers)
{
    constexpr float kNotch = 120;
    const Target target = TargetOf(view, where);
    const QPoint angle(static_cast<int>(-notchesRight * kNotch),
                       static_cast<int>(-notchesDown * kNotch));
    OnServer([&] {
        QWindow* window = target.find();
        if (window != nullptr) {
            const QPointF global = CentreOf(target.screen);
            QWindowSystemInterface::handleWheelEvent(window, NativeLocal(window, global),
                                                     NativeGlobal(window, global), QPoint(), angle,
                                                     ModifiersOf(modifiers));
        }
    });
}

PointerShape PointerOver(BWindow* window)
{
    Sync(window);
    Qt::CursorShape shape = Qt::ArrowCursor;
    OnServer([&] {
        if (const QWindow* native = NativeOf(window)) {
            shape = native->cursor().shape();
        }
    });
    switch (shape) {
    case Qt::IBeamCursor:
        return PointerShape::kText;
    case Qt::SplitHCursor:
        return PointerShape::kResizeHorizontal;
    default:
        return PointerShape::kArrow;
    }
}

void ClickAt(BPoint screen, uint32 button, uint32 modifiers)
{
    MoveMouseAt(screen, modifiers);
    PressMouseAt(screen, button, modifiers);
    ReleaseMouseAt(screen, button, modifiers);
}

void PressMouseAt(BPoint screen, uint32 button, uint32 modifiers)
{
    Press(TargetAt(screen), button, modifiers);
}

void MoveMouseAt(BPoint screen, uint32 modifiers)
{
    Move(TargetAt(screen), modifiers);
}

void ReleaseMouseAt(BPoint screen, uint32 button, uint32 modifiers)
{
    Release(TargetAt(screen), button, modifiers);
}

} // namespace kits::testing
