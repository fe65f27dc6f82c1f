#pragma once

#include <InterfaceDefs.h>
#include <View.h>

#include <memory>
#include <string>

class BMenu;
class BMenuItem;
class BMessage;

namespace kits {
class MenuSession;
} // namespace kits

/// A labelled field that shows what is chosen of a menu, and opens that menu.
///
/// The menu opens with the marked item over the field: at a press, or at Space, Enter, Up or Down
/// while the field has the focus; a letter then chooses the next item that begins with it. Without
/// a marked item, or with a menu that does not take its label from it, the menu's own label shows.
/// Messages of items without a target go to the window.
/// Thread: call with the window locked once the field is in one.
class BMenuField : public BView
{
public:
    /// Makes a field; the left half is the label's, nothing without a label. Ownership: adopts
    /// `menu`, which hangs on no other item and is not null.
    BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
               uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
               uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    /// Deletes the menu.
    ~BMenuField() override;

    /// Sets the text beside the field, null for none.
    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }
    /// A disabled field is drawn dimmed, does not open and leaves the Tab order. The menu's own
    /// BMenu::SetEnabled() does the same.
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;
    /// Sets where the label stands in its part of the view; at the left at first.
    virtual void SetAlignment(alignment label);
    alignment Alignment() const { return fAlignment; }
    /// Sets where the field begins, from the view's left edge. A label that is wider moves it on as
    /// far as there is room.
    virtual void SetDivider(float divider);
    /// What SetDivider() set.
    float Divider() const { return fDivider; }

    /// Lends the menu, while the field lives; null once somebody deleted it.
    BMenu* Menu() const;
    /// Lends the item that the menu hangs on, whose label the field shows. It is in no menu.
    BMenuItem* MenuItem() const;

    // BView
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MakeFocus(bool focused = true) override;
    void WindowActivated(bool active) override;
    void Describe(BViewDescription* description) const override;
    /// Room for the label and the widest of the menu's items.
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

private:
    class FieldItem;

    void ItemChanged();
    void Open(const BMessage* press);
    void ChooseByLetter(const char* letter);
    float LabelWidth() const;
    BRect FieldFrame() const;
    BPoint TextPlace() const;
    void DrawField(BRect field);
    void DrawLabel(BRect field);

    std::string fLabel;
    std::unique_ptr<BMenuItem> fItem;            // never null; its submenu is the menu
    std::shared_ptr<kits::MenuSession> fSession; // the one that is or was open last
    float fDivider = 0;
    uint32 fHiddenFlags = 0; // those of the Tab order, while disabled
    alignment fAlignment = B_ALIGN_LEFT;
    bool fLooksEnabled = true;
};
