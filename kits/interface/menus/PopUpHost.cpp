#include "PopUpHost.h"

#include "interface/views/WindowAccess.h"
#include "interface/views/WindowState.h"

#include <algorithm>

#include <View.h>

namespace kits {

namespace {

WindowShape PopUpShape(BRect frame)
{
    WindowShape shape;
    shape.kind = WindowShape::Kind::kPopUp;
    shape.frame = frame;
    shape.look = B_NO_BORDER_WINDOW_LOOK;
    return shape;
}

} // namespace

PopUpHost::PopUpHost(BWindow* owner, BView* content, BRect screenFrame)
    : fOwner(owner), fContent(content), fHost(owner, PopUpShape(screenFrame))
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
    fHost.Link().SetShape(PopUpShape(fHost.Frame()));
}

} // namespace kits
