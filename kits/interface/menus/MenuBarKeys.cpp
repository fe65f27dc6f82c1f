#include "MenuBarAccess.h"

#include "interface/graphics/Look.h"
#include "MenuSession.h"
#include "interface/views/Shortcut.h"

#include <MenuBar.h>
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

bool MenuBarAccess::InvokeShortcut(BWindow* window, BMessage* key)
{
    const BMenuBar* bar = window->KeyMenuBar();
    if (bar == nullptr) {
        return false;
    }
    ShortcutSearch search{*key};
    search.Walk(*bar);
    if (search.best == nullptr) {
        return false;
    }
    if (look::IsFreshKey(key)) {
        search.best->Invoke();
    }
    return true;
}

bool MenuBarAccess::OpenByKey(BWindow* window)
{
    BMenuBar* bar = window->KeyMenuBar();
    if (bar == nullptr || bar->CountItems() == 0) {
        return false;
    }
    bar->fSession = std::make_unique<MenuSession>(*bar);
    bar->fSession->StartByKey();
    return true;
}

void MenuBarAccess::CloseMenus(BWindow* window)
{
    BMenuBar* bar = window->KeyMenuBar();
    if (bar != nullptr && bar->fSession) {
        bar->fSession->Cancel();
    }
}

} // namespace kits
