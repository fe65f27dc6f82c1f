#pragma once

#include <InterfaceDefs.h>
#include <Invoker.h>
#include <Point.h>
#include <Rect.h>

#include <memory>
#include <string>

class BMenu;
class BWindow;

namespace kits {
class MenuBarKeys;
class MenuSession;
} // namespace kits

/// One line of a menu: a label with a message, or with a menu of its own.
///
/// Ownership: adopts its message and its submenu; a menu adopts its items. One that is deleted
/// leaves its menu.
class BMenuItem : public BInvoker
{
public:
    /// `shortcut` works with the Command key and `modifiers`; letters without regard to case,
    /// B_UP_ARROW and the like for arrow keys; 0 for none.
    BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
    /// Takes the submenu's name as its label.
    explicit BMenuItem(BMenu* submenu, BMessage* message = nullptr);
    ~BMenuItem() override;

    /// Sets the text; the menu is laid out anew.
    virtual void SetLabel(const char* label);
    /// Has the item take choices, or be drawn dimmed.
    virtual void SetEnabled(bool enabled);
    /// Sets the check mark; in a radio menu the other items lose theirs.
    virtual void SetMarked(bool marked);
    /// Sets the letter that works the item while its menu is open; 0 for the first letters of the
    /// label.
    virtual void SetTrigger(char trigger);
    /// Sets the shortcut as the constructor does.
    virtual void SetShortcut(char shortcut, uint32 modifiers);
    /// An extension of the platform. Has a text stand where a shortcut would: that of a key which
    /// works elsewhere, and does nothing here. Null or "" for none; a shortcut stands before it.
    void SetKeyText(const char* text);

    /// Lends the label; "" for a separator.
    const char* Label() const { return fLabel.c_str(); }
    /// False also when the menu around it is disabled.
    bool IsEnabled() const;
    /// What the setters set; `modifiers` may be null.
    bool IsMarked() const { return fIsMarked; }
    char Trigger() const { return fTrigger; }
    char Shortcut(uint32* modifiers = nullptr) const;
    /// The menu that hangs on the item, and the one the item is in; null for none.
    BMenu* Submenu() const { return fSubmenu.get(); }
    BMenu* Menu() const { return fMenu; }
    /// The item's place in its menu.
    BRect Frame() const { return fFrame; }

protected:
    /// The size of what DrawContent() draws.
    virtual void GetContentSize(float* width, float* height);
    /// Shortens the label to at most `maxWidth` units, in the middle. `newLabel` has room for the
    /// label's bytes and four more.
    virtual void TruncateLabel(float maxWidth, char* newLabel);
    /// Draws the label at the menu's pen position.
    virtual void DrawContent();
    /// Draws background, content, mark, shortcut and submenu arrow.
    virtual void Draw();
    /// Is called when the item becomes or stops being the one under the pointer.
    virtual void Highlight(bool highlighted);
    /// Whether the item is under the pointer or the keys.
    bool IsSelected() const { return fIsSelected; }
    /// Where the content's left top lies, in the menu's coordinates.
    BPoint ContentLocation() const;

    // BInvoker
    /// Sends a copy of the message with "when", "source" and "index".
    status_t Invoke(BMessage* message = nullptr) override;

private:
    friend class BMenu;
    friend class BMenuBar;
    friend class BMenuField;
    friend class BSeparatorItem;
    friend class kits::MenuBarKeys;
    friend class kits::MenuSession;

    bool CanWork() const;
    std::string KeyText() const;
    virtual BWindow* OwnerWindow() const;
    void DrawMark();
    void DrawShortcut();
    void DrawSubmenuArrow();
    void WillChange();
    void Changed();

    std::string fLabel;
    std::string fKeyText;
    std::unique_ptr<BMenu> fSubmenu;
    BMenu* fMenu = nullptr; // the menu the item is in; borrowed
    BRect fFrame;
    uint32 fModifiers = 0;
    char fShortcut = 0;
    char fTrigger = 0;
    bool fIsEnabled = true;
    bool fIsMarked = false;
    bool fIsSelected = false;
};

/// A line between groups of items.
class BSeparatorItem : public BMenuItem
{
public:
    /// Makes a line; it is never enabled.
    BSeparatorItem();

    /// Does nothing: a separator is never enabled.
    void SetEnabled(bool enabled) override;

protected:
    void GetContentSize(float* width, float* height) override;
    void Draw() override;
};
