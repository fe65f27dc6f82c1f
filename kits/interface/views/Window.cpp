#include <Window.h>

#include "NativeShape.h"
#include "Publishing.h"
#include "ViewAccess.h"
#include "WindowState.h"
#include "WindowViews.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"

#include <AppDefs.h>
#include <Application.h>
#include <Autolock.h>
#include <Message.h>
#include <View.h>

#include <algorithm>
#include <utility>

// A window's making and end, its kind, and the views it holds.

using kits::WindowState;

namespace {

window_look LookOf(window_type type)
{
    switch (type) {
    case B_DOCUMENT_WINDOW:
        return B_DOCUMENT_WINDOW_LOOK;
    case B_MODAL_WINDOW:
        return B_MODAL_WINDOW_LOOK;
    case B_FLOATING_WINDOW:
        return B_FLOATING_WINDOW_LOOK;
    case B_BORDERED_WINDOW:
        return B_BORDERED_WINDOW_LOOK;
    default:
        return B_TITLED_WINDOW_LOOK;
    }
}

window_feel FeelOf(window_type type)
{
    switch (type) {
    case B_MODAL_WINDOW:
        return B_MODAL_APP_WINDOW_FEEL;
    case B_FLOATING_WINDOW:
        return B_FLOATING_APP_WINDOW_FEEL;
    default:
        return B_NORMAL_WINDOW_FEEL;
    }
}

} // namespace

BWindow::BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspace)
    : BWindow(frame, title, LookOf(type), FeelOf(type), flags, workspace)
{
}

BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
                 uint32 /*workspace*/)
    : BLooper(title, B_DISPLAY_PRIORITY), fState(std::make_unique<WindowState>())
{
    fState->title = title != nullptr ? title : "";
    fState->look = look;
    fState->feel = feel;
    fState->flags = flags;
    fState->frame = kits::WholeFrame(frame);
    fState->toldFrame = fState->frame;
    if (IsModal() || IsFloating() || look == B_MODAL_WINDOW_LOOK) {
        // A dialog belongs to the window whose thread made it, unless it is told otherwise.
        fState->opener = kits::TokenOfThisThread();
    }
    fState->host = std::make_unique<kits::ViewHost>(this, kits::ShapeOf(*fState));
    kits::RememberToken(this, fState->host->Link().Token());
    kits::LooperRegistry::FindLooper(this)->MarkAsWindow(this);
}

BWindow::~BWindow()
{
    if (!IsLocked()) {
        Lock();
    }
    kits::ForgetToken(this);
    fState->interceptor = nullptr;
    fState->tips.reset();
    fState->host.reset(); // the views, then the native window
}

thread_id BWindow::Run()
{
    return BLooper::Run();
}

void BWindow::MessageReceived(BMessage* message)
{
    BLooper::MessageReceived(message);
}

bool BWindow::QuitRequested()
{
    return BLooper::QuitRequested();
}

void BWindow::Quit()
{
    if (!IsLocked() && !Lock()) {
        return;
    }
    if (fState->interceptor != nullptr) {
        fState->interceptor->Cancel();
    }
    fState->isQuitting = true;
    fState->hideLevel = std::max<int32>(fState->hideLevel, 1);
    kits::HideNative(*fState);
    if ((fState->flags & B_QUIT_ON_WINDOW_CLOSE) != 0 && be_app != nullptr) {
        be_app->PostMessage(B_QUIT_REQUESTED);
    }
    BLooper::Quit();
}

// Hooks

void BWindow::FrameMoved(BPoint /*newPosition*/) {}

void BWindow::FrameResized(float /*newWidth*/, float /*newHeight*/) {}

void BWindow::WindowActivated(bool /*active*/) {}

void BWindow::MenusBeginning() {}

void BWindow::MenusEnded() {}

void BWindow::ScreenChanged(BRect /*screenFrame*/, color_space /*mode*/) {}

void BWindow::WorkspaceActivated(int32 /*workspace*/, bool /*active*/) {}

// Kind

const char* BWindow::Title() const
{
    return fState->title.c_str();
}

void BWindow::SetTitle(const char* title)
{
    BAutolock lock(this);
    if (lock.IsLocked() && fState->title != (title != nullptr ? title : "")) {
        fState->title = title != nullptr ? title : "";
        kits::SendShape(*fState);
    }
}

window_look BWindow::Look() const
{
    return fState->look;
}

status_t BWindow::SetLook(window_look look)
{
    fState->look = look;
    kits::SendShape(*fState);
    return B_OK;
}

window_feel BWindow::Feel() const
{
    return fState->feel;
}

status_t BWindow::SetFeel(window_feel feel)
{
    fState->feel = feel;
    kits::SendShape(*fState);
    return B_OK;
}

uint32 BWindow::Flags() const
{
    return fState->flags;
}

status_t BWindow::SetFlags(uint32 flags)
{
    fState->flags = flags;
    kits::SendShape(*fState);
    return B_OK;
}

bool BWindow::IsModal() const
{
    return fState->feel == B_MODAL_SUBSET_WINDOW_FEEL || fState->feel == B_MODAL_APP_WINDOW_FEEL ||
           fState->feel == B_MODAL_ALL_WINDOW_FEEL;
}

bool BWindow::IsFloating() const
{
    return fState->feel == B_FLOATING_SUBSET_WINDOW_FEEL ||
           fState->feel == B_FLOATING_APP_WINDOW_FEEL || fState->feel == B_FLOATING_ALL_WINDOW_FEEL;
}

status_t BWindow::SetType(window_type type)
{
    fState->look = LookOf(type);
    return SetFeel(FeelOf(type));
}

window_type BWindow::Type() const
{
    for (const window_type type : {B_TITLED_WINDOW, B_DOCUMENT_WINDOW, B_MODAL_WINDOW,
                                   B_FLOATING_WINDOW, B_BORDERED_WINDOW}) {
        if (LookOf(type) == fState->look && FeelOf(type) == fState->feel) {
            return type;
        }
    }
    return B_UNTYPED_WINDOW;
}

// Views

void BWindow::AddChild(BView* child, BView* before)
{
    fState->host->Root()->AddChild(child, before);
}

bool BWindow::RemoveChild(BView* child)
{
    return fState->host->Root()->RemoveChild(child);
}

int32 BWindow::CountChildren() const
{
    return fState->host->Root()->CountChildren();
}

BView* BWindow::ChildAt(int32 index) const
{
    return fState->host->Root()->ChildAt(index);
}

BView* BWindow::FindView(const char* name) const
{
    return fState->host->Root()->FindView(name);
}

BView* BWindow::FindView(BPoint where) const
{
    return fState->host->ViewAt(where);
}

BView* BWindow::CurrentFocus() const
{
    return fState->focus;
}

BView* BWindow::LastMouseMovedView() const
{
    return fState->pointed;
}

// Updating

void BWindow::UpdateIfNeeded()
{
    BAutolock lock(this);
    if (lock.IsLocked()) {
        fState->host->PaintIfDue();
        for (kits::ViewHost* popUp : fState->popUps) {
            popUp->PaintIfDue();
        }
    }
}

bool BWindow::NeedsUpdate() const
{
    return fState->host->NeedsPaint();
}

void BWindow::EnableUpdates()
{
    fState->host->Enable();
}

void BWindow::DisableUpdates()
{
    fState->host->Disable();
}

void BWindow::Flush() const
{
    fState->host->Present();
}

void BWindow::Sync() const
{
    fState->host->Paint();
    for (kits::ViewHost* popUp : fState->popUps) {
        popUp->Paint();
    }
}

void BWindow::QueueEmpty()
{
    UpdateIfNeeded();
    kits::PublishIfChanged(*this, *fState);
    const bigtime_t now = system_time();
    if (fState->pulsedViews > 0 && fState->pulseRate > 0 && now >= fState->nextPulse) {
        fState->nextPulse = now + fState->pulseRate;
        kits::Pulse(*fState);
    }
}

bigtime_t BWindow::NextWakeUp()
{
    bigtime_t next = B_INFINITE_TIMEOUT;
    if (fState->host->HasWork()) {
        next = fState->host->DueTime();
    }
    for (const kits::ViewHost* popUp : fState->popUps) {
        next = popUp->HasWork() ? std::min(next, popUp->DueTime()) : next;
    }
    if (fState->pulsedViews > 0 && fState->pulseRate > 0) {
        next = std::min(next, fState->nextPulse);
    }
    return next;
}

void BWindow::SetPulseRate(bigtime_t rate)
{
    fState->pulseRate = std::max<bigtime_t>(rate, 0);
}

bigtime_t BWindow::PulseRate() const
{
    return fState->pulseRate;
}
