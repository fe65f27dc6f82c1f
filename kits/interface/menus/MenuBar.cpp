#include <MenuBar.h>

#include "MenuBarKeys.h"
#include "MenuSession.h"
#include "interface/views/Look.h"

#include <MenuItem.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

namespace {

constexpr float kTitleMargin = 9;

} // namespace

BMenuBar::BMenuBar(BRect frame, const char* name, uint32 resizingMode, menu_layout layout,
                   bool resizeToFit)
    : BMenu(frame, name, resizingMode, B_WILL_DRAW | B_FRAME_EVENTS | B_FULL_UPDATE_ON_RESIZE,
            layout, resizeToFit),
      fKeys(std::make_unique<kits::MenuBarKeys>(*this))
{
    SetItemMargins(kTitleMargin, 2, kTitleMargin, 2);
}

BMenuBar::~BMenuBar()
{
    if (fSession) {
        fSession->Abandon();
    }
    if (Window() != nullptr && Window()->KeyMenuBar() == this) {
        Window()->SetKeyMenuBar(nullptr);
    }
}

void BMenuBar::SetBorder(menu_bar_border border)
{
    fBorder = border;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BMenuBar::AttachedToWindow()
{
    BMenu::AttachedToWindow();
    if (Window()->KeyMenuBar() == nullptr) {
        Window()->SetKeyMenuBar(this);
    }
    if (fResizesToFit) {
        ResizeToPreferred();
    }
}

void BMenuBar::DetachedFromWindow()
{
    if (fSession) {
        fSession->Abandon();
    }
    if (Window()->KeyMenuBar() == this) {
        Window()->SetKeyMenuBar(nullptr);
    }
    BMenu::DetachedFromWindow();
}

void BMenuBar::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kMenuBar;
    for (int32 i = 0; description->wantsParts && i < CountItems(); ++i) {
        const BMenuItem* item = ItemAt(i);
        BViewDescription::Part title;
        title.thing = item;
        title.role = BViewDescription::Role::kMenuItem;
        title.states = item->IsEnabled() ? 0 : uint32{BViewDescription::kDisabled};
        title.frame = item->Frame();
        title.name = item->Label() != nullptr ? item->Label() : "";
        description->parts.push_back(std::move(title));
    }
}

// A bar that follows both sides is as wide as what it is in.
void BMenuBar::GetPreferredSize(float* width, float* height)
{
    BMenu::GetPreferredSize(width, height);
    const bool isFullWidth =
        (ResizingMode() & B_FOLLOW_LEFT_RIGHT) == B_FOLLOW_LEFT_RIGHT && Window() != nullptr;
    if (isFullWidth) {
        const BRect around = Parent() != nullptr ? Parent()->Bounds() : Window()->Bounds();
        *width = around.Width() - Frame().left;
    }
}

void BMenuBar::DrawBackground(BRect)
{
    const BRect bounds = Bounds();
    if (fBorder == B_BORDER_FRAME) {
        SetHighColor(kits::look::kShine);
        StrokeLine(bounds.LeftTop(), bounds.RightTop());
        SetHighColor(kits::look::kShadow);
        StrokeLine(bounds.LeftBottom(), bounds.RightBottom());
    }
    for (int32 i = 0; fBorder == B_BORDER_EACH_ITEM && i < CountItems(); i++) {
        kits::look::RaisedFrame(this, ItemAt(i)->Frame());
    }
}

void BMenuBar::MouseDown(BPoint where)
{
    const BMessage* press = Window()->CurrentMessage();
    BMenuItem* title = ItemUnder(where);
    if (press != nullptr && title != nullptr) {
        NewSession()->StartByPress(*this, *press, title);
    }
}

// One session follows the other; what is left of the former one ends.
std::shared_ptr<kits::MenuSession> BMenuBar::NewSession()
{
    if (fSession) {
        fSession->Abandon();
    }
    fSession = std::make_shared<kits::MenuSession>(Window());
    return fSession;
}
