#include "WindowServer.h"

#include "ScreenInfo.h"
#include "ServerState.h"
#include "ServerThread.h"
#include "X11Keyboard.h"

#include "app/DisplayHooks.h"

#include <QCursor>
#include <QImage>

#include <atomic>
#include <memory>
#include <utility>

namespace kits {

namespace {

// Made by Start() and deleted by Stop(), both on the application's thread. No window lives then,
// but threads that nobody waits for may ask whether the server is there. Not deleted at exit:
// nothing joins there.
std::atomic<ServerThread*> gThread{nullptr};

// The application kit lies below this one; it starts the server through these.
[[maybe_unused]] const bool sIsRegistered = [] {
    DisplayHooks hooks;
    hooks.start = [] {
        return WindowServer::Get().Start();
    };
    hooks.stop = [] {
        WindowServer::Get().Stop();
    };
    hooks.isServerThread = [] {
        return WindowServer::Get().IsServerThread();
    };
    hooks.beep = [] {
        WindowServer::Get().Post(x11::Beep);
    };
    SetDisplayHooks(hooks);
    return true;
}();

} // namespace

WindowServer& WindowServer::Get()
{
    static WindowServer server;
    return server;
}

status_t WindowServer::Start()
{
    if (gThread != nullptr) {
        return B_OK;
    }
    auto thread = std::make_unique<ServerThread>();
    const status_t status = thread->Start();
    if (status == B_OK) {
        gThread = thread.release();
    }
    return status;
}

void WindowServer::Stop()
{
    const std::unique_ptr<ServerThread> ending(gThread.exchange(nullptr));
}

bool WindowServer::IsRunning() const
{
    return gThread != nullptr;
}

void WindowServer::Post(std::function<void()> task)
{
    if (ServerThread* thread = gThread) {
        thread->Post(std::move(task));
    }
}

void WindowServer::Call(const std::function<void()>& task)
{
    if (ServerThread* thread = gThread) {
        thread->Call(task);
    }
}

bool WindowServer::IsServerThread() const
{
    return ServerThread::IsCurrent();
}

BRect WindowServer::ScreenFrame() const
{
    return ScreenInfo::Get().Frame();
}

BRect WindowServer::AvailableFrame() const
{
    return ScreenInfo::Get().Available();
}

BRect WindowServer::ScreenFrame(int32 screen) const
{
    return ScreenInfo::Get().Frame(screen);
}

BRect WindowServer::AvailableFrame(int32 screen) const
{
    return ScreenInfo::Get().Available(screen);
}

int32 WindowServer::CountScreens() const
{
    return ScreenInfo::Get().CountScreens();
}

int32 WindowServer::ScreenOf(BRect frame) const
{
    return ScreenInfo::Get().ScreenOf(frame);
}

float WindowServer::ScreenScale() const
{
    return ScreenInfo::Get().Scale();
}

BPoint WindowServer::PointerPlace()
{
    BPoint place;
    Call([&place] {
        const QPoint now = QCursor::pos();
        place.Set(static_cast<float>(now.x()), static_cast<float>(now.y()));
    });
    return place;
}

void WindowServer::GetMouse(BPoint* where, uint32* buttons) const
{
    const uint64 packed = static_cast<uint64>(LastInput().where.load());
    if (where != nullptr) {
        *where = BPoint(static_cast<float>(static_cast<int32>(packed >> 32)),
                        static_cast<float>(static_cast<int32>(packed & 0xffffffff)));
    }
    if (buttons != nullptr) {
        *buttons = LastInput().buttons;
    }
}

uint32 WindowServer::Modifiers() const
{
    return LastInput().modifiers;
}

bigtime_t WindowServer::ClickSpeed() const
{
    return ScreenInfo::Get().ClickSpeed();
}

bool WindowServer::IsAccessibilityActive() const
{
    return ScreenInfo::Get().isAccessibilityActive;
}

QImage WindowServer::ThemeIcon(const std::string& name, int32 size, float scale)
{
    QImage picture;
    Call([&] { picture = ServerState::Get().icons.Get(name, size, scale); });
    return picture;
}

} // namespace kits
