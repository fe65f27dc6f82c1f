#pragma once

#include <View.h>

namespace kits {

/// What other parts of the kit need of views beyond their public face. Thread: as the view's.
class ViewAccess
{
public:
    /// The host that shows the view, null while it is in no window.
    static ViewHost* Host(const BView& view) { return view.fHost; }
    static ViewState& State(const BView& view) { return *view.fState; }
    static const std::vector<BView*>& Children(const BView& view) { return view.fChildren; }
    /// The parent, the invisible topmost view included.
    static BView* TreeParent(const BView& view) { return view.fParent; }
    static void SetFrame(BView& view, BRect frame) { view.SetFrame(frame); }
    static void AttachRoot(BView& root, ViewHost* host) { root.AttachTree(host); }
    static void DetachRoot(BView& root) { root.DetachTree(); }
    static void SetScrollBar(BView& view, orientation direction, ScrollFollower* bar);
    /// Scrolls as ScrollTo() does, exact beyond what a BPoint can say.
    static void ScrollTo(BView& view, double x, double y) { view.ScrollToExact(x, y); }
    static double ScrollX(const BView& view) { return view.fScrollX; }
    static double ScrollY(const BView& view) { return view.fScrollY; }
    /// Where the view's point (0, 0) lies in its window; exact.
    static void GetOrigin(const BView& view, double* x, double* y);
    static bool HidesItself(const BView& view) { return view.fHideLevel > 0; }
    static uint32 PointerMask(const BView& view) { return view.fMouseEventMask; }
    static void ClearPointerMask(BView& view) { view.fMouseEventMask = 0; }
};

} // namespace kits
