#include "ToolTips.h"

#include "ViewAccess.h"
#include "WindowAccess.h"
#include "WindowState.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <OS.h>
#include <Screen.h>
#include <View.h>
#include <Window.h>

#include <algorithm>

namespace kits {

namespace {

constexpr bigtime_t kRest = 700'000;
constexpr bigtime_t kShortRest = 100'000; // after a tip was shown
constexpr bigtime_t kStillReading = 500'000;
constexpr float kAbovePointer = 6; // a tip that has no room below

BPoint InView(const BView& view, BPoint where)
{
    double x = 0;
    double y = 0;
    ViewAccess::GetOrigin(view, &x, &y);
    return BPoint(static_cast<float>(static_cast<double>(where.x) - x),
                  static_cast<float>(static_cast<double>(where.y) - y));
}

/// Where a tip of that size lies, whole on the screen and never below the pointer itself.
BRect Place(BRect size, BPoint pointer, BPoint from, BRect screen)
{
    BRect frame = size.OffsetToCopy(pointer + from);
    if (frame.bottom > screen.bottom) {
        frame.OffsetTo(frame.left, pointer.y - kAbovePointer - frame.Height());
    }
    frame.OffsetBy(std::min(0.0F, screen.right - frame.right), 0);
    frame.OffsetBy(std::max(0.0F, screen.left - frame.left),
                   std::max(0.0F, screen.top - frame.top));
    return frame;
}

} // namespace

ToolTips& ToolTips::Of(BWindow& window)
{
    std::shared_ptr<ToolTips>& tips = WindowAccess::State(window).tips;
    if (tips == nullptr) {
        tips = std::make_shared<ToolTips>(window);
    }
    return *tips;
}

bool ToolTips::Saw(const BMessage& message)
{
    switch (message.what) {
    case B_MOUSE_MOVED:
        Moved(message);
        return false;
    case B_MOUSE_DOWN:
    case B_MOUSE_WHEEL_CHANGED:
    case B_KEY_DOWN:
    case B_UNMAPPED_KEY_DOWN:
    case B_WINDOW_ACTIVATED:
    case B_MINIMIZE:
        Cancel();
        return false;
    case kTipDue:
        Due();
        return true;
    default:
        return false;
    }
}

void ToolTips::Moved(const BMessage& message)
{
    BPoint where(-1, -1);
    message.FindPoint("where", &where);
    const bool isOver = message.GetInt32("be:transit", B_INSIDE_VIEW) != B_EXITED_VIEW &&
                        message.GetInt32("buttons", 0) == 0 && !message.HasInt32("kits:drag");
    if (isOver && where == fWhere) {
        return; // told again
    }
    fWhere = where;
    BView* view = isOver ? WindowAccess::State(fWindow).host->ViewAt(where) : nullptr;
    if (fHost != nullptr && view != nullptr && view == fView &&
        (fTip->IsSticky() || Ask(*view) == fTip.Get())) {
        return;
    }
    if (fHost != nullptr) {
        fClosedAt = system_time();
        Close();
    }
    fView = view;
    fIsResting = view != nullptr;
    fMovedAt = system_time();
    if (fIsResting && !fDue.has_value()) {
        Order(fMovedAt - fClosedAt < kStillReading ? kShortRest : kRest);
    }
}

void ToolTips::Order(bigtime_t delay)
{
    const BMessage due(kTipDue);
    fDue.emplace(BMessenger(&fWindow), &due, delay, 1);
}

/// One timer at a time: it may have been ordered for an earlier rest.
void ToolTips::Due()
{
    fDue.reset();
    if (!fIsResting || fView == nullptr) {
        return;
    }
    const bigtime_t rest = fMovedAt - fClosedAt < kStillReading ? kShortRest : kRest;
    const bigtime_t wait = fMovedAt + rest - system_time();
    if (wait > 0) {
        Order(wait);
        return;
    }
    fIsResting = false;
    const WindowState& state = WindowAccess::State(fWindow);
    if (state.hideLevel > 0 || state.interceptor != nullptr) {
        return;
    }
    if (BToolTip* tip = Ask(*fView)) {
        Open(*fView, tip);
    }
}

/// The view's own, else that of the view around it.
BToolTip* ToolTips::Ask(BView& view) const
{
    for (BView* asked = &view; asked != nullptr; asked = asked->Parent()) {
        BToolTip* tip = nullptr;
        if (asked->GetToolTipAt(InView(*asked, fWhere), &tip) && tip != nullptr) {
            return tip;
        }
    }
    return nullptr;
}

void ToolTips::Show(BView& view, BToolTip* tip)
{
    Close();
    if (tip != nullptr) {
        Open(view, tip);
    }
}

void ToolTips::Hide(const BView& view)
{
    if (&view == fView) {
        Cancel();
    }
}

void ToolTips::Open(BView& view, BToolTip* tip)
{
    fView = &view;
    fTip.SetTo(tip);
    BView* content = tip->View();
    if (content == nullptr || content->Window() != nullptr) {
        fTip.Unset();
        return;
    }
    const BPoint pointer = fWindow.ConvertToScreen(fWhere);
    const BRect frame = Place(content->Bounds().OffsetToCopy(B_ORIGIN), pointer,
                              tip->MouseRelativeLocation(), BScreen(&fWindow).Frame());
    content->MoveTo(B_ORIGIN);
    fHost = std::make_unique<PopUpHost>(&fWindow, content, frame, WindowShape::Kind::kTip);
    fHost->Show();
}

void ToolTips::Close()
{
    fHost.reset();
    fTip.Unset();
}

void ToolTips::Cancel()
{
    fIsResting = false;
    fView = nullptr;
    fDue.reset();
    Close();
}

void ToolTips::ViewGone(const BView* view)
{
    if (view == fView) {
        Cancel();
    }
}

} // namespace kits
