#include <MenuItem.h>

#include "interface/views/Look.h"
#include "interface/views/Shortcut.h"

#include <Font.h>
#include <Menu.h>
#include <Message.h>
#include <OS.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr float kSeparatorHeight = 8;

} // namespace

BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : BInvoker(message, nullptr), fLabel(label != nullptr ? label : ""), fModifiers(modifiers),
      fShortcut(shortcut)
{
}

BMenuItem::BMenuItem(BMenu* submenu, BMessage* message)
    : BInvoker(message, nullptr), fLabel(submenu->Name() != nullptr ? submenu->Name() : ""),
      fSubmenu(submenu)
{
    submenu->fSuperitem = this;
}

BMenuItem::~BMenuItem()
{
    if (fMenu != nullptr) {
        fMenu->RemoveItem(this);
    }
    if (fSubmenu != nullptr) {
        fSubmenu->fSuperitem = nullptr;
    }
}

void BMenuItem::SetLabel(const char* label)
{
    const char* shown = label != nullptr ? label : "";
    if (fLabel == shown) {
        return;
    }
    WillChange();
    fLabel = shown;
    if (fMenu != nullptr) {
        fMenu->InvalidateLayout();
        if (fIsMarked) {
            fMenu->ItemMarked(this);
        }
    }
}

void BMenuItem::SetEnabled(bool enabled)
{
    if (fIsEnabled != enabled) {
        WillChange();
        fIsEnabled = enabled;
        Changed();
    }
}

void BMenuItem::SetMarked(bool marked)
{
    if (fIsMarked == marked) {
        return;
    }
    WillChange();
    fIsMarked = marked;
    Changed();
    if (marked && fMenu != nullptr) {
        fMenu->ItemMarked(this);
    }
}

void BMenuItem::SetTrigger(char trigger)
{
    WillChange();
    fTrigger = trigger;
}

void BMenuItem::SetShortcut(char shortcut, uint32 modifiers)
{
    WillChange();
    fShortcut = shortcut;
    fModifiers = modifiers;
    if (fMenu != nullptr) {
        fMenu->InvalidateLayout();
    }
}

void BMenuItem::SetKeyText(const char* text)
{
    WillChange();
    fKeyText = text != nullptr ? text : "";
    if (fMenu != nullptr) {
        fMenu->InvalidateLayout();
    }
}

// What stands at the right, for the shortcut or another key.
std::string BMenuItem::KeyText() const
{
    return fShortcut != 0 ? kits::ShortcutText(fShortcut, fModifiers) : fKeyText;
}

bool BMenuItem::IsEnabled() const
{
    return fIsEnabled && (fMenu == nullptr || fMenu->IsEnabled());
}

char BMenuItem::Shortcut(uint32* modifiers) const
{
    if (modifiers != nullptr) {
        *modifiers = fModifiers;
    }
    return fShortcut;
}

bool BMenuItem::CanWork() const
{
    if (!IsEnabled()) {
        return false;
    }
    // An item that would do nothing must not look as if it did.
    if (fSubmenu != nullptr) {
        return fSubmenu->CountItems() > 0;
    }
    return Message() != nullptr || (fMenu != nullptr && fMenu->IsRadioMode());
}

// The window that the item works in while it has no other target.
BWindow* BMenuItem::OwnerWindow() const
{
    return fMenu != nullptr ? fMenu->OwnerWindow() : nullptr;
}

void BMenuItem::GetContentSize(float* width, float* height)
{
    float labelWidth = std::ceil(fMenu->StringWidth(fLabel.c_str()));
    if (fMenu->MaxContentWidth() > 0) {
        labelWidth = std::min(labelWidth, fMenu->MaxContentWidth());
    }
    *width = labelWidth;
    *height = fMenu->fFontHeight;
}

void BMenuItem::TruncateLabel(float maxWidth, char* newLabel)
{
    BFont font;
    fMenu->GetFont(&font);
    BString label(fLabel.c_str());
    font.TruncateString(&label, B_TRUNCATE_MIDDLE, maxWidth);
    std::memcpy(newLabel, label.String(), static_cast<size_t>(label.Length()) + 1);
}

void BMenuItem::DrawContent()
{
    const BPoint place = ContentLocation();
    const float widest = fMenu->MaxContentWidth();
    const BPoint base(place.x, place.y + fMenu->fFontAscent);
    if (widest <= 0 || fMenu->StringWidth(fLabel.c_str()) <= widest) {
        fMenu->DrawString(fLabel.c_str(), base);
        return;
    }
    // The ellipsis is three bytes long, and what it replaces may be a single one.
    std::vector<char> shortened(fLabel.size() + 4);
    TruncateLabel(widest, shortened.data());
    fMenu->DrawString(shortened.data(), base);
}

void BMenuItem::Draw()
{
    const bool isHighlighted = fIsSelected && CanWork();
    const rgb_color ground = isHighlighted ? kits::look::kSelectedRow : kits::look::kGround;
    if (isHighlighted) {
        kits::look::Fill(fMenu, fFrame, ground);
    }
    fMenu->SetLowColor(ground);
    fMenu->SetHighColor(CanWork() ? kits::look::kText : kits::look::kDisabledText);
    DrawContent();
    if (fMenu->Layout() != B_ITEMS_IN_COLUMN) {
        return;
    }
    if (fIsMarked) {
        DrawMark();
    }
    DrawShortcut();
    if (fSubmenu != nullptr) {
        DrawSubmenuArrow();
    }
}

void BMenuItem::Highlight(bool)
{
    Changed();
}

BPoint BMenuItem::ContentLocation() const
{
    return BPoint(fFrame.left + fMenu->fMargins.left, fFrame.top + fMenu->fMargins.top);
}

status_t BMenuItem::Invoke(BMessage* message)
{
    if (!CanWork()) {
        return B_NOT_ALLOWED;
    }
    if (fMenu != nullptr && fMenu->IsRadioMode()) {
        SetMarked(true);
    }
    const BMessage* source = message != nullptr ? message : Message();
    if (source == nullptr) {
        return B_BAD_VALUE;
    }
    if (!Messenger().IsValid() && OwnerWindow() != nullptr) {
        SetTarget(OwnerWindow());
    }
    BMessage copy(*source);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", this);
    copy.AddInt32("index", fMenu != nullptr ? fMenu->IndexOf(this) : -1);
    return BInvoker::Invoke(&copy);
}

void BMenuItem::DrawMark()
{
    // A check mark of whole units: two strokes, two units thick.
    const float middle = std::floor((fFrame.top + fFrame.bottom) / 2);
    const float left = fFrame.left + 4;
    for (int32 step = 0; step < 7; step++) {
        const auto x = static_cast<float>(step);
        const float y = step < 3 ? x : 4 - x;
        fMenu->FillRect(BRect(left + x, middle + y - 1, left + x, middle + y));
    }
}

void BMenuItem::DrawShortcut()
{
    const std::string text = KeyText();
    if (text.empty()) {
        return;
    }
    const float width = std::ceil(fMenu->StringWidth(text.c_str()));
    const float right = fFrame.right - fMenu->fMargins.right;
    fMenu->DrawString(text.c_str(),
                      BPoint(right + 1 - width, ContentLocation().y + fMenu->fFontAscent));
}

void BMenuItem::DrawSubmenuArrow()
{
    const rgb_color color = CanWork() ? kits::look::kOutline : kits::look::kShadow;
    const BRect area(fFrame.right - 13, fFrame.top, fFrame.right - 3, fFrame.bottom);
    kits::look::ArrowHead(fMenu, area, kits::look::Arrow::kRight, 4, color);
}

void BMenuItem::WillChange()
{
    if (fMenu != nullptr) {
        fMenu->WillChange();
    }
}

void BMenuItem::Changed()
{
    if (fMenu != nullptr) {
        fMenu->InvalidateItem(this);
    }
}

BSeparatorItem::BSeparatorItem() : BMenuItem("", nullptr)
{
    BMenuItem::SetEnabled(false);
}

void BSeparatorItem::SetEnabled(bool) {}

void BSeparatorItem::GetContentSize(float* width, float* height)
{
    const BRect& margins = Menu()->fMargins;
    *width = 2;
    *height = kSeparatorHeight - margins.top - margins.bottom;
}

void BSeparatorItem::Draw()
{
    const BRect frame = Frame();
    const float y = std::floor((frame.top + frame.bottom) / 2);
    const bool isColumn = Menu()->Layout() == B_ITEMS_IN_COLUMN;
    if (isColumn) {
        kits::look::Fill(Menu(), BRect(frame.left + 1, y, frame.right - 1, y), kits::look::kShadow);
        kits::look::Fill(Menu(), BRect(frame.left + 1, y + 1, frame.right - 1, y + 1),
                         kits::look::kShine);
    }
}
