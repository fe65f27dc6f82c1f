#include <View.h>

#include "ScrollFollower.h"
#include "ViewAccess.h"
#include "ViewHost.h"
#include "ViewState.h"
#include "WindowViews.h"
#include "interface/graphics/RegionAccess.h"

#include "kernel/Stack.h"

#include <AppDefs.h>
#include <Message.h>

#include <algorithm>
#include <cmath>
#include <cstring>

// The tree of views, and the life of a view in it.

namespace {

BRect Whole(BRect frame)
{
    return BRect(std::round(frame.left), std::round(frame.top), std::round(frame.right),
                 std::round(frame.bottom));
}

} // namespace

BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BHandler(name), fFrame(Whole(frame)), fFlags(flags), fResizingMode(resizingMode)
{
}

BView::~BView()
{
    RemoveSelf();
    for (kits::ScrollFollower* bar : {fHorizontalBar, fVerticalBar}) {
        if (bar != nullptr) {
            bar->TargetGone();
        }
    }
    while (!fChildren.empty()) {
        BView* child = fChildren.back();
        RemoveChild(child);
        delete child;
    }
    SetToolTip(static_cast<BToolTip*>(nullptr));
}

void BView::CheckLock() const
{
#ifdef KITS_GUARDS
    if (fHost != nullptr && !kits::IsLocked(*fHost->Owner())) {
        kits::EndWithStack("a view was used without its window's lock");
    }
#endif
}

// Hooks

void BView::AttachedToWindow() {}

void BView::AllAttached() {}

void BView::DetachedFromWindow() {}

void BView::AllDetached() {}

void BView::MessageReceived(BMessage* message)
{
    if (message->what != B_MOUSE_WHEEL_CHANGED) {
        BHandler::MessageReceived(message);
        return;
    }
    float across = 0;
    message->FindFloat("be:wheel_delta_x", &across);
    float down = 0;
    message->FindFloat("be:wheel_delta_y", &down);
    kits::ScrollFollower* bar = down == 0 && across != 0 ? fHorizontalBar : fVerticalBar;
    if (bar != nullptr) {
        bar->WheelTurned(message);
    } else {
        BHandler::MessageReceived(message);
    }
}

void BView::Draw(BRect /*updateRect*/) {}

void BView::DrawAfterChildren(BRect /*updateRect*/) {}

void BView::MouseDown(BPoint /*where*/) {}

void BView::MouseUp(BPoint /*where*/) {}

void BView::MouseMoved(BPoint /*where*/, uint32 /*transit*/, const BMessage* /*dragMessage*/) {}

void BView::WindowActivated(bool /*active*/) {}

void BView::KeyUp(const char* /*bytes*/, int32 /*byteCount*/) {}

void BView::Pulse() {}

void BView::FrameMoved(BPoint /*newPosition*/) {}

void BView::FrameResized(float /*newWidth*/, float /*newHeight*/) {}

void BView::TargetedByScrollView(BScrollView* /*scrollView*/) {}

void BView::Describe(BViewDescription* /*description*/) const {}

bool BView::DescribeInput(BInputDescription* /*description*/) const
{
    return false;
}

bool BView::WantsKey(const BMessage& /*key*/) const
{
    return false;
}

bool BView::TakesDrops() const
{
    return false;
}

// The tree

void BView::AddChild(BView* child, BView* before)
{
    if (child == nullptr || child == this || child->fParent != nullptr) {
        return;
    }
    CheckLock();
    const auto place =
        before != nullptr ? std::find(fChildren.begin(), fChildren.end(), before) : fChildren.end();
    fChildren.insert(place, child);
    child->fParent = this;
    if (fHost != nullptr) {
        child->AttachTree(fHost);
    }
}

bool BView::RemoveChild(BView* child)
{
    return child != nullptr && child->fParent == this && child->RemoveSelf();
}

bool BView::RemoveSelf()
{
    if (fParent == nullptr) {
        return false;
    }
    CheckLock();
    if (fHost != nullptr) {
        Invalidate();
        DetachTree();
    }
    std::vector<BView*>& siblings = fParent->fChildren;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    fParent = nullptr;
    return true;
}

int32 BView::CountChildren() const
{
    return static_cast<int32>(fChildren.size());
}

BView* BView::ChildAt(int32 index) const
{
    return index >= 0 && index < CountChildren() ? fChildren[static_cast<size_t>(index)] : nullptr;
}

BView* BView::NextSibling() const
{
    if (fParent == nullptr) {
        return nullptr;
    }
    const std::vector<BView*>& siblings = fParent->fChildren;
    const auto place = std::find(siblings.begin(), siblings.end(), this);
    return place + 1 < siblings.end() ? *(place + 1) : nullptr;
}

BView* BView::PreviousSibling() const
{
    if (fParent == nullptr) {
        return nullptr;
    }
    const std::vector<BView*>& siblings = fParent->fChildren;
    const auto place = std::find(siblings.begin(), siblings.end(), this);
    return place != siblings.begin() ? *(place - 1) : nullptr;
}

BView* BView::Parent() const
{
    // A window's topmost view is nobody's business.
    return fParent != nullptr && fHost != nullptr && fParent == fHost->Root() ? nullptr : fParent;
}

BView* BView::FindView(const char* name) const
{
    if (name == nullptr) {
        return nullptr;
    }
    if (Name() != nullptr && std::strcmp(Name(), name) == 0) {
        return const_cast<BView*>(this);
    }
    for (const BView* child : fChildren) {
        if (BView* found = child->FindView(name)) {
            return found;
        }
    }
    return nullptr;
}

BWindow* BView::Window() const
{
    return fHost != nullptr ? fHost->Owner() : nullptr;
}

// Attaching. First all views of the tree become the window's, then the hooks are called: from the
// top down, then from the bottom up. A hook may add further views, which are told at once and not
// again.

void BView::AttachTree(kits::ViewHost* host)
{
    SetHost(host);
    host->LayoutChanged();
    TellAttached();
    TellAllAttached();
    Invalidate();
}

void BView::SetHost(kits::ViewHost* host)
{
    fHost = host;
    if (this != host->Root()) {
        kits::ViewJoined(*host->Owner(), *this);
    }
    for (BView* child : fChildren) {
        child->SetHost(host);
    }
}

void BView::TellAttached()
{
    if (fState->isTold || fHost == nullptr) {
        return;
    }
    fState->isTold = true;
    AttachedToWindow();
    for (size_t i = 0; i < fChildren.size(); ++i) {
        fChildren[i]->TellAttached();
    }
}

void BView::TellAllAttached()
{
    if (fState->isAllTold || fHost == nullptr) {
        return;
    }
    fState->isAllTold = true;
    for (size_t i = 0; i < fChildren.size(); ++i) {
        fChildren[i]->TellAllAttached();
    }
    AllAttached();
}

void BView::DetachTree()
{
    TellDetached();
    TellAllDetached();
    LeaveHost();
}

void BView::TellDetached()
{
    if (!fState->isTold) {
        return;
    }
    fState->isTold = false;
    DetachedFromWindow();
    for (size_t i = 0; i < fChildren.size(); ++i) {
        fChildren[i]->TellDetached();
    }
}

void BView::TellAllDetached()
{
    if (!fState->isAllTold) {
        return;
    }
    fState->isAllTold = false;
    for (size_t i = 0; i < fChildren.size(); ++i) {
        fChildren[i]->TellAllDetached();
    }
    AllDetached();
}

void BView::LeaveHost()
{
    if (fHost == nullptr) {
        return;
    }
    for (BView* child : fChildren) {
        child->LeaveHost();
    }
    kits::ViewHost* host = std::exchange(fHost, nullptr);
    host->ViewGone(this);
    fMouseEventMask = 0;
    if (this != host->Root()) {
        kits::ViewLeft(*host->Owner(), *this);
    }
}

// Showing

void BView::Show()
{
    CheckLock();
    if (--fHideLevel == 0) {
        VisibilityChanged();
    }
}

void BView::Hide()
{
    CheckLock();
    if (fHideLevel == 0 && fHost != nullptr) {
        Invalidate(); // while it can still be said where it is seen
    }
    if (++fHideLevel == 1) {
        VisibilityChanged();
        if (fHost != nullptr) {
            kits::ViewHidden(*fHost->Owner(), *this);
        }
    }
}

void BView::VisibilityChanged()
{
    if (fHost != nullptr) {
        fHost->LayoutChanged();
        Invalidate();
    }
}

bool BView::IsHidden() const
{
    return IsHidden(nullptr);
}

bool BView::IsHidden(const BView* lookingFrom) const
{
    for (const BView* view = this; view != nullptr && view != lookingFrom; view = view->fParent) {
        if (view->fHideLevel > 0) {
            return true;
        }
    }
    return lookingFrom == nullptr && fHost != nullptr && kits::IsHidden(*fHost->Owner());
}

// Updating

void BView::SetViewColor(rgb_color color)
{
    CheckLock();
    if (fViewColor == color) {
        return;
    }
    fViewColor = color;
    Invalidate();
}

void BView::SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetViewColor(rgb_color{red, green, blue, alpha});
}

void BView::Invalidate()
{
    Invalidate(Bounds());
}

void BView::Invalidate(BRect rect)
{
    CheckLock();
    if (fHost != nullptr) {
        fHost->Invalidate(*this, kits::PixelsOf(rect & Bounds()));
    }
}

void BView::Invalidate(const BRegion* region)
{
    CheckLock();
    if (fHost != nullptr && region != nullptr) {
        fHost->Invalidate(*this, kits::RegionAccess::Get(*region));
    }
}

void BView::Flush() const
{
    CheckLock();
    if (fHost != nullptr) {
        fHost->Present();
    }
}

void BView::Sync() const
{
    Flush();
}

// What other parts of the kit use

namespace kits {

void ViewAccess::GetOrigin(const BView& view, double* x, double* y)
{
    *x = 0;
    *y = 0;
    for (const BView* at = &view; at != nullptr; at = at->fParent) {
        *x += static_cast<double>(at->fFrame.left) - at->fScrollX;
        *y += static_cast<double>(at->fFrame.top) - at->fScrollY;
    }
}

void ViewAccess::SetScrollBar(BView& view, orientation direction, ScrollFollower* bar)
{
    (direction == B_VERTICAL ? view.fVerticalBar : view.fHorizontalBar) = bar;
}

} // namespace kits
