#include "MenuBarKeys.h"

#include "MenuSession.h"
#include "interface/views/Look.h"
#include "interface/views/Shortcut.h"
#include "interface/views/WindowState.h"

#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <Window.h>

namespace kits {

namespace {

// The item that fits a key best, in the menu and all below it.
struct ShortcutSearch
{
    const BMessage& key;
    BMenuItem* best = nullptr;
    int32 bestPlace = -1;

    void Walk(const BMenu& menu)
    {
        for (int32 i = 0; i < menu.CountItems(); i++) {
            BMenuItem* item = menu.ItemAt(i);
            uint32 modifiers = 0;
            const char shortcut = item->Shortcut(&modifiers);
            const int32 place = MatchShortcut(key, shortcut, modifiers);
            if (place >= 0 && (best == nullptr || place < bestPlace)) {
                best = item;
                bestPlace = place;
            }
            if (item->Submenu() != nullptr) {
                Walk(*item->Submenu());
            }
        }
    }
};

} // namespace

bool MenuBarKeys::InvokeShortcut(const BMessage& key)
{
    ShortcutSearch search{key};
    search.Walk(fBar);
    if (search.best == nullptr) {
        return false;
    }
    if (look::IsFreshKey(&key)) {
        search.best->Invoke();
    }
    return true;
}

bool MenuBarKeys::OpenByKey()
{
    if (fBar.CountItems() == 0) {
        return false;
    }
    fBar.NewSession()->StartByKey(fBar);
    return true;
}

const BView& MenuBarKeys::View() const
{
    return fBar;
}

} // namespace kits

// Defined here since windows know no menus.
void BWindow::SetKeyMenuBar(BMenuBar* menuBar)
{
    fState->keyMenus = menuBar != nullptr ? menuBar->fKeys.get() : nullptr;
}
