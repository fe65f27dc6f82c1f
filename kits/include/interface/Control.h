#pragma once

#include <Invoker.h>
#include <View.h>

#include <string>

/// The base of everything a person sets or presses: a value, a label, a message and its target.
///
/// Thread: call with the window locked once the control is in one.
/// Ownership: adopts its message. The target is the window unless another was set before.
class BControl : public BView, public BInvoker
{
public:
    /// Makes an enabled control of value 0. A null label is the empty one.
    BControl(BRect frame, const char* name, const char* label, BMessage* message,
             uint32 resizingMode, uint32 flags);
    ~BControl() override;

    // BView; BControl's own virtual functions follow in the platform's order
    void Describe(BViewDescription* description) const override;
    void WindowActivated(bool active) override;
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MakeFocus(bool focused = true) override;
    void KeyDown(const char* bytes, int32 byteCount) override;

    /// Sets the text shown, null for none, and draws the control again.
    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }
    /// Sets the value and draws the control again when it differs.
    virtual void SetValue(int32 value);
    int32 Value() const { return fValue; }
    /// A disabled control is drawn dimmed, takes no input and leaves the Tab order.
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const { return fIsEnabled; }

    /// Sends a copy of `message` (null: the control's own) with "when", "source" and "be:value".
    /// Errors: B_BAD_VALUE without a message.
    status_t Invoke(BMessage* message = nullptr) override;

protected:
    /// Whether a person presses the control now; set by those that follow the mouse.
    bool IsTracking() const { return fIsTracking; }
    void SetTracking(bool tracking) { fIsTracking = tracking; }

private:
    std::string fLabel;
    int32 fValue = B_CONTROL_OFF;
    uint32 fHiddenFlags = 0; // those of the Tab order, while disabled
    bool fIsEnabled = true;
    bool fIsTracking = false;
};
