#pragma once

#include <Menu.h>

/// A menu that hangs on no bar: one choice of several, as a BMenuField shows it.
///
/// An item without a message can be chosen too while the menu is in radio mode: it is marked then.
class BPopUpMenu : public BMenu
{
public:
    /// Both modes are on unless told otherwise: choosing an item marks it and it alone, and the
    /// marked item's label stands where the menu hangs. `labelFromMarked` brings `radioMode` along.
    explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true,
                        menu_layout layout = B_ITEMS_IN_COLUMN);
    ~BPopUpMenu() override;
};
