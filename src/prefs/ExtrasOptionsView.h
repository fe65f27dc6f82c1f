#pragma once

#include <Rect.h>
#include <View.h>

#include <vector>

class BCheckBox;

namespace norvane {

struct Preferences;

/// The page "Extras" of the preferences window: what people expect of other file managers. Each is
/// off until it is chosen. They scroll where the page is too low for all.
class ExtrasOptionsView : public BView
{
public:
    /// All boxes are off.
    explicit ExtrasOptionsView(BRect frame);

    /// Sets the boxes as the preferences are, and gives what the boxes have.
    void SetTo(const Preferences& preferences);
    void GetSwitches(Preferences* preferences) const;

private:
    std::vector<BCheckBox*> fBoxes; // in the list of switches
};

} // namespace norvane
