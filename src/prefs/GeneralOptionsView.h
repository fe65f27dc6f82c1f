#pragma once

#include <Rect.h>
#include <View.h>

#include <string>

class BCheckBox;
class BMenuField;
class BPopUpMenu;

namespace norvane {

struct Preferences;

/// The page "General" of the preferences window: the format of dates, and what panes show.
///
/// A format that is chosen goes to the window as a kDateFormatChosen.
class GeneralOptionsView : public BView
{
public:
    /// Nothing is chosen or marked yet.
    explicit GeneralOptionsView(BRect frame);

    /// Marks and sets what the preferences have. A format that is none of the menu's leaves no item
    /// marked.
    void SetTo(const Preferences& preferences);
    /// Gives the switches as the boxes have them; the format stays as it is.
    void GetSwitches(Preferences* preferences) const;
    /// Gives the focus to the first control.
    void FocusFirst();

private:
    void AddDateFormats(BRect frame);
    BCheckBox* AddSwitch(BRect frame, float top, const char* name, const char* label);

    BPopUpMenu* fFormats = nullptr; // the field's
    BMenuField* fFormatField = nullptr;
    BCheckBox* fProgress = nullptr;
    BCheckBox* fHeader = nullptr;
    BCheckBox* fFooter = nullptr;
};

} // namespace norvane
