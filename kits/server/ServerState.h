#pragma once

#include "Departures.h"
#include "InputDispatcher.h"
#include "InputRouter.h"
#include "ThemeIcons.h"
#include "WindowTable.h"

#include <QAccessible>
#include <QObject>

namespace kits {

/// What the server's thread keeps while it runs.
/// Thread: the server's.
class ServerState : private QAccessible::ActivationObserver, private QObject
{
public:
    ServerState();
    ~ServerState() override;
    ServerState(const ServerState&) = delete;
    ServerState& operator=(const ServerState&) = delete;

    /// Valid from before the first task of the server's queue to after the last.
    static ServerState& Get();

    WindowTable windows;
    InputRouter router;
    InputDispatcher input;
    ThemeIcons icons;
    Departures departures;
    /// What the system cannot do on every platform: headless and Wayland give no mouse grab to
    /// windows.
    bool canGrabMouse = false;
    /// The headless platform gives the focus to every window that is shown, and knows no order.
    bool givesFocusUnasked = false;

private:
    // QAccessible::ActivationObserver
    void accessibilityActiveChanged(bool active) override;

    // QObject
    bool eventFilter(QObject* watched, QEvent* event) override;

    void WatchScreens();
    void ScreensChanged();
};

} // namespace kits
