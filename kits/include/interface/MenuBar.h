#pragma once

#include <Menu.h>

#include <memory>

namespace kits {
class KeyMenus;
class MenuBarKeys;
} // namespace kits

/// What a menu bar's border goes around; B_BORDER_CONTENTS draws none here.
enum menu_bar_border {
    B_BORDER_FRAME,
    B_BORDER_CONTENTS,
    B_BORDER_EACH_ITEM,
};

/// The row of menus at a window's top. The first one added to a window is its key menu bar: its
/// items' shortcuts work in the whole window, and F10 or Alt alone opens it.
class BMenuBar : public BMenu
{
public:
    /// With `resizeToFit` the bar takes the height of its items and, when it follows left and
    /// right, the width of the view it is in.
    BMenuBar(BRect frame, const char* name,
             uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
             menu_layout layout = B_ITEMS_IN_ROW, bool resizeToFit = true);
    ~BMenuBar() override;

    /// Sets what the border goes around, and draws the bar again.
    virtual void SetBorder(menu_bar_border border);
    menu_bar_border Border() const { return fBorder; }

    // BView
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MouseDown(BPoint where) override;
    void Describe(BViewDescription* description) const override;
    void GetPreferredSize(float* width, float* height) override;

protected:
    void DrawBackground(BRect updateRect) override;

private:
    friend class kits::MenuBarKeys;
    friend class BWindow; // hands its keys to them

    std::shared_ptr<kits::MenuSession> NewSession();

    std::unique_ptr<kits::KeyMenus> fKeys;       // never null
    std::shared_ptr<kits::MenuSession> fSession; // the one that is or was open last
    menu_bar_border fBorder = B_BORDER_FRAME;
};
