#pragma once

#include <SupportDefs.h>

namespace kits {

class Departures;
class InputDispatcher;
class InputRouter;
class NativeWindow;
class WindowOrder;
class WindowTable;
struct ShowRequest;

/// Brings native windows onto the screen, among the others, and takes them away again.
/// Thread: the server's.
class Showing
{
public:
    /// `givesFocusUnasked`: the platform gives the focus to every window that is shown.
    /// Ownership: borrows the others, which live longer.
    Showing(WindowTable& windows, InputRouter& router, const WindowOrder& order,
            InputDispatcher& input, Departures& departures, bool givesFocusUnasked)
        : fWindows(windows), fRouter(router), fOrder(order), fInput(input), fDepartures(departures),
          fGivesFocusUnasked(givesFocusUnasked)
    {
    }

    void Show(NativeWindow& window, const ShowRequest& request);
    void Hide(NativeWindow& window);
    /// Hides and deletes the native window, once nothing is on its way to it any more.
    void Destroy(NativeWindow& window);
    /// The same of all that are left, without waiting.
    void DestroyAll();

private:
    void TakeFocus(NativeWindow& window);
    void HandOverKeys(const NativeWindow& window, int32 from);
    bool Leave(NativeWindow& window);

    WindowTable& fWindows;
    InputRouter& fRouter;
    const WindowOrder& fOrder;
    InputDispatcher& fInput;
    Departures& fDepartures;
    const bool fGivesFocusUnasked;
};

} // namespace kits
