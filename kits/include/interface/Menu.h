#pragma once

#include <List.h>
#include <MenuItem.h>
#include <View.h>

#include <functional>

namespace kits {
class MenuSession;
} // namespace kits

/// Which way a menu's items follow each other.
enum menu_layout {
    B_ITEMS_IN_ROW = 0,
    B_ITEMS_IN_COLUMN,
};

/// A list of items that opens over the window; the view that draws them.
///
/// A menu that changes while it is open closes, with all that are open with it: what is chosen is
/// what was seen. Thread: call with the window locked once the menu hangs in one, through a bar or
/// while it is open. Ownership: adopts its items.
class BMenu : public BView
{
public:
    /// The name of a submenu is the label of the item that it hangs on.
    explicit BMenu(const char* name, menu_layout layout = B_ITEMS_IN_COLUMN);
    /// Deletes the items and their submenus.
    ~BMenu() override;

    /// Adds an item at the end or at `index`; false when it is in a menu already or the index is
    /// outside.
    bool AddItem(BMenuItem* item);
    bool AddItem(BMenuItem* item, int32 index);
    /// Adds a submenu with an item of its own.
    bool AddItem(BMenu* submenu);
    bool AddItem(BMenu* submenu, int32 index);
    /// Adds the BMenuItems in `items` from `index` on. False when the index is outside, or at the
    /// first that is in a menu already; those before it are in then.
    bool AddList(BList* items, int32 index);
    /// Adds a line between items at the end.
    bool AddSeparatorItem();
    /// Takes an item out; the caller deletes it. False (null) when it is not there.
    bool RemoveItem(BMenuItem* item);
    BMenuItem* RemoveItem(int32 index);
    /// Takes the submenu out with its item, which is deleted; the caller deletes the submenu.
    bool RemoveItem(BMenu* submenu);
    /// Takes `count` items out from `index` on, fewer at the end. With `deleteItems` they are
    /// deleted, else the caller does. False when there is none at `index`.
    bool RemoveItems(int32 index, int32 count, bool deleteItems = false);

    /// The item at `index`, or its submenu; null when there is none.
    BMenuItem* ItemAt(int32 index) const;
    BMenu* SubmenuAt(int32 index) const;
    /// The number of items, lines between them included.
    int32 CountItems() const;
    /// The index of an item, or of the one with that submenu; -1 when it is not there.
    int32 IndexOf(BMenuItem* item) const;
    int32 IndexOf(BMenu* submenu) const;
    /// Finds the item with that command or label, here or in submenus; null when there is none.
    BMenuItem* FindItem(uint32 command) const;
    BMenuItem* FindItem(const char* label) const;

    /// Sets the target of every item here, not of those in submenus. Errors: those of
    /// BInvoker::SetTarget(); the others have it nevertheless.
    virtual status_t SetTargetForItems(BHandler* handler);
    virtual status_t SetTargetForItems(BMessenger messenger);
    /// Has items take choices or be drawn dimmed, with the item that the menu hangs on.
    virtual void SetEnabled(bool enabled);
    /// In radio mode one item at most is marked, and choosing an item marks it.
    virtual void SetRadioMode(bool radioMode);
    /// Sets whether the letters that items were given by SetTrigger() work; they do unless changed.
    virtual void SetTriggersEnabled(bool enabled);
    /// Sets how wide labels may be; longer ones are shortened. 0, as at first, sets no limit.
    virtual void SetMaxContentWidth(float maxWidth);

    /// Shows the marked item's label as the name of the submenu's own item.
    void SetLabelFromMarked(bool fromMarked);
    /// What SetLabelFromMarked() set.
    bool IsLabelFromMarked() const { return fIsLabelFromMarked; }
    /// False also when a menu above is disabled.
    bool IsEnabled() const;
    /// What the setters above set.
    bool IsRadioMode() const { return fIsRadioMode; }
    bool AreTriggersEnabled() const { return fHasTriggers; }
    float MaxContentWidth() const { return fMaxContentWidth; }
    /// The first item here that is marked, or null.
    BMenuItem* FindMarked() const;
    /// The menu above and the item there that this one hangs on; null for a bar and on its own.
    BMenu* Supermenu() const { return fSupermenu; }
    BMenuItem* Superitem() const { return fSuperitem; }
    /// What was given to the constructor.
    menu_layout Layout() const { return fLayout; }

    // BView
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

protected:
    /// For menus that lie in a window as bars do; `resizeToFit` has the frame follow the items.
    BMenu(BRect frame, const char* name, uint32 resizingMode, uint32 flags, menu_layout layout,
          bool resizeToFit);

    /// Works out the items' frames anew at the next use.
    void InvalidateLayout();
    /// Sets and tells what is left free around each item's content, in view units.
    void SetItemMargins(float left, float top, float right, float bottom);
    void GetItemMargins(float* left, float* top, float* right, float* bottom) const;
    /// Draws what lies behind the items.
    virtual void DrawBackground(BRect updateRect);

private:
    friend class BMenuItem;
    friend class BMenuBar;
    friend class BSeparatorItem;
    friend class kits::MenuSession;

    BWindow* OwnerWindow() const;
    void WillChange();
    void WillChangeBetween(int32 before, int32 after);
    BMenuItem* FindWhere(const std::function<bool(const BMenuItem&)>& fits) const;
    void LayOutItems();
    void LayOutRow();
    void LayOutColumn();
    void ItemMarked(BMenuItem* item);
    void InvalidateItem(BMenuItem* item);
    BMenuItem* ItemUnder(BPoint where) const;
    void SelectItem(BMenuItem* item);

    BList fItems;
    BMenu* fSupermenu = nullptr;           // borrowed
    BMenuItem* fSuperitem = nullptr;       // the item this hangs on; borrowed
    BMenuItem* fSelected = nullptr;        // the item under the pointer or the keys
    kits::MenuSession* fShownBy = nullptr; // while it is open, or its bar has an open menu
    menu_layout fLayout;
    BRect fMargins;
    float fContentWidth = 0;
    float fContentHeight = 0;
    float fFontAscent = 0;
    float fFontHeight = 0;
    float fMaxContentWidth = 0;
    bool fResizesToFit = true;
    bool fIsEnabled = true;
    bool fIsRadioMode = false;
    bool fIsLabelFromMarked = false;
    bool fHasTriggers = true;
    bool fIsLaidOut = false;
};
