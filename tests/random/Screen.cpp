#include "Screen.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "testing/Native.h"

#include <InterfaceDefs.h>
#include <OS.h>

#include <QGuiApplication>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <algorithm>

using namespace kits;

namespace {

constexpr int32 kManyMessages = 30;
constexpr bigtime_t kLongestWait = 1'000'000;
constexpr bigtime_t kPause = 200;

bool HasLongQueue()
{
    const auto cores = LooperRegistry::AllLoopers();
    return std::any_of(cores.begin(), cores.end(), [](const auto& core) {
        return core->IsWindow() && !core->IsAtLongWork() &&
               core->Queue().CountMessages() > kManyMessages;
    });
}

} // namespace

std::vector<SeenWindow> SeenWindows()
{
    std::vector<SeenWindow> seen;
    testing::OnServer([&seen] {
        const WindowTable& windows = ServerState::Get().windows;
        for (const int32 token : windows.Shown()) {
            const NativeWindow* native = windows.Find(token);
            if (native == nullptr || native->GetSurface() == nullptr) {
                continue;
            }
            const QRect area = native->GetSurface()->geometry();
            seen.push_back(
                {token,
                 BRect(static_cast<float>(area.left()), static_cast<float>(area.top()),
                       static_cast<float>(area.right()), static_cast<float>(area.bottom())),
                 native->Shape().title, native->IsPopUp(), native->Core()});
        }
    });
    return seen;
}

void Activate(const SeenWindow& window)
{
    testing::OnServer([&window] {
        const NativeWindow* native = ServerState::Get().windows.Find(window.token);
        if (native != nullptr && native->GetSurface() != nullptr) {
            native->GetSurface()->requestActivate();
        }
    });
}

void TurnWheelAt(BPoint screen, float notchesDown, uint32 modifiers)
{
    constexpr float kNotch = 120;
    testing::OnServer([&] {
        QWindow* window = testing::NativeAt(screen);
        if (window == nullptr) {
            return;
        }
        Qt::KeyboardModifiers held;
        held.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
        held.setFlag(Qt::ControlModifier, (modifiers & B_COMMAND_KEY) != 0);
        const QPointF global(static_cast<qreal>(screen.x), static_cast<qreal>(screen.y));
        QWindowSystemInterface::handleWheelEvent(
            window, window->mapFromGlobal(global), global, QPoint(),
            QPoint(0, static_cast<int>(-notchesDown * kNotch)), held);
    });
}

bool IsDragging()
{
    bool isDragging = false;
    testing::OnServer([&] { isDragging = ServerState::Get().drags.IsDragging(); });
    return isDragging;
}

std::string DescribeInput()
{
    std::string text;
    testing::OnServer([&text] {
        const NativeWindow* focused =
            ServerState::Get().windows.Find(QGuiApplication::focusWindow());
        text = focused != nullptr ? "the keyboard has \"" + focused->Shape().title + "\""
                                  : std::string("no window has the keyboard");
        text += ", buttons held: " + std::to_string(QGuiApplication::mouseButtons().toInt());
    });
    return text;
}

void AwaitShortQueues()
{
    const bigtime_t end = system_time() + kLongestWait;
    while (HasLongQueue() && system_time() < end) {
        snooze(kPause);
    }
}
