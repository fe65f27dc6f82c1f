#include "Showing.h"

#include "Departures.h"
#include "InputDispatcher.h"
#include "InputRouter.h"
#include "NativeWindow.h"
#include "ShowRequest.h"
#include "Surface.h"
#include "WindowOrder.h"
#include "WindowTable.h"

#include "app/LooperCore.h"

#include <Message.h>
#include <OS.h>

#include <QGuiApplication>

#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace kits {

void Showing::Show(NativeWindow& window, const ShowRequest& request)
{
    if (window.IsShown()) {
        return;
    }
    fDepartures.Finish(window);
    fWindows.Add(window.shared_from_this());
    window.SetOpener(request.opener);
    const NativeWindow* above = fOrder.ShownOpener(window);
    window.Prepare(fInput, above == nullptr ? nullptr : above->GetSurface());
    window.SetShown(true);
    ShowRequest routed = request;
    routed.opener = fOrder.KeysOpener(window);
    const int32 opener = fRouter.Shown(window.Token(), routed, window.IsPopUp(), system_time());
    if (opener != 0) {
        HandOverKeys(window, opener);
    }
    fWindows.Raise(window.Token());
    fInput.ResetClicks();
    const bool takesFocus = request.takesFocus && !window.IsPopUp();
    const NativeWindow* focused = fWindows.Find(fRouter.Focused());
    window.Appear(takesFocus);
    // Without a window manager nobody else gives it the focus.
    if (takesFocus) {
        TakeFocus(window);
    } else if (fGivesFocusUnasked && focused != nullptr) {
        focused->GetSurface()->requestActivate();
    }
    window.ScaleMayHaveChanged();
    window.GeometryChanged(window.GetSurface()->geometry());
}

void Showing::TakeFocus(NativeWindow& window)
{
    window.GetSurface()->requestActivate();
    // Hidden and shown at once it may have kept the system's focus: nobody tells of a change then.
    if (QGuiApplication::focusWindow() == window.GetSurface() &&
        fRouter.Focused() != window.Token()) {
        fInput.FocusChanged(window.GetSurface());
    }
}

void Showing::HandOverKeys(const NativeWindow& window, int32 from)
{
    const NativeWindow* opener = fWindows.Find(from);
    if (opener == nullptr || opener->Core() == nullptr || window.Core() == nullptr ||
        opener->Core() == window.Core()) {
        return;
    }
    std::vector<std::unique_ptr<BMessage>> moved;
    std::set<int32> pressed;
    for (std::unique_ptr<BMessage>& message : opener->Core()->TakeKeyMessages()) {
        const int32 code = message->GetInt32("kits:code", 0);
        if (!message->HasInt32("be:key_repeat")) {
            pressed.insert(code);
            fRouter.KeyMoved(code, window.Token());
        } else if (pressed.count(code) == 0) {
            continue; // of a key that the opener took: this window has nothing to do with it
        }
        message->ReplaceInt32("window", window.Token());
        if (!message->HasBool("kits:early")) {
            message->AddBool("kits:early", true);
        }
        moved.push_back(std::move(message));
    }
    window.Core()->PutInFront(std::move(moved));
}

// Whether the native window must stay until the focus has gone on.
bool Showing::Leave(NativeWindow& window)
{
    const NativeWindow* opener = fWindows.Find(window.Opener());
    if (window.IsPopUp() && opener != nullptr &&
        QGuiApplication::focusWindow() == window.GetSurface()) {
        // The headless platform gave it the focus, and would take that along.
        opener->GetSurface()->requestActivate();
    }
    const bool passesFocus = fInput.WindowLeaves(window.Token());
    fWindows.Lower(window.Token());
    window.SetShown(false);
    fInput.ServeCloses(); // it may have been what blocked the others
    return passesFocus;
}

void Showing::Hide(NativeWindow& window)
{
    if (!window.IsShown()) {
        return;
    }
    if (Leave(window)) {
        fDepartures.Add(window.shared_from_this());
    } else {
        fDepartures.LetGo(window);
    }
}

void Showing::Destroy(NativeWindow& window)
{
    window.Close();
    if (window.GetSurface() == nullptr) {
        return;
    }
    const std::shared_ptr<NativeWindow> kept = window.shared_from_this();
    Hide(window);
    fWindows.Remove(window.Token());
    if (!fDepartures.Has(window)) {
        fDepartures.LetGo(window);
    }
}

void Showing::DestroyAll()
{
    while (const std::shared_ptr<NativeWindow> window = fWindows.Any()) {
        Destroy(*window);
    }
    fDepartures.FinishAll();
}

} // namespace kits
