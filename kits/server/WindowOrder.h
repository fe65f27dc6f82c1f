#pragma once

#include <SupportDefs.h>

namespace kits {

class InputRouter;
class NativeWindow;
class WindowTable;

/// Which window stands behind another one, and which may come forward.
/// Thread: the server's.
class WindowOrder
{
public:
    /// `isKnownToSystem`: whether the platform has an order of windows too; the headless one knows
    /// none.
    /// Ownership: borrows the others, which live longer.
    WindowOrder(WindowTable& windows, const InputRouter& router, bool isKnownToSystem)
        : fWindows(windows), fRouter(router), fIsKnownToSystem(isKnownToSystem)
    {
    }

    /// Brings a shown window to the front and asks for the focus; or the one that keeps input from
    /// it.
    void Activate(NativeWindow& window);
    /// The nearest opener that is shown, which the window stays above; null when there is none.
    const NativeWindow* ShownOpener(const NativeWindow& window) const;
    /// The window that gets the keys which are on their way to the opener.
    int32 KeysOpener(const NativeWindow& window) const;

private:
    bool IsBehindQuestion(const NativeWindow& window) const;
    void Raise(NativeWindow& window);

    WindowTable& fWindows;
    const InputRouter& fRouter;
    const bool fIsKnownToSystem;
};

} // namespace kits
