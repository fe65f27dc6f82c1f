#pragma once

#include "ViewHost.h"

namespace kits {

/// Shows a view in a small window of its own over the owner window: an open menu, a tip.
///
/// Thread: the owner window's, whose lock is the content's too. Ownership: borrows the content,
/// which leaves the pop-up with it.
class PopUpHost
{
public:
    PopUpHost(BWindow* owner, BView* content, BRect screenFrame,
              WindowShape::Kind kind = WindowShape::Kind::kPopUp);
    ~PopUpHost();
    PopUpHost(const PopUpHost&) = delete;
    PopUpHost& operator=(const PopUpHost&) = delete;

    void Show();
    void Hide();
    void MoveTo(BPoint where);
    /// Names it in messages ("window").
    int32 Token() const { return fHost.Link().Token(); }

private:
    BWindow* const fOwner;
    BView* fContent;
    const WindowShape::Kind fKind;
    ViewHost fHost;
    bool fIsShown = false;
};

} // namespace kits
