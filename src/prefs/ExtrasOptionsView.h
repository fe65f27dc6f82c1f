#pragma once

#include <Rect.h>
#include <View.h>

#include <vector>

class BCheckBox;
class BPopUpMenu;

namespace norvane {

struct Preferences;
class SwitchList;

/// The page "Extras" of the preferences window: what people expect of other file managers. Each is
/// off until it is chosen, and the letters have the size they always had. They scroll where the
/// page is too low for all.
class ExtrasOptionsView : public BView
{
public:
    /// All boxes are off.
    explicit ExtrasOptionsView(BRect frame);

    /// Sets the boxes as the preferences are, and gives what the boxes have.
    void SetTo(const Preferences& preferences);
    void GetSwitches(Preferences* preferences) const;

private:
    void AddFontSizes(SwitchList* list);

    std::vector<BCheckBox*> fBoxes;   // in the list of switches
    BPopUpMenu* fFontSizes = nullptr; // its field's
};

} // namespace norvane
