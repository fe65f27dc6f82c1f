#pragma once

class BMenuBar;
class BMessage;
class BView;

namespace kits {

/// What a window asks of its key menu bar. Thread: the window's.
class KeyMenus
{
public:
    virtual ~KeyMenus() = default;
    /// Works the menu item whose shortcut the key is. True when there is such an item, also when it
    /// is disabled or the key is a repeat or came early and nothing happens: no view may get the
    /// key then.
    virtual bool InvokeShortcut(const BMessage& key) = 0;
    /// Opens the bar's first menu, for F10 and for Alt pressed alone. False without items.
    virtual bool OpenByKey() = 0;
    virtual BMenuBar* Bar() = 0;
    virtual const BView& View() const = 0;
};

} // namespace kits
