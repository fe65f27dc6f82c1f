#include <Window.h>

#include "NativeShape.h"
#include "ToolTips.h"
#include "WindowAccess.h"
#include "WindowState.h"

#include "server/Fitting.h"
#include "server/InputMessages.h"
#include "server/WindowServer.h"

#include <AppDefs.h>
#include <Autolock.h>
#include <Message.h>
#include <Screen.h>

#include <algorithm>
#include <cmath>

// Windows on the screen: showing, hiding, activation, frames and their limits.

namespace {

kits::ShowRequest RequestOf(const BWindow& window, const kits::WindowState& state)
{
    kits::ShowRequest request;
    request.opener = state.opener;
    request.takesFocus = state.takesFocus && (state.flags & B_AVOID_FOCUS) == 0;
    request.takesKeys = state.takesKeys;
    request.isModal = window.IsModal();
    // Modal windows never block each other: several alerts of several threads may be up.
    request.isExemptFromModal = request.isModal;
    return request;
}

bool HasTitle(window_look look)
{
    return look != B_BORDERED_WINDOW_LOOK && look != B_NO_BORDER_WINDOW_LOOK;
}

} // namespace

// Showing

void BWindow::Show()
{
    const bool wasLocked = IsLocked();
    if (!wasLocked && !Lock()) {
        return;
    }
    const bool isFirst = Thread() <= 0;
    if (--fState->hideLevel == 0 && !fState->isQuitting) {
        fState->wasQuiet = false;
        fState->awaitsActivation = RequestOf(*this, *fState).takesFocus;
        fState->host->PrepareShow();
        fState->host->Link().Show(RequestOf(*this, *fState));
    }
    const bool isRunning = !isFirst || Run() >= B_OK; // gives the constructor's lock back
    if (!isRunning) {
        // A window without a thread would be on the screen for ever and answer to nothing.
        ++fState->hideLevel;
        kits::HideNative(*fState);
    }
    if (!wasLocked && (!isFirst || !isRunning)) {
        Unlock();
    }
}

void BWindow::Hide()
{
    BAutolock lock(this);
    if (lock.IsLocked() && ++fState->hideLevel == 1) {
        if (fState->interceptor != nullptr) {
            fState->interceptor->Cancel();
        }
        if (fState->tips != nullptr) {
            fState->tips->Cancel();
        }
        kits::HideNative(*fState);
    }
}

bool BWindow::IsHidden() const
{
    return fState->hideLevel > 0;
}

void BWindow::Minimize(bool minimize)
{
    BAutolock lock(this);
    if (lock.IsLocked() && fState->isMinimized != minimize) {
        fState->isMinimized = minimize;
        fState->host->Link().Minimize(minimize);
    }
}

bool BWindow::IsMinimized() const
{
    return fState->isMinimized;
}

void BWindow::Activate(bool active)
{
    BAutolock lock(this);
    if (lock.IsLocked() && active && !IsHidden()) {
        fState->host->Link().Activate();
    }
}

bool BWindow::IsActive() const
{
    return fState->isActive;
}

bool BWindow::IsFront() const
{
    return fState->isActive;
}

void BWindow::SetZoomLimits(float maxWidth, float maxHeight)
{
    fState->maxZoomWidth = maxWidth;
    fState->maxZoomHeight = maxHeight;
}

void BWindow::Zoom()
{
    BRect room = BScreen(this).AvailableFrame();
    room.top += HasTitle(Look()) ? static_cast<float>(kits::kTitleHeight) : 0.0f;
    const float width = std::min({room.Width(), fState->maxZoomWidth, fState->maxWidth});
    const float height = std::min({room.Height(), fState->maxZoomHeight, fState->maxHeight});
    const BPoint place = fState->frame.LeftTop();
    const BPoint leftTop(std::clamp(place.x, room.left, room.right - width),
                         std::clamp(place.y, room.top, room.bottom - height));
    const BRect zoomed(leftTop.x, leftTop.y, leftTop.x + width, leftTop.y + height);
    if (fState->frame == zoomed && fState->beforeZoom.IsValid()) {
        const BRect before = fState->beforeZoom;
        Zoom(before.LeftTop(), before.Width(), before.Height());
        return;
    }
    fState->beforeZoom = fState->frame;
    Zoom(leftTop, width, height);
}

void BWindow::Zoom(BPoint leftTop, float width, float height)
{
    MoveTo(leftTop);
    ResizeTo(width, height);
}

// Frame

BRect BWindow::Bounds() const
{
    return fState->frame.OffsetToCopy(B_ORIGIN);
}

BRect BWindow::Frame() const
{
    return fState->frame;
}

void BWindow::MoveBy(float dx, float dy)
{
    MoveTo(fState->frame.left + dx, fState->frame.top + dy);
}

void BWindow::MoveTo(BPoint where)
{
    MoveTo(where.x, where.y);
}

void BWindow::MoveTo(float x, float y)
{
    BAutolock lock(this);
    if (lock.IsLocked()) {
        kits::ChangePlace(*this, BPoint(std::round(x), std::round(y)));
    }
}

void BWindow::ResizeBy(float dx, float dy)
{
    ResizeTo(fState->frame.Width() + dx, fState->frame.Height() + dy);
}

void BWindow::ResizeTo(float width, float height)
{
    BAutolock lock(this);
    if (lock.IsLocked()) {
        kits::ChangeSize(*this, std::round(width), std::round(height));
    }
}

void BWindow::CenterIn(BRect frame)
{
    const BRect own = fState->frame;
    MoveTo(frame.left + std::floor((frame.Width() - own.Width()) / 2),
           frame.top + std::floor((frame.Height() - own.Height()) / 2));
}

void BWindow::CenterOnScreen()
{
    CenterIn(BScreen(this).AvailableFrame());
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    if (minWidth > maxWidth || minHeight > maxHeight) {
        return;
    }
    fState->minWidth = std::max(0.0f, minWidth);
    fState->maxWidth = maxWidth;
    fState->minHeight = std::max(0.0f, minHeight);
    fState->maxHeight = maxHeight;
    kits::SendShape(*fState);
    const BRect allowed = kits::WithinLimits(*fState, fState->frame);
    if (allowed != fState->frame) {
        ResizeTo(allowed.Width(), allowed.Height());
    }
}

void BWindow::GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight)
{
    *minWidth = fState->minWidth;
    *maxWidth = fState->maxWidth;
    *minHeight = fState->minHeight;
    *maxHeight = fState->maxHeight;
}

void BWindow::ConvertToScreen(BPoint* point) const
{
    *point += fState->frame.LeftTop();
}

BPoint BWindow::ConvertToScreen(BPoint point) const
{
    return point + fState->frame.LeftTop();
}

BRect BWindow::ConvertToScreen(BRect rect) const
{
    return rect.OffsetByCopy(fState->frame.LeftTop());
}

void BWindow::ConvertFromScreen(BPoint* point) const
{
    *point -= fState->frame.LeftTop();
}

BPoint BWindow::ConvertFromScreen(BPoint point) const
{
    return point - fState->frame.LeftTop();
}

BRect BWindow::ConvertFromScreen(BRect rect) const
{
    return rect.OffsetByCopy(-fState->frame.LeftTop());
}

// Here and not with the rest of its class, which knows no windows.
BScreen::BScreen(BWindow* window) : fId(B_MAIN_SCREEN_ID)
{
    if (window != nullptr) {
        fId.id = kits::WindowServer::Get().ScreenOf(window->Frame());
    }
}

// Extensions

void BWindow::SetOpener(BWindow* opener)
{
    fState->opener = kits::WindowAccess::TokenOf(opener);
}

void BWindow::SetAnswerDelay(bigtime_t afterFirstFrame, bigtime_t afterLastKey)
{
    fState->answersAfterFrame = afterFirstFrame;
    fState->answersAfterKey = afterLastKey;
}

bool BWindow::TakesAnswers() const
{
    return fState->takesAnswers;
}

void BWindow::SetTakesFocus(bool takesFocus)
{
    fState->takesFocus = takesFocus;
}

void BWindow::SetTakesKeys(bool takesKeys)
{
    fState->takesKeys = takesKeys;
}

namespace kits {

void WindowAccess::SetMouseCapture(BWindow* window, bool on)
{
    window->fState->host->Link().SetMouseCapture(on);
}

void SetInterceptor(BWindow* window, InputInterceptor* interceptor)
{
    WindowState& state = WindowAccess::State(*window);
    state.interceptor = interceptor;
    if (interceptor != nullptr && state.tips != nullptr) {
        state.tips->Cancel();
    }
}

namespace {

void FrameAsked(BWindow& window, WindowState& state, BRect frame)
{
    state.asks.corrected = 0;
    state.frame = frame;
    state.host->SetFrame(frame);
    SendShape(state);
    // The hooks are called in their turn; by then the frame may be another again.
    window.PostMessage(kFrameChanged);
}

} // namespace

// What waits may be another place than the window's own; the later word is the one said now.
void ChangePlace(BWindow& window, BPoint leftTop)
{
    WindowState& state = WindowAccess::State(window);
    if (leftTop != state.frame.LeftTop() || state.host->Link().News().IsWaiting()) {
        state.asks.place++;
        FrameAsked(window, state, state.frame.OffsetToCopy(leftTop));
    }
}

void ChangeSize(BWindow& window, float width, float height)
{
    WindowState& state = WindowAccess::State(window);
    BRect frame = state.frame;
    frame.right = frame.left + width;
    frame.bottom = frame.top + height;
    // A window manager need not hold the program to its own limits.
    frame = WithinLimits(state, frame);
    if (frame != state.frame || state.host->Link().News().IsWaiting()) {
        state.asks.size++;
        state.refusedSize = BRect();
        FrameAsked(window, state, frame);
    }
}

} // namespace kits
