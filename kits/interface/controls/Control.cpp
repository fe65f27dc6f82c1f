#include <Control.h>

#include "interface/views/Look.h"

#include <Message.h>
#include <OS.h>
#include <ViewDescription.h>
#include <Window.h>

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message,
                   uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags), BInvoker(message, nullptr),
      fLabel(label != nullptr ? label : "")
{
}

BControl::~BControl() = default;

void BControl::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (IsFocus()) {
        Invalidate();
    }
}

void BControl::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
        SetLowColor(ViewColor());
    }
    if (!Messenger().IsValid()) {
        SetTarget(Window());
    }
}

void BControl::DetachedFromWindow()
{
    fIsTracking = false;
    BView::DetachedFromWindow();
}

void BControl::MakeFocus(bool focused)
{
    if (focused == IsFocus() || (focused && !fIsEnabled)) {
        return;
    }
    BView::MakeFocus(focused);
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BControl::KeyDown(const char* bytes, int32 byteCount)
{
    const bool isPress = byteCount == 1 && (bytes[0] == B_SPACE || bytes[0] == B_ENTER);
    if (!isPress) {
        BView::KeyDown(bytes, byteCount);
        return;
    }
    if (fIsEnabled && kits::look::MayAnswer(this)) {
        SetValue(Value() == B_CONTROL_OFF ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
    }
}

void BControl::SetLabel(const char* label)
{
    const char* shown = label != nullptr ? label : "";
    if (fLabel == shown) {
        return;
    }
    fLabel = shown;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BControl::SetValue(int32 value)
{
    if (fValue == value) {
        return;
    }
    fValue = value;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BControl::SetEnabled(bool enabled)
{
    if (fIsEnabled == enabled) {
        return;
    }
    fIsEnabled = enabled;
    if (enabled) {
        SetFlags(Flags() | fHiddenFlags);
    } else {
        fHiddenFlags = Flags() & (B_NAVIGABLE | B_NAVIGABLE_JUMP);
        if (IsFocus()) {
            BView::MakeFocus(false);
        }
        SetFlags(Flags() & ~fHiddenFlags);
    }
    if (Window() != nullptr) {
        Invalidate();
    }
}

status_t BControl::Invoke(BMessage* message)
{
    const BMessage* source = message != nullptr ? message : Message();
    if (source == nullptr) {
        return B_BAD_VALUE;
    }
    BMessage copy(*source);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", this);
    copy.AddInt32("be:value", fValue);
    return BInvoker::Invoke(&copy);
}

void BControl::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kCheckBox;
    description->name = Label();
    if (!IsEnabled()) {
        description->states |= BViewDescription::kDisabled;
    }
    if (Value() != B_CONTROL_OFF) {
        description->states |= BViewDescription::kMarked;
    }
}
