#include <PopUpMenu.h>

BPopUpMenu::BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked, menu_layout layout)
    : BMenu(name, layout)
{
    SetRadioMode(radioMode);
    if (labelFromMarked) {
        SetLabelFromMarked(true);
    }
}

BPopUpMenu::~BPopUpMenu() = default;
