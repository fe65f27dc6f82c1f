#pragma once

#include "Departures.h"
#include "DragAndDrop.h"
#include "InputDispatcher.h"
#include "InputRouter.h"
#include "Showing.h"
#include "ThemeIcons.h"
#include "WindowOrder.h"
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

    // Each knows those before it at most.
    WindowTable windows;
    InputRouter router;
    WindowOrder order;
    Departures departures;
    InputDispatcher input;
    DragAndDrop drags;
    Showing showing;
    ThemeIcons icons;

private:
    // QAccessible::ActivationObserver
    void accessibilityActiveChanged(bool active) override;

    // QObject
    bool eventFilter(QObject* watched, QEvent* event) override;

    void WatchScreens();
    void ScreensChanged();
};

} // namespace kits
