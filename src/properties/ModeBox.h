#pragma once

#include <CheckBox.h>

namespace norvane {

/// A check box for what several entries may have, or only some of them.
///
/// One that begins mixed is on, off and mixed again by turns; any other is on and off. What it
/// tells its window of is a kModeTouched.
class ModeBox : public BCheckBox
{
public:
    enum class State : uint8 { kOff, kOn, kMixed };

    /// `spoken`: what assistive programs call it.
    ModeBox(BRect frame, const char* name, const char* label, const char* spoken);

    /// Sets how it begins.
    void SetTo(State state);
    State Now() const { return fNow; }
    /// Whether it is as it began.
    bool IsUntouched() const { return fNow == fFirst; }

    // BControl
    void Describe(BViewDescription* description) const override;
    status_t Invoke(BMessage* message = nullptr) override;

    // BView
    void MakeFocus(bool focused = true) override;
    void Draw(BRect updateRect) override;

private:
    State Next() const;
    void Become(State state);

    const char* const fSpoken;
    State fFirst = State::kOff;
    State fNow = State::kOff;
};

} // namespace norvane
