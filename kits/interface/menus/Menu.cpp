#include <Menu.h>

#include "MenuSession.h"
#include "interface/views/Look.h"

#include <Window.h>

#include <algorithm>
#include <utility>

namespace {

constexpr float kMarkColumn = 15;
constexpr float kArrowColumn = 18;

} // namespace

BMenu::BMenu(const char* name, menu_layout layout)
    : BMenu(BRect(0, 0, 0, 0), name, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW, layout, true)
{
}

BMenu::BMenu(BRect frame, const char* name, uint32 resizingMode, uint32 flags, menu_layout layout,
             bool resizeToFit)
    : BView(frame, name, resizingMode, flags), fLayout(layout),
      fMargins(kMarkColumn, 2, kArrowColumn, 2), fResizesToFit(resizeToFit)
{
    SetViewColor(kits::look::kGround);
    SetLowColor(kits::look::kGround);
}

BMenu::~BMenu()
{
    WillChange();
    if (BMenuItem* item = std::exchange(fSuperitem, nullptr)) {
        item->WillChange();
        static_cast<void>(item->fSubmenu.release()); // it is this menu, which goes
        item->Changed();
    }
    for (int32 i = CountItems() - 1; i >= 0; i--) {
        delete RemoveItem(i);
    }
}

// Items

bool BMenu::AddItem(BMenuItem* item)
{
    return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, int32 index)
{
    if (item == nullptr || item->fMenu != nullptr || index < 0 || index > CountItems()) {
        return false;
    }
    WillChangeBetween(CountItems(), CountItems() + 1);
    if (!fItems.AddItem(item, index)) {
        return false;
    }
    item->fMenu = this;
    if (item->Submenu() != nullptr) {
        item->Submenu()->fSupermenu = this;
    }
    if (item->IsMarked()) {
        ItemMarked(item);
    }
    InvalidateLayout();
    return true;
}

bool BMenu::AddItem(BMenu* submenu)
{
    return AddItem(submenu, CountItems());
}

bool BMenu::AddItem(BMenu* submenu, int32 index)
{
    if (submenu == nullptr || submenu->fSuperitem != nullptr) {
        return false;
    }
    auto item = std::make_unique<BMenuItem>(submenu);
    if (!AddItem(item.get(), index)) {
        // The caller keeps the submenu.
        static_cast<void>(item->fSubmenu.release());
        submenu->fSuperitem = nullptr;
        return false;
    }
    static_cast<void>(item.release()); // adopted
    return true;
}

bool BMenu::AddList(BList* items, int32 index)
{
    if (items == nullptr || index < 0 || index > CountItems()) {
        return false;
    }
    for (int32 i = 0; i < items->CountItems(); i++) {
        if (!AddItem(static_cast<BMenuItem*>(items->ItemAt(i)), index + i)) {
            return false;
        }
    }
    return true;
}

bool BMenu::AddSeparatorItem()
{
    return AddItem(new BSeparatorItem());
}

bool BMenu::RemoveItem(BMenuItem* item)
{
    return RemoveItem(IndexOf(item)) != nullptr;
}

BMenuItem* BMenu::RemoveItem(int32 index)
{
    BMenuItem* item = ItemAt(index);
    if (item == nullptr) {
        return nullptr;
    }
    if (fShownBy != nullptr) {
        fShownBy->ItemLeaves(item);
    }
    WillChangeBetween(CountItems(), CountItems() - 1);
    fItems.RemoveItem(item);
    item->fMenu = nullptr;
    item->fIsSelected = false;
    if (item->Submenu() != nullptr) {
        item->Submenu()->fSupermenu = nullptr;
    }
    if (fSelected == item) {
        fSelected = nullptr;
    }
    InvalidateLayout();
    return item;
}

bool BMenu::RemoveItem(BMenu* submenu)
{
    BMenuItem* item = RemoveItem(IndexOf(submenu));
    if (item == nullptr) {
        return false;
    }
    static_cast<void>(item->fSubmenu.release()); // the caller's now
    submenu->fSuperitem = nullptr;
    delete item;
    return true;
}

bool BMenu::RemoveItems(int32 index, int32 count, bool deleteItems)
{
    if (index < 0 || index >= CountItems() || count <= 0) {
        return false;
    }
    for (int32 i = std::min(index + count, CountItems()) - 1; i >= index; i--) {
        BMenuItem* item = RemoveItem(i);
        if (deleteItems) {
            delete item;
        }
    }
    return true;
}

BMenuItem* BMenu::ItemAt(int32 index) const
{
    return static_cast<BMenuItem*>(fItems.ItemAt(index));
}

BMenu* BMenu::SubmenuAt(int32 index) const
{
    const BMenuItem* item = ItemAt(index);
    return item != nullptr ? item->Submenu() : nullptr;
}

int32 BMenu::CountItems() const
{
    return fItems.CountItems();
}

int32 BMenu::IndexOf(BMenuItem* item) const
{
    return fItems.IndexOf(item);
}

int32 BMenu::IndexOf(BMenu* submenu) const
{
    for (int32 i = 0; submenu != nullptr && i < CountItems(); i++) {
        if (SubmenuAt(i) == submenu) {
            return i;
        }
    }
    return -1;
}

BMenuItem* BMenu::FindItem(uint32 command) const
{
    return FindWhere([command](const BMenuItem& item) {
        return item.Message() != nullptr && item.Command() == command;
    });
}

BMenuItem* BMenu::FindItem(const char* label) const
{
    const std::string wanted = label != nullptr ? label : "";
    return FindWhere([&wanted](const BMenuItem& item) { return wanted == item.Label(); });
}

// The first item here, or else in a submenu, that fits.
BMenuItem* BMenu::FindWhere(const std::function<bool(const BMenuItem&)>& fits) const
{
    for (int32 i = 0; i < CountItems(); i++) {
        if (fits(*ItemAt(i))) {
            return ItemAt(i);
        }
        if (SubmenuAt(i) != nullptr) {
            if (BMenuItem* found = SubmenuAt(i)->FindWhere(fits)) {
                return found;
            }
        }
    }
    return nullptr;
}

// Settings

status_t BMenu::SetTargetForItems(BHandler* handler)
{
    status_t result = B_OK;
    for (int32 i = 0; i < CountItems(); i++) {
        result = std::min(result, ItemAt(i)->SetTarget(handler));
    }
    return result;
}

status_t BMenu::SetTargetForItems(BMessenger messenger)
{
    status_t result = B_OK;
    for (int32 i = 0; i < CountItems(); i++) {
        result = std::min(result, ItemAt(i)->SetTarget(messenger));
    }
    return result;
}

void BMenu::SetEnabled(bool enabled)
{
    if (fIsEnabled == enabled) {
        return;
    }
    WillChange();
    fIsEnabled = enabled;
    if (Window() != nullptr) {
        Invalidate();
    }
    if (fSuperitem != nullptr) {
        fSuperitem->SetEnabled(enabled);
    }
}

void BMenu::SetRadioMode(bool radioMode)
{
    fIsRadioMode = radioMode;
}

void BMenu::SetTriggersEnabled(bool enabled)
{
    fHasTriggers = enabled;
}

void BMenu::SetMaxContentWidth(float maxWidth)
{
    WillChange();
    fMaxContentWidth = maxWidth;
    InvalidateLayout();
}

void BMenu::SetLabelFromMarked(bool fromMarked)
{
    fIsLabelFromMarked = fromMarked;
    if (fromMarked) {
        fIsRadioMode = true;
    }
}

bool BMenu::IsEnabled() const
{
    return fIsEnabled && (fSupermenu == nullptr || fSupermenu->IsEnabled());
}

BMenuItem* BMenu::FindMarked() const
{
    for (int32 i = 0; i < CountItems(); i++) {
        if (ItemAt(i)->IsMarked()) {
            return ItemAt(i);
        }
    }
    return nullptr;
}

void BMenu::ItemMarked(BMenuItem* item)
{
    if (fIsRadioMode) {
        for (int32 i = 0; i < CountItems(); i++) {
            if (ItemAt(i) != item) {
                ItemAt(i)->SetMarked(false);
            }
        }
    }
    if (fIsLabelFromMarked && fSuperitem != nullptr) {
        fSuperitem->SetLabel(item->Label());
    }
}

BWindow* BMenu::OwnerWindow() const
{
    if (Window() != nullptr) {
        return Window();
    }
    return fSuperitem != nullptr ? fSuperitem->OwnerWindow() : nullptr;
}

// Closes the menu, where it is open, before what a person sees is no longer what there is.
void BMenu::WillChange()
{
    if (fShownBy != nullptr) {
        fShownBy->MenuChanges();
    }
}

// The same for another number of items: without any the menu's own item cannot be opened.
void BMenu::WillChangeBetween(int32 before, int32 after)
{
    WillChange();
    if (fSuperitem != nullptr && (before == 0 || after == 0)) {
        fSuperitem->WillChange();
        fSuperitem->Changed();
    }
}

void BMenu::SelectItem(BMenuItem* item)
{
    if (item == fSelected) {
        return;
    }
    BMenuItem* former = fSelected;
    fSelected = item;
    if (former != nullptr) {
        former->fIsSelected = false;
        former->Highlight(false);
    }
    if (item != nullptr && item == fSelected) { // the hook may have taken it out

        item->fIsSelected = true;
        item->Highlight(true);
    }
}

// BView

void BMenu::AttachedToWindow()
{
    BView::AttachedToWindow();
    LayOutItems();
}

void BMenu::Draw(BRect updateRect)
{
    DrawBackground(updateRect);
    for (int32 i = 0; i < CountItems(); i++) {
        if (ItemAt(i)->fFrame.Intersects(updateRect)) {
            ItemAt(i)->Draw();
        }
    }
}

void BMenu::DrawBackground(BRect)
{
    const BRect whole(0, 0, fContentWidth, fContentHeight);
    SetHighColor(kits::look::kOutline);
    StrokeRect(whole);
}
