#include "prefs/ExtrasOptionsView.h"

#include "prefs/SwitchList.h"
#include "settings/Numbers.h"
#include "settings/Preferences.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <ScrollView.h>

#include <string>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};

struct Extra
{
    const char* name;
    const char* label;
    bool Preferences::*value;
};

// From top to bottom: the page's boxes, each with the preference that it is.
const Extra kExtras[] = {
    {"ReadableSizes", "Show Sizes in KiB, MiB and GiB?", &Preferences::showsReadableSizes},
    {"HideDotNames", "Hide Names That Begin with a Dot?", &Preferences::hidesDotNames},
    {"SortByColumns", "Sort Rows by the Columns Clicked?", &Preferences::sortsByColumns},
    {"KeepAllInCopies", "Keep Times, Permissions and Links in Copies?",
     &Preferences::keepsAllInCopies},
    {"MoveByRenaming", "Move within a Volume by Renaming?", &Preferences::movesByRenaming},
};

constexpr int32 kFontSizes[] = {9, 10, 11, 12, 13, 14, 16, 18, 20, 24, 30, 36};

} // namespace

ExtrasOptionsView::ExtrasOptionsView(BRect frame)
    : BView(frame, "Extras", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
    BRect inside = Bounds();
    inside.left = frame.left; // as far from the page's side as the page is from the tabs'
    inside.right -= B_V_SCROLL_BAR_WIDTH + 1;
    auto* list = new SwitchList(inside);
    for (const Extra& extra : kExtras) {
        fBoxes.push_back(list->AddSwitch(extra.name, extra.label));
    }
    AddFontSizes(list);
    AddChild(new BScrollView("ExtrasScroll", list, B_FOLLOW_ALL_SIDES, 0, false, true,
                             B_NO_BORDER)); // adopted
}

void ExtrasOptionsView::AddFontSizes(SwitchList* list)
{
    fFontSizes = new BPopUpMenu("");
    for (const int32 size : kFontSizes) {
        fFontSizes->AddItem(new BMenuItem(std::to_string(size).c_str(), nullptr));
    }
    list->AddMenu("FontSize", "Font Size of Rows", fFontSizes);
}

void ExtrasOptionsView::SetTo(const Preferences& preferences)
{
    auto box = fBoxes.begin();
    for (const Extra& extra : kExtras) {
        (*box++)->SetValue(preferences.*extra.value ? B_CONTROL_ON : B_CONTROL_OFF);
    }
    // One that somebody wrote into the settings stays until another is chosen.
    const std::string size = std::to_string(preferences.fontSize);
    BMenuItem* item = fFontSizes->FindItem(size.c_str());
    if (item == nullptr) {
        item = new BMenuItem(size.c_str(), nullptr);
        fFontSizes->AddItem(item);
    }
    item->SetMarked(true);
}

void ExtrasOptionsView::GetSwitches(Preferences* preferences) const
{
    auto box = fBoxes.begin();
    for (const Extra& extra : kExtras) {
        preferences->*extra.value = (*box++)->Value() != B_CONTROL_OFF;
    }
    if (const BMenuItem* item = fFontSizes->FindMarked()) {
        preferences->fontSize = atoi(item->Label());
    }
}

} // namespace norvane
