#include "ServerState.h"

#include "Clipboard.h"
#include "NativeWindow.h"
#include "ScreenInfo.h"
#include "Surface.h"
#include "WindowFlags.h"
#include "X11Keyboard.h"
#include "X11StartNotices.h"

#include "app/LooperCore.h"
#include "app/ProgramEnd.h"

#include <AppDefs.h>
#include <GraphicsDefs.h>
#include <Message.h>

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace kits {

namespace {

ServerState* sState = nullptr; // set while the server's thread runs its loop

// What the system cannot do on every platform: headless and Wayland give no mouse grab to windows.
bool CanGrabMouse()
{
    return QGuiApplication::platformName() == QStringLiteral("xcb");
}

// The headless platform gives the focus to every window that is shown, and knows no order.
bool GivesFocusUnasked()
{
    return QGuiApplication::platformName() == QStringLiteral("offscreen");
}

} // namespace

ServerState::ServerState()
    : order(windows, router, !GivesFocusUnasked()), departures(router),
      input(windows, router, order, departures, CanGrabMouse()), drags(windows, router, input),
      showing(windows, router, order, input, departures, GivesFocusUnasked())
{
    sState = this;
    icons.Start();
    router.SetRepeatRule(x11::UseDetectableRepeats() || !CanGrabMouse()
                             ? InputRouter::RepeatRule::kPressWithoutRelease
                             : InputRouter::RepeatRule::kTimestamps);
    x11::HearKeyboard();
    if (CanGrabMouse()) {
        StartNotices::Set(std::make_shared<X11StartNotices>());
    }
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
                     [this](QWindow* window) { input.FocusChanged(window); });
    qGuiApp->installEventFilter(this);
    WatchScreens();
    WatchClipboard();
    ServerState::accessibilityActiveChanged(QAccessible::isActive());
    QAccessible::installActivationObserver(this);
}

ServerState::~ServerState()
{
    StartNotices::Set(nullptr);
    qGuiApp->removeEventFilter(this);
    qGuiApp->disconnect(qGuiApp);
    QAccessible::removeActivationObserver(this);
    showing.DestroyAll();
    sState = nullptr;
}

ServerState& ServerState::Get()
{
    return *sState;
}

void ServerState::accessibilityActiveChanged(bool active)
{
    ScreenInfo::Get().isAccessibilityActive = active;
    // A window that paints nothing would say nothing for a long time.
    for (const int32 token : windows.Shown()) {
        windows.Find(token)->Core()->Wake();
    }
}

bool ServerState::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop: {
        const NativeWindow* window = windows.Find(qobject_cast<QWindow*>(watched));
        return window != nullptr && drags.Handle(window->Token(), *event);
    }
    case QEvent::Quit:
        // The session ends. Left to itself the toolkit would ask the native windows to close, and
        // those say no for themselves.
        if (watched == qGuiApp) {
            ProgramEnd::Request();
        }
        return watched == qGuiApp;
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
        X11StartNotices::NoteInput(
            static_cast<uint32>(static_cast<const QInputEvent*>(event)->timestamp()));
        return false;
    default:
        return false;
    }
}

void ServerState::WatchScreens()
{
    ScreenInfo::Get().Refresh();
    const auto watch = [this](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, qGuiApp, [this] { ScreensChanged(); });
        QObject::connect(screen, &QScreen::availableGeometryChanged, qGuiApp,
                         [this] { ScreensChanged(); });
    };
    for (QScreen* screen : QGuiApplication::screens()) {
        watch(screen);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, qGuiApp,
                     [this, watch](QScreen* screen) {
                         watch(screen);
                         ScreensChanged();
                     });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, qGuiApp,
                     [this] { ScreensChanged(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, qGuiApp,
                     [this] { ScreensChanged(); });
}

void ServerState::ScreensChanged()
{
    ScreenInfo::Get().Refresh();
    const ScreenInfo& screens = ScreenInfo::Get();
    for (const int32 token : windows.Shown()) {
        const NativeWindow* window = windows.Find(token);
        const BRect frame = RectTo(window->GetSurface()->geometry());
        BMessage message(B_SCREEN_CHANGED);
        message.AddRect("frame", screens.Frame(screens.ScreenOf(frame)));
        message.AddInt32("mode", B_RGB32);
        window->Post(std::make_unique<BMessage>(message));
    }
}

} // namespace kits
