// What the system says of a native window, told to its looper.

#include "InputMessages.h"
#include "NativeWindow.h"
#include "Surface.h"
#include "WindowEvents.h"
#include "WindowFlags.h"

#include <AppDefs.h>
#include <Message.h>
#include <OS.h>

#include <utility>

namespace kits {

void NativeWindow::GeometryChanged(const QRect& geometry)
{
    if (fIsShown && !IsPopUp() && geometry != fKnown) {
        TellFrame(geometry);
    }
}

void NativeWindow::TellFrame(const QRect& frame)
{
    fKnown = frame;
    if (fNews->Put({RectTo(frame), ++fSerial, fShape.asks})) {
        Post(std::make_unique<BMessage>(kFrameChanged));
    }
}

void NativeWindow::CloseAsked()
{
    if (IsPopUp()) {
        // The desktop wants an open menu gone; its messages go to the window that it belongs to.
        Post(std::make_unique<BMessage>(kCaptureLost));
    } else if ((fShape.flags & B_NOT_CLOSABLE) != B_NOT_CLOSABLE) {
        fEvents->CloseAsked(fToken);
    }
}

void NativeWindow::StatesChanged(Qt::WindowStates states)
{
    const Qt::WindowStates changed = states ^ std::exchange(fStates, states);
    if ((changed & Qt::WindowMinimized) != 0) {
        auto minimized = std::make_unique<BMessage>(B_MINIMIZE);
        minimized->AddInt64("when", system_time());
        minimized->AddBool("minimize", (states & Qt::WindowMinimized) != 0);
        Post(std::move(minimized));
    }
    const bool canZoom = (WindowFlagsFor(fShape) & Qt::WindowMaximizeButtonHint) != 0 && fIsShown;
    if ((changed & Qt::WindowMaximized) != 0 && canZoom) {
        auto zoomed = std::make_unique<BMessage>(B_ZOOM);
        zoomed->AddInt64("when", system_time());
        Post(std::move(zoomed));
    }
}

void NativeWindow::ScaleMayHaveChanged()
{
    const float scale = static_cast<float>(fSurface->devicePixelRatio());
    if (fScale.exchange(scale) == scale) {
        return;
    }
    auto changed = std::make_unique<BMessage>(kScaleChanged);
    changed->AddFloat("scale", scale);
    Post(std::move(changed));
}

} // namespace kits
