#include "WindowOrder.h"

#include "InputRouter.h"
#include "NativeWindow.h"
#include "Surface.h"
#include "WindowTable.h"

#include <algorithm>
#include <vector>

namespace kits {

// An opener that is hidden for the moment would leave this window without anything to stay above.
const NativeWindow* WindowOrder::ShownOpener(const NativeWindow& window) const
{
    const NativeWindow* opener = fWindows.Find(window.Opener());
    while (opener != nullptr && !opener->IsShown()) {
        opener = fWindows.Find(opener->Opener());
    }
    return opener;
}

// One that is hidden gets none, and one that only shows progress sends them on to the window it
// belongs to.
int32 WindowOrder::KeysOpener(const NativeWindow& window) const
{
    const NativeWindow* opener = fWindows.Find(window.Opener());
    while (opener != nullptr && (!opener->IsShown() || fRouter.LendsKeys(opener->Token()))) {
        opener = fWindows.Find(opener->Opener());
    }
    return opener == nullptr ? window.Opener() : opener->Token();
}

void WindowOrder::Activate(NativeWindow& window)
{
    if (!window.IsShown()) {
        return;
    }
    // Asked for before the alert came, it would take the keyboard from it, and cover it.
    NativeWindow* modal =
        fRouter.IsBlocked(window.Token()) ? fWindows.Find(fRouter.TopmostModal()) : nullptr;
    if (modal != nullptr && modal != &window) {
        Activate(*modal);
        return;
    }
    if (IsBehindQuestion(window)) {
        return;
    }
    Raise(window);
    window.GetSurface()->requestActivate();
}

// Whether an operation of this window asks something just now. The window was told to take the
// activation back when the operation started, by another thread than the one that asks: it may get
// round to that only after the question was shown.
bool WindowOrder::IsBehindQuestion(const NativeWindow& window) const
{
    const std::vector<int32>& shown = fWindows.Shown();
    return std::any_of(shown.begin(), shown.end(), [&](int32 token) {
        const NativeWindow* other = fWindows.Find(token);
        return other != nullptr && other->Opener() != window.Token() && !other->IsPopUp() &&
               fRouter.HasOrAwaitsFocus(token) && !fRouter.LendsKeys(token) &&
               KeysOpener(*other) == window.Token();
    });
}

// Without a window manager nobody else keeps dialogs above their opener.
void WindowOrder::Raise(NativeWindow& window)
{
    if (fIsKnownToSystem) {
        window.GetSurface()->raise();
    }
    fWindows.Raise(window.Token());
    for (const int32 token : std::vector<int32>(fWindows.Shown())) {
        NativeWindow* other = fWindows.Find(token);
        if (other != nullptr && other != &window && ShownOpener(*other) == &window) {
            Raise(*other);
        }
    }
}

} // namespace kits
