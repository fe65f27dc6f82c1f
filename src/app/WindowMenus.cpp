#include "MessageCodes.h"
#include "app/MenuTable.h"
#include "app/NorvaneWindow.h"

#include <AppDefs.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>

namespace norvane {

namespace {

BMenu* BuildMenu(const MenuColumn& column, BHandler* target)
{
    BMenu* menu = new BMenu(column.label);
    for (const MenuLine& line : column.lines) {
        if (line.label == nullptr) {
            menu->AddSeparatorItem();
            continue;
        }
        menu->AddItem(new BMenuItem(line.label, new BMessage(line.what), line.shortcut,
                                    line.modifiers)); // adopted
    }
    menu->SetTargetForItems(target);
    return menu;
}

} // namespace

void NorvaneWindow::CreateMenus()
{
    BMenuBar* bar = new BMenuBar(BRect(0, 0, 0, 0), "MenuBar");
    for (const MenuColumn& column : MainMenus()) {
        fAddOnsMenu = BuildMenu(column, this); // the last one
        bar->AddItem(fAddOnsMenu);
    }
    AddChild(bar);
    FindAddOns();
    // What every desktop offers without a menu; text fields take these keys themselves.
    AddShortcut('c', 0, new BMessage(B_COPY));
    AddShortcut('x', 0, new BMessage(B_CUT));
    AddShortcut('v', 0, new BMessage(B_PASTE));
    AddShortcut('a', 0, new BMessage(B_SELECT_ALL));
    AddShortcut('h', 0, new BMessage(kShowHidden));
}

} // namespace norvane
