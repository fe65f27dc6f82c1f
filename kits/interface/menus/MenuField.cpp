#include <MenuField.h>

#include "MenuSession.h"
#include "interface/views/Look.h"

#include <Font.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <String.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr float kLabelGap = 8; // between the label and the field
// From the field's edge to its text: far enough for an open menu to stay off the label.
constexpr float kTextLeft = 9;
constexpr float kArrowPart = 18; // at the field's right end
constexpr float kEdges = 6;      // above and below the text
constexpr float kLeastField = 40;
constexpr int32 kArrowDepth = 4;
constexpr char kOpeningKeys[] = {B_SPACE, B_ENTER, B_UP_ARROW, B_DOWN_ARROW, '\0'};

constexpr rgb_color kDisabledOutline = {168, 168, 168, 255};
constexpr rgb_color kFace = {232, 232, 232, 255};

} // namespace

/// What the menu hangs on: tells its field of changes, and where it is.
class BMenuField::FieldItem : public BMenuItem
{
public:
    FieldItem(BMenuField& field, BMenu* menu) : BMenuItem(menu), fField(field) {}

    void SetLabel(const char* label) override
    {
        BMenuItem::SetLabel(label);
        fField.ItemChanged();
    }
    void SetEnabled(bool enabled) override
    {
        BMenuItem::SetEnabled(enabled);
        fField.ItemChanged();
    }

private:
    BWindow* OwnerWindow() const override { return fField.Window(); }

    BMenuField& fField;
};

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
                       uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FULL_UPDATE_ON_RESIZE),
      fLabel(label != nullptr ? label : ""), fItem(std::make_unique<FieldItem>(*this, menu))
{
    if (!fLabel.empty()) {
        fDivider = std::floor((Bounds().Width() + 1) / 2);
    }
    const BMenuItem* marked = menu->FindMarked();
    if (menu->IsLabelFromMarked() && marked != nullptr) {
        fItem->SetLabel(marked->Label());
    }
    if (!menu->IsEnabled()) {
        fItem->SetEnabled(false);
    }
}

BMenuField::~BMenuField()
{
    if (fSession) {
        fSession->Abandon();
    }
}

// Settings

void BMenuField::SetLabel(const char* label)
{
    fLabel = label != nullptr ? label : "";
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BMenuField::SetEnabled(bool enabled)
{
    if (Menu() != nullptr) {
        Menu()->SetEnabled(enabled);
    }
    fItem->SetEnabled(enabled);
}

bool BMenuField::IsEnabled() const
{
    return fItem->IsEnabled();
}

// The menu's item has another label, or takes choices now or no more.
void BMenuField::ItemChanged()
{
    const bool isEnabled = fItem->IsEnabled();
    if (isEnabled != fLooksEnabled) {
        fLooksEnabled = isEnabled;
        if (isEnabled) {
            SetFlags(Flags() | fHiddenFlags);
        } else {
            fHiddenFlags = Flags() & (B_NAVIGABLE | B_NAVIGABLE_JUMP);
            MakeFocus(false);
            SetFlags(Flags() & ~fHiddenFlags);
        }
    }
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BMenuField::SetAlignment(alignment label)
{
    fAlignment = label;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BMenuField::SetDivider(float divider)
{
    fDivider = std::clamp(std::round(divider), 0.0f, std::max(0.0f, Bounds().Width()));
    if (Window() != nullptr) {
        Invalidate();
    }
}

BMenu* BMenuField::Menu() const
{
    return fItem->Submenu();
}

BMenuItem* BMenuField::MenuItem() const
{
    return fItem.get();
}

// Where things are

float BMenuField::LabelWidth() const
{
    return fLabel.empty() ? 0 : std::ceil(StringWidth(fLabel.c_str())) + kLabelGap;
}

BRect BMenuField::FieldFrame() const
{
    BRect frame = Bounds();
    const float last = std::max(0.0f, frame.Width() - kLeastField);
    frame.left += std::max(fDivider, std::min(LabelWidth(), last));
    return frame;
}

// Where the chosen item's text begins, at its left top.
BPoint BMenuField::TextPlace() const
{
    const BRect field = FieldFrame();
    font_height font;
    GetFontHeight(&font);
    const float spare = field.Height() + 1 - (font.ascent + font.descent);
    return BPoint(field.left + kTextLeft, field.top + std::floor(spare / 2));
}

void BMenuField::GetPreferredSize(float* width, float* height)
{
    font_height font;
    GetFontHeight(&font);
    float widest = StringWidth(fItem->Label());
    for (int32 i = 0; Menu() != nullptr && i < Menu()->CountItems(); i++) {
        widest = std::max(widest, StringWidth(Menu()->ItemAt(i)->Label()));
    }
    *width = std::max(fDivider, LabelWidth()) + kTextLeft + std::ceil(widest) + kArrowPart;
    *height = font.ascent + font.descent + kEdges - 1;
}

void BMenuField::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

// BView

void BMenuField::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
    } else {
        SetViewColor(kits::look::kGround);
    }
    SetLowColor(ViewColor());
    font_height font;
    GetFontHeight(&font);
    const float missing = font.ascent + font.descent + kEdges - 1 - Bounds().Height();
    if (missing > 0) {
        // A frame lower than the font would cut letters off; it grows around its middle.
        MoveBy(0, -std::ceil(missing / 2));
        ResizeBy(0, missing);
    }
}

void BMenuField::DetachedFromWindow()
{
    if (fSession) {
        fSession->Abandon();
    }
    BView::DetachedFromWindow();
}

void BMenuField::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (IsFocus()) {
        Invalidate();
    }
}

void BMenuField::MakeFocus(bool focused)
{
    if (focused == IsFocus() || (focused && !IsEnabled())) {
        return;
    }
    BView::MakeFocus(focused);
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BMenuField::MouseDown(BPoint where)
{
    const BMessage* press = Window()->CurrentMessage();
    const bool isPrimary = press != nullptr && press->GetInt32("button", B_PRIMARY_MOUSE_BUTTON) ==
                                                   int32(B_PRIMARY_MOUSE_BUTTON);
    if (isPrimary && FieldFrame().Contains(where) && kits::look::MayAnswer(this)) {
        Open(press);
    }
}

void BMenuField::KeyDown(const char* bytes, int32 byteCount)
{
    const BMessage* key = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const int32 down = key != nullptr ? key->GetInt32("modifiers", 0) : 0;
    // Bytes up to Space are keys that the window has a use for: Tab, Escape.
    const bool isLetter = byteCount > 0 && static_cast<uint8>(bytes[0]) > B_SPACE;
    const bool opens = byteCount == 1 && std::strchr(kOpeningKeys, bytes[0]) != nullptr;
    if ((!opens && !isLetter) || (down & (B_COMMAND_KEY | B_OPTION_KEY)) != 0) {
        BView::KeyDown(bytes, byteCount);
    } else if (kits::look::MayAnswer(this)) {
        if (opens) {
            Open(nullptr);
        } else {
            ChooseByLetter(bytes);
        }
    }
}

void BMenuField::Open(const BMessage* press)
{
    if (!fItem->CanWork()) {
        return;
    }
    if (fSession) {
        fSession->Abandon();
    }
    const auto session = std::make_shared<kits::MenuSession>(Window());
    fSession = session; // the window's hook for beginning menus may delete this field
    session->StartOver(*fItem, ConvertToScreen(TextPlace()), press);
}

void BMenuField::ChooseByLetter(const char* letter)
{
    if (!fItem->CanWork()) {
        return;
    }
    BMenu* menu = Menu();
    bool isTrigger = false;
    const int32 marked = menu->FindMarked() != nullptr ? menu->IndexOf(menu->FindMarked()) : -1;
    const int32 next = kits::MenuSession::FindByLetter(*menu, marked, letter, &isTrigger);
    if (next >= 0 && next != marked && menu->SubmenuAt(next) == nullptr) {
        menu->ItemAt(next)->Invoke();
    }
}

void BMenuField::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kMenuField;
    if (!fLabel.empty()) {
        description->name = fLabel;
    }
    description->value = fItem->Label();
    if (!IsEnabled()) {
        description->states |= BViewDescription::kDisabled;
    }
}

// Drawing

void BMenuField::Draw(BRect)
{
    const BRect field = FieldFrame();
    DrawField(field);
    if (!fLabel.empty()) {
        DrawLabel(field);
    }
}

void BMenuField::DrawField(BRect field)
{
    const BRect inside = field.InsetByCopy(1, 1);
    SetHighColor(IsEnabled() ? kits::look::kOutline : kDisabledOutline);
    StrokeRect(field);
    kits::look::Fill(this, inside, kFace);
    kits::look::Frame(this, inside, kits::look::kShine,
                      IsEnabled() ? kits::look::kShadow : kits::look::kSoftShadow);
    if (kits::look::ShowsFocus(this)) {
        SetHighColor(kits::look::kFocus);
        StrokeRect(field);
        StrokeRect(inside);
    }
    const BRect arrow(field.right - kArrowPart + 1, field.top, field.right - 2, field.bottom);
    kits::look::ArrowHead(this, arrow, kits::look::Arrow::kDown, kArrowDepth,
                          IsEnabled() ? kits::look::kOutline : kits::look::kShadow);
    BFont font;
    GetFont(&font);
    font_height height;
    GetFontHeight(&height);
    const BPoint place = TextPlace();
    BString text(fItem->Label());
    font.TruncateString(&text, B_TRUNCATE_END, arrow.left - place.x);
    SetLowColor(kFace);
    SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    DrawString(text.String(), BPoint(place.x, place.y + height.ascent));
}

void BMenuField::DrawLabel(BRect field)
{
    BFont font;
    GetFont(&font);
    font_height height;
    GetFontHeight(&height);
    const float room = field.left - kLabelGap;
    BString text(fLabel.c_str());
    font.TruncateString(&text, B_TRUNCATE_END, room);
    const float spare = std::max(0.0f, room - StringWidth(text.String()));
    float left = 0;
    if (fAlignment == B_ALIGN_RIGHT) {
        left = std::floor(spare);
    } else if (fAlignment == B_ALIGN_CENTER) {
        left = std::floor(spare / 2);
    }
    SetLowColor(ViewColor());
    SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    DrawString(text.String(), BPoint(left, TextPlace().y + height.ascent));
}
