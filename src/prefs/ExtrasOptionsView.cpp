#include "prefs/ExtrasOptionsView.h"

#include "settings/Preferences.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kTop = 12;
constexpr float kStep = 20; // from one box to the next
constexpr float kBoxHeight = 19;

struct Extra
{
    const char* name;
    const char* label;
    bool Preferences::*value;
};

const Extra kExtras[] = {
    {"ReadableSizes", "Show Sizes in KiB, MiB and GiB?", &Preferences::showsReadableSizes},
    {"HideDotNames", "Hide Names That Begin with a Dot?", &Preferences::hidesDotNames},
    {"SortByColumns", "Sort Rows by the Columns Clicked?", &Preferences::sortsByColumns},
};

} // namespace

ExtrasOptionsView::ExtrasOptionsView(BRect frame)
    : BView(frame, "Extras", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
    BRect place(frame.left, kTop, frame.right - 10, kTop + kBoxHeight);
    for (const Extra& extra : kExtras) {
        fBoxes.push_back(new BCheckBox(place, extra.name, extra.label, nullptr));
        AddChild(fBoxes.back());
        place.OffsetBy(0, kStep);
    }
}

void ExtrasOptionsView::SetTo(const Preferences& preferences)
{
    auto box = fBoxes.begin();
    for (const Extra& extra : kExtras) {
        (*box++)->SetValue(preferences.*extra.value ? B_CONTROL_ON : B_CONTROL_OFF);
    }
}

void ExtrasOptionsView::GetSwitches(Preferences* preferences) const
{
    auto box = fBoxes.begin();
    for (const Extra& extra : kExtras) {
        preferences->*extra.value = (*box++)->Value() != B_CONTROL_OFF;
    }
}

} // namespace norvane
