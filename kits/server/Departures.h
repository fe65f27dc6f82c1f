#pragma once

#include <SupportDefs.h>

#include <QTimer>

#include <memory>
#include <vector>

namespace kits {

class InputRouter;
class NativeWindow;

/// Native windows that have left for their loopers, but stay until the focus has gone on to the
/// next one, and a little longer out of sight.
///
/// Hidden with the focus they would leave it nowhere until the window manager has noticed. And keys
/// that the system sent to such a window are still on their way; they would be lost with it.
/// Thread: the server's.
class Departures
{
public:
    /// Ownership: borrows the router, which lives longer.
    explicit Departures(InputRouter& router);

    /// Keeps the native window until the focus has moved, or does not for some time.
    void Add(const std::shared_ptr<NativeWindow>& window);
    /// Looks at once whether the focus has moved.
    void FocusMoved();
    bool Has(const NativeWindow& window) const;
    /// The window is wanted again: it goes at once.
    void Finish(const NativeWindow& window);
    void FinishAll();
    /// A window that nothing is on its way to any more is gone, or out of sight, from now on.
    void LetGo(NativeWindow& window);

private:
    struct Departure
    {
        std::shared_ptr<NativeWindow> window;
        bigtime_t left;
        bigtime_t outOfSight; // 0: still to be seen
    };

    void Look();

    InputRouter& fRouter;
    std::vector<Departure> fDepartures;
    QTimer fLook; // runs while there are any
};

} // namespace kits
