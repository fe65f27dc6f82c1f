#include "PopUpHost.h"

#include "WindowAccess.h"
#include "WindowState.h"

#include <algorithm>

#include <View.h>

namespace kits {

namespace {

WindowShape PopUpShape(BRect frame, WindowShape::Kind kind)
{
    WindowShape shape;
    shape.kind = kind;
    shape.frame = frame;
    shape.look = B_NO_BORDER_WINDOW_LOOK;
    return shape;
}

} // namespace

PopUpHost::PopUpHost(BWindow* owner, BView* content, BRect screenFrame, WindowShape::Kind kind)
    : fOwner(owner), fContent(content), fKind(kind), fHost(owner, PopUpShape(screenFrame, kind))
{
    fHost.Root()->AddChild(content);
}

PopUpHost::~PopUpHost()
{
    Hide();
    fHost.Root()->RemoveChild(fContent);
}

void PopUpHost::Show()
{
    if (fIsShown) {
        return;
    }
    fIsShown = true;
    WindowState& state = WindowAccess::State(*fOwner);
    state.popUps.push_back(&fHost);
    fHost.PrepareShow();
    ShowRequest request;
    request.opener = state.host->Link().Token();
    request.takesFocus = false;
    fHost.Link().Show(request);
}

void PopUpHost::Hide()
{
    if (!fIsShown) {
        return;
    }
    fIsShown = false;
    std::vector<ViewHost*>& popUps = WindowAccess::State(*fOwner).popUps;
    popUps.erase(std::remove(popUps.begin(), popUps.end(), &fHost), popUps.end());
    fHost.SetHidden();
    fHost.Link().Hide();
}

void PopUpHost::MoveTo(BPoint where)
{
    fHost.SetFrame(fHost.Frame().OffsetToCopy(where));
    fHost.Link().SetShape(PopUpShape(fHost.Frame(), fKind));
}

} // namespace kits
