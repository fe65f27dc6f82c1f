#pragma once

#include <Menu.h>

#include <memory>

class BWindow;

/// A menu that hangs on no bar: one choice of several, as a BMenuField shows it, or what can be
/// done with the thing that a person points at.
///
/// An item without a message can be chosen too while the menu is in radio mode: it is marked then.
class BPopUpMenu : public BMenu
{
public:
    /// Both modes are on unless told otherwise: choosing an item marks it and it alone, and the
    /// marked item's label stands where the menu hangs. `labelFromMarked` brings `radioMode` along.
    explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true,
                        menu_layout layout = B_ITEMS_IN_COLUMN);
    /// Takes the menu off the screen, if it is there: a Go() that waits returns null.
    ~BPopUpMenu() override;

    /// Opens the menu with its left top at `where`, shifted until the screen has room for it, and
    /// waits until a person has chosen an item, which is returned, or left it: null. With
    /// `deliversMessage` the item is invoked, too, as one of a bar is: what it does then is done
    /// before it is returned; without a target it sends to the window. With `openAnyway` the menu
    /// opens though no button is held, and stays open after a click; else it does not open, and
    /// closes when the button is released. One that a key opened has its first item current. With
    /// `async` nothing is waited for, and null returned; what is chosen can only be invoked then.
    ///
    /// While it waits the window goes on painting and others may lock it, but it handles nothing
    /// but what the menu needs: messages wait in their order. A request to quit, the focus that
    /// goes and the end of the program close the menu.
    ///
    /// Thread: a window's own, whose menu it becomes; on any other nothing is opened. Units: screen
    /// units. Errors: null also for a menu without items, and one that is open already.
    BMenuItem* Go(BPoint where, bool deliversMessage = false, bool openAnyway = false,
                  bool async = false);
    /// The same; a button that is released in `clickToOpenRect` (screen units) leaves the menu
    /// open.
    BMenuItem* Go(BPoint where, bool deliversMessage, bool openAnyway, BRect clickToOpenRect,
                  bool async = false);
    /// Has the menu delete itself when an asynchronous Go() is over, also one that opened nothing.
    void SetAsyncAutoDestruct(bool on) { fIsAutoDestruct = on; }
    /// What SetAsyncAutoDestruct() set; false at first.
    bool AsyncAutoDestruct() const { return fIsAutoDestruct; }

private:
    struct Waiting;

    BMenuItem* GoAsync(BWindow& window, BPoint where, bool deliversMessage, bool openAnyway,
                       BRect clickToOpen);
    BMenuItem* GoSync(BWindow& window, BPoint where, bool deliversMessage, bool openAnyway,
                      BRect clickToOpen);
    bool MayOpen(BWindow* window, bool openAnyway) const;
    std::shared_ptr<kits::MenuSession> NewSession(BWindow& window);

    std::shared_ptr<kits::MenuSession> fSession; // of the last Go()
    bool fIsAutoDestruct = false;
    bool fDeletesItself = false; // at the end of what fSession shows
};
