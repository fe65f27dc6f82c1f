#pragma once

class BMessage;
class BMenuBar;
class BMenuItem;
class BWindow;

namespace kits {

/// What a window asks of its key menu bar. Thread: the window's.
class MenuBarAccess
{
public:
    /// Works the menu item whose shortcut the key is. True when there is such an item, also when it
    /// is disabled or the key is a repeat or came early and nothing happens: no view may get the
    /// key then.
    static bool InvokeShortcut(BWindow* window, BMessage* key);
    /// Opens the bar's first menu, for F10 and for Alt pressed alone. False without a bar or
    /// without items.
    static bool OpenByKey(BWindow* window);
    /// Closes the menus that are open, when the window is hidden or loses the keyboard.
    static void CloseMenus(BWindow* window);
};

} // namespace kits
