#include <CheckBox.h>

#include "interface/views/Look.h"

#include <Font.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kBox = 12; // from edge to edge: 13 units
constexpr float kGap = 7;  // between the box and the label
constexpr float kCross = 3.5f;
constexpr float kCrossPen = 2;
constexpr float kFocusLine = 2; // below the letters

constexpr rgb_color kBoxFace = {255, 255, 255, 255};
constexpr rgb_color kDisabledFace = {232, 232, 232, 255};
constexpr rgb_color kPressedFace = {200, 200, 200, 255};

} // namespace

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
                     uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags | B_FULL_UPDATE_ON_RESIZE)
{
}

BCheckBox::~BCheckBox() = default;

// BView

void BCheckBox::DetachedFromWindow()
{
    fIsPressed = false;
    BControl::DetachedFromWindow();
}

void BCheckBox::MouseDown(BPoint)
{
    const BMessage* press = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const int32 button = press != nullptr ? press->GetInt32("button", B_PRIMARY_MOUSE_BUTTON)
                                          : int32(B_PRIMARY_MOUSE_BUTTON);
    if (!IsEnabled() || button != B_PRIMARY_MOUSE_BUTTON || !kits::look::MayAnswer(this)) {
        return;
    }
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
    SetTracking(true);
    SetPressed(true);
}

void BCheckBox::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    BControl::MouseMoved(where, transit, dragged);
    if (IsTracking()) {
        SetPressed(Bounds().Contains(where));
    }
}

void BCheckBox::MouseUp(BPoint where)
{
    BControl::MouseUp(where);
    if (!IsTracking()) {
        return;
    }
    SetTracking(false);
    SetPressed(false);
    if (IsEnabled() && Bounds().Contains(where)) {
        SetValue(Value() == B_CONTROL_OFF ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
    }
}

void BCheckBox::SetPressed(bool isPressed)
{
    if (isPressed != fIsPressed) {
        fIsPressed = isPressed;
        Invalidate();
    }
}

void BCheckBox::GetPreferredSize(float* width, float* height)
{
    font_height font;
    GetFontHeight(&font);
    const float label = Label()[0] != '\0' ? kGap + std::ceil(StringWidth(Label())) : 0;
    *width = kBox + label + 1;
    *height = std::max(kBox, std::ceil(font.ascent + font.descent) + kFocusLine) + 2;
}

void BCheckBox::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

// Drawing

BRect BCheckBox::BoxFrame() const
{
    const float top = std::floor((Bounds().Height() - kBox) / 2);
    return BRect(0, top, kBox, top + kBox);
}

void BCheckBox::Draw(BRect)
{
    const BRect box = BoxFrame();
    DrawBox(box);
    if (Label()[0] != '\0') {
        DrawLabel(box.right + kGap);
    }
}

void BCheckBox::DrawBox(BRect box)
{
    const rgb_color face = IsEnabled() ? kBoxFace : kDisabledFace;
    kits::look::Fill(this, box.InsetByCopy(1, 1), fIsPressed ? kPressedFace : face);
    kits::look::SunkenFrame(this, box);
    kits::look::Frame(this, box.InsetByCopy(1, 1), kits::look::kOutline, kits::look::kSoftShine);
    if (kits::look::ShowsFocus(this)) {
        SetHighColor(kits::look::kFocus);
        StrokeRect(box);
        StrokeRect(box.InsetByCopy(1, 1));
    }
    if (Value() != B_CONTROL_OFF) {
        const BRect cross = box.InsetByCopy(kCross, kCross);
        SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
        SetPenSize(kCrossPen);
        StrokeLine(cross.LeftTop(), cross.RightBottom());
        StrokeLine(cross.LeftBottom(), cross.RightTop());
        SetPenSize(1);
    }
}

void BCheckBox::DrawLabel(float left)
{
    BFont font;
    GetFont(&font);
    font_height height;
    GetFontHeight(&height);
    BString label(Label());
    font.TruncateString(&label, B_TRUNCATE_END, Bounds().right - left + 1);
    const float spare = Bounds().Height() + 1 - (height.ascent + height.descent);
    // The odd unit is left free below, where boxes that stand close together may overlap.
    const float base = std::floor(std::max(0.0f, spare - 1) / 2) + height.ascent;
    SetLowColor(ViewColor());
    SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    DrawString(label.String(), BPoint(left, base));
    if (kits::look::ShowsFocus(this)) {
        const float line = std::min(base + kFocusLine, Bounds().bottom);
        SetHighColor(kits::look::kFocus);
        StrokeLine(BPoint(left, line), BPoint(left + StringWidth(label.String()) - 1, line));
    }
}
