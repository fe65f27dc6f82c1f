#include "Driver.h"
#include "Native.h"

#include "server/NativeWindow.h"
#include "server/ServerState.h"

#include <View.h>
#include <Window.h>

#include <QMimeData>
#include <QWindow>
#include <private/qhighdpiscaling_p.h>
#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

// Drag and drop, and another program's side of it, as the system tells it.

namespace kits::testing {

namespace {

Qt::DropActions ActionsFrom(uint32 actions)
{
    Qt::DropActions result;
    result.setFlag(Qt::CopyAction, (actions & kMayCopy) != 0);
    result.setFlag(Qt::MoveAction, (actions & kMayMove) != 0);
    result.setFlag(Qt::LinkAction, (actions & kMayLink) != 0);
    return result;
}

uint32 ActionFrom(const QPlatformDropQtResponse& response)
{
    if (!response.isAccepted()) {
        return 0;
    }
    switch (response.acceptedAction()) {
    case Qt::CopyAction:
        return kMayCopy;
    case Qt::MoveAction:
        return kMayMove;
    case Qt::LinkAction:
        return kMayLink;
    default:
        return 0;
    }
}

Qt::KeyboardModifiers ModifiersFrom(uint32 modifiers)
{
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    result.setFlag(Qt::ControlModifier, (modifiers & B_COMMAND_KEY) != 0);
    return result;
}

// Calls `tell` on the server with the native window, the data and the native point.
template<typename Tell>
void WithNative(BView* view, BPoint where, const char* addresses, Tell tell)
{
    BWindow* window = view->Window();
    if (window == nullptr || !window->Lock()) {
        return;
    }
    const BPoint screen = view->ConvertToScreen(where);
    window->Unlock();
    OnServer([&] {
        QWindow* native = NativeOf(window);
        if (native == nullptr) {
            return;
        }
        QMimeData data;
        data.setData(QStringLiteral("text/uri-list"), QByteArray(addresses));
        const QPoint inWindow =
            native->mapFromGlobal(QPoint(static_cast<int>(screen.x), static_cast<int>(screen.y)));
        tell(native, data, QHighDpi::toNativeLocalPosition(inWindow, native));
    });
}

} // namespace

bool WaitForDrag(bool isOn, bigtime_t limit)
{
    return WaitFor(
        [isOn] {
            bool isDragging = false;
            OnServer([&] { isDragging = ServerState::Get().drags.IsDragging(); });
            return isDragging == isOn;
        },
        limit);
}

bool WaitForDropAreas(BWindow* window, int32 count, bigtime_t limit)
{
    return WaitFor(
        [&] {
            size_t areas = 0;
            Sync(window); // what another thread invalidated wakes nobody
            OnServer([&] {
                const WindowTable& windows = ServerState::Get().windows;
                const NativeWindow* native = windows.Find(NativeOf(window));
                areas = native != nullptr ? native->GetPublished().dropAreas.size() : 0;
            });
            return areas == static_cast<size_t>(count);
        },
        limit);
}

uint32 DragForeign(BView* view, BPoint where, const char* addresses, uint32 actions,
                   uint32 modifiers)
{
    uint32 agreed = 0;
    WithNative(view, where, addresses, [&](QWindow* native, const QMimeData& data, QPoint point) {
        agreed = ActionFrom(QWindowSystemInterface::handleDrag(
            native, &data, point, ActionsFrom(actions), Qt::LeftButton, ModifiersFrom(modifiers)));
    });
    return agreed;
}

uint32 DropForeign(BView* view, BPoint where, const char* addresses, uint32 actions,
                   uint32 modifiers)
{
    uint32 told = 0;
    WithNative(view, where, addresses, [&](QWindow* native, const QMimeData& data, QPoint point) {
        QWindowSystemInterface::handleDrag(native, &data, point, ActionsFrom(actions),
                                           Qt::LeftButton, ModifiersFrom(modifiers));
        told = ActionFrom(QWindowSystemInterface::handleDrop(
            native, &data, point, ActionsFrom(actions), Qt::LeftButton, ModifiersFrom(modifiers)));
    });
    return told;
}

void LeaveForeign(BView* view)
{
    WithNative(view, BPoint(), "", [](QWindow* native, const QMimeData&, QPoint) {
        QWindowSystemInterface::handleDrag(native, nullptr, QPoint(), Qt::IgnoreAction,
                                           Qt::NoButton, Qt::NoModifier);
    });
}

} // namespace kits::testing
