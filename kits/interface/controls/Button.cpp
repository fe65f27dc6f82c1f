#include <Button.h>

#include "interface/views/Look.h"
#include "interface/views/Ticker.h"
#include "interface/views/WindowAccess.h"
#include "interface/views/WindowKeys.h"
#include "interface/views/WindowState.h"

#include <Font.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kDefaultMark = 3;
// How long a button that was pressed by a key looks pressed.
constexpr bigtime_t kFlash = 100'000;

constexpr rgb_color kDisabledOutline = {168, 168, 168, 255};
constexpr rgb_color kPressedFace = {168, 168, 168, 255};
constexpr rgb_color kFace = {232, 232, 232, 255};
constexpr rgb_color kMark = {188, 188, 188, 255};

// The next or previous button of the window gets the focus.
void FocusNeighbour(const BButton* button, bool isForward)
{
    if (button->Window() != nullptr) {
        kits::MoveFocus(kits::WindowAccess::State(*button->Window()), isForward,
                        kits::FocusOn::kButtons);
    }
}

} // namespace

BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message,
                 uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags | B_FULL_UPDATE_ON_RESIZE)
{
}

BButton::~BButton() = default;

// BView

void BButton::AttachedToWindow()
{
    BControl::AttachedToWindow();
    if (fIsDefault) {
        Window()->SetDefaultButton(this);
    }
}

void BButton::DetachedFromWindow()
{
    fFlash.reset();
    BControl::DetachedFromWindow();
}

void BButton::MouseDown(BPoint)
{
    const BMessage* press = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const int32 button = press != nullptr ? press->GetInt32("button", B_PRIMARY_MOUSE_BUTTON)
                                          : int32(B_PRIMARY_MOUSE_BUTTON);
    if (!IsEnabled() || button != B_PRIMARY_MOUSE_BUTTON || !kits::look::MayAnswer(this)) {
        return;
    }
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
    SetTracking(true);
    SetValue(B_CONTROL_ON);
}

void BButton::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    BControl::MouseMoved(where, transit, dragged);
    if (IsTracking()) {
        SetValue(Bounds().Contains(where) ? B_CONTROL_ON : B_CONTROL_OFF);
    }
}

void BButton::MouseUp(BPoint where)
{
    BControl::MouseUp(where);
    if (!IsTracking()) {
        return;
    }
    SetTracking(false);
    const bool isPressed = IsEnabled() && Bounds().Contains(where);
    SetValue(B_CONTROL_OFF);
    if (isPressed) {
        BControl::Invoke();
    }
}

void BButton::KeyDown(const char* bytes, int32 byteCount)
{
    switch (byteCount == 1 ? bytes[0] : '\0') {
    case B_SPACE:
    case B_ENTER:
        if (kits::look::MayAnswer(this)) {
            Invoke();
        }
        break;
    case B_LEFT_ARROW:
    case B_UP_ARROW:
        FocusNeighbour(this, false);
        break;
    case B_RIGHT_ARROW:
    case B_DOWN_ARROW:
        FocusNeighbour(this, true);
        break;
    default:
        BControl::KeyDown(bytes, byteCount);
    }
}

void BButton::MessageReceived(BMessage* message)
{
    if (message->what != kits::kTick) {
        BControl::MessageReceived(message);
        return;
    }
    fFlash.reset();
    if (!IsTracking()) {
        SetValue(B_CONTROL_OFF);
    }
}

void BButton::GetPreferredSize(float* width, float* height)
{
    font_height font;
    GetFontHeight(&font);
    *width = std::max(75.0f, std::ceil(StringWidth(Label())) + 20);
    *height = font.ascent + font.descent + 9;
    if (fIsDefault) {
        *width += 2 * kDefaultMark;
        *height += 2 * kDefaultMark;
    }
}

void BButton::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BButton::MakeDefault(bool isDefault)
{
    if (isDefault == fIsDefault) {
        return;
    }
    fIsDefault = isDefault;
    const float growth = isDefault ? kDefaultMark : -kDefaultMark;
    MoveBy(-growth, -growth);
    ResizeBy(2 * growth, 2 * growth);
    if (Window() == nullptr) {
        return;
    }
    Invalidate();
    BButton* current = Window()->DefaultButton();
    if (isDefault && current != this) {
        Window()->SetDefaultButton(this);
    } else if (!isDefault && current == this) {
        Window()->SetDefaultButton(nullptr);
    }
}

// BControl

void BButton::SetLabel(const char* label)
{
    BControl::SetLabel(label);
}

status_t BButton::Invoke(BMessage* message)
{
    if (!IsEnabled()) {
        return B_NOT_ALLOWED;
    }
    if (Window() != nullptr && !fFlash) {
        // A key's press is seen too. The message is not kept waiting for it.
        SetValue(B_CONTROL_ON);
        fFlash = std::make_unique<kits::Ticker>(BMessenger(this), kFlash, kFlash);
    }
    return BControl::Invoke(message);
}

// Drawing

void BButton::Draw(BRect)
{
    const bool isDown = Value() != B_CONTROL_OFF;
    const BRect face = Face();
    if (fIsDefault) {
        DrawDefaultMark();
    }
    DrawFace(face, isDown);
    DrawLabel(face, isDown);
}

BRect BButton::Face() const
{
    return fIsDefault ? Bounds().InsetByCopy(kDefaultMark, kDefaultMark) : Bounds();
}

// A border with its corners left out, which makes it look rounded at every scale.
void BButton::DrawOutline(BRect frame, rgb_color color)
{
    SetHighColor(color);
    StrokeLine(BPoint(frame.left + 1, frame.top), BPoint(frame.right - 1, frame.top));
    StrokeLine(BPoint(frame.left + 1, frame.bottom), BPoint(frame.right - 1, frame.bottom));
    StrokeLine(BPoint(frame.left, frame.top + 1), BPoint(frame.left, frame.bottom - 1));
    StrokeLine(BPoint(frame.right, frame.top + 1), BPoint(frame.right, frame.bottom - 1));
}

void BButton::DrawDefaultMark()
{
    const BRect bounds = Bounds();
    kits::look::Fill(this, bounds.InsetByCopy(1, 1), IsEnabled() ? kMark : kits::look::kGround);
    DrawOutline(bounds, IsEnabled() ? kits::look::kOutline : kDisabledOutline);
}

void BButton::DrawFace(BRect face, bool isDown)
{
    const bool showsFocus = kits::look::ShowsFocus(this);
    const BRect inside = face.InsetByCopy(1, 1);
    kits::look::Fill(this, inside, isDown ? kPressedFace : kFace);
    if (isDown) {
        kits::look::Frame(this, inside, kits::look::kOutline, kits::look::kSoftShadow);
    } else if (IsEnabled()) {
        kits::look::RaisedFrame(this, inside);
        kits::look::Frame(this, inside.InsetByCopy(1, 1), kits::look::kShine,
                          kits::look::kSoftShadow);
    } else {
        kits::look::Frame(this, inside, kits::look::kShine, kits::look::kSoftShadow);
    }
    DrawOutline(face, IsEnabled() ? kits::look::kOutline : kDisabledOutline);
    if (showsFocus) {
        DrawOutline(face, kits::look::kFocus);
        SetHighColor(kits::look::kFocus);
        StrokeRect(inside);
    }
}

void BButton::DrawLabel(BRect face, bool isDown)
{
    BFont font;
    GetFont(&font);
    BString label(Label());
    font.TruncateString(&label, B_TRUNCATE_END, face.Width() - 7);
    SetLowColor(isDown ? kPressedFace : kFace);
    SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    kits::look::CenteredText(this, face, label.String());
}

void BButton::Describe(BViewDescription* description) const
{
    BControl::Describe(description);
    description->role = BViewDescription::Role::kButton;
    description->states &= ~uint32{BViewDescription::kMarked};
    if (fIsDefault) {
        description->states |= BViewDescription::kDefault;
    }
}

// Defined here since windows know no buttons.

void BWindow::SetDefaultButton(BButton* button)
{
    auto* old = DefaultButton();
    if (button == old) {
        return;
    }
    fState->defaultButton = button;
    if (old != nullptr) {
        old->MakeDefault(false);
    }
    if (button != nullptr) {
        button->MakeDefault(true);
    }
}

BButton* BWindow::DefaultButton() const
{
    return static_cast<BButton*>(fState->defaultButton);
}
