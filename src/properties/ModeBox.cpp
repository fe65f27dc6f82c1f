#include "properties/ModeBox.h"

#include "MessageCodes.h"
#include "properties/PropertiesPage.h"

#include <Message.h>
#include <ViewDescription.h>

#include <cmath>

namespace norvane {

namespace {

// The box, as check boxes have it: its side, and the bar in it that stands for "some of them".
constexpr float kBox = 12;
constexpr float kBarInset = 3;
constexpr rgb_color kBar = {0, 0, 0, 255};
constexpr rgb_color kDisabledBar = {128, 128, 128, 255};

} // namespace

ModeBox::ModeBox(BRect frame, const char* name, const char* label, const char* spoken)
    : BCheckBox(frame, name, label, new BMessage(kModeTouched)), fSpoken(spoken)
{
}

void ModeBox::SetTo(State state)
{
    fFirst = state;
    Become(state);
}

void ModeBox::Become(State state)
{
    fNow = state;
    SetValue(state == State::kOn ? B_CONTROL_ON : B_CONTROL_OFF);
    if (Window() != nullptr) {
        Invalidate(); // the bar is no value
    }
}

ModeBox::State ModeBox::Next() const
{
    if (fNow == State::kOn) {
        return State::kOff;
    }
    return fNow == State::kOff && fFirst == State::kMixed ? State::kMixed : State::kOn;
}

status_t ModeBox::Invoke(BMessage* message)
{
    Become(Next());
    return BCheckBox::Invoke(message);
}

void ModeBox::Describe(BViewDescription* description) const
{
    BCheckBox::Describe(description);
    description->name = fSpoken;
    if (fNow == State::kMixed) {
        description->value = "mixed";
    }
}

void ModeBox::MakeFocus(bool focused)
{
    BCheckBox::MakeFocus(focused);
    if (auto* page = dynamic_cast<PropertiesPage*>(Parent()); focused && page != nullptr) {
        page->Reveal(Frame());
    }
}

void ModeBox::Draw(BRect updateRect)
{
    BCheckBox::Draw(updateRect);
    if (fNow != State::kMixed) {
        return;
    }
    const float middle = std::floor((Bounds().Height() - kBox) / 2) + kBox / 2;
    SetHighColor(IsEnabled() ? kBar : kDisabledBar);
    FillRect(BRect(kBarInset, middle - 1, kBox - kBarInset, middle + 1));
}

} // namespace norvane
