#include "Native.h"

#include "app/LooperRegistry.h"
#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "server/WindowServer.h"

#include <Window.h>

#include <QGuiApplication>
#include <qpa/qwindowsysteminterface.h>

#include <cmath>

namespace kits::testing {

namespace {

QPoint PointOf(BPoint point)
{
    return QPoint(static_cast<int>(std::floor(point.x)), static_cast<int>(std::floor(point.y)));
}

// The frontmost shown native window of that looper that `accepts` takes.
template<typename Accept>
QWindow* FindNative(const BWindow* window, Accept accepts)
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(window);
    const WindowTable& windows = ServerState::Get().windows;
    for (auto token = windows.Shown().rbegin(); token != windows.Shown().rend(); ++token) {
        const NativeWindow* native = windows.Find(*token);
        if (native != nullptr && core != nullptr && native->Core() == core.get() &&
            accepts(*native)) {
            return native->GetSurface();
        }
    }
    return nullptr;
}

} // namespace

void OnServer(const std::function<void()>& task)
{
    WindowServer::Get().Call([&task] {
        // In the order in which a system would tell them: what happened before comes first.
        QWindowSystemInterface::flushWindowSystemEvents();
        task();
        QWindowSystemInterface::flushWindowSystemEvents();
    });
}

QWindow* NativeOf(const BWindow* window)
{
    return FindNative(window, [](const NativeWindow& native) { return !native.IsPopUp(); });
}

QWindow* NativeAt(const BWindow* window, BPoint screen)
{
    const auto contains = [screen](const NativeWindow& native) {
        return !native.IsTip() && native.GetSurface()->geometry().contains(PointOf(screen));
    };
    QWindow* menu = FindNative(
        window, [&](const NativeWindow& native) { return native.IsPopUp() && contains(native); });
    return menu != nullptr ? menu : FindNative(window, contains);
}

QWindow* NativeAt(BPoint screen)
{
    const WindowTable& windows = ServerState::Get().windows;
    const NativeWindow* native = windows.Find(windows.WindowAt(PointOf(screen)));
    return native == nullptr ? nullptr : native->GetSurface();
}

} // namespace kits::testing
