#pragma once

#include <Rect.h>
#include <View.h>

#include <vector>

class BCheckBox;
class BMenu;
class BMenuField;
class BScrollBar;

namespace norvane {

/// Check boxes, and fields with menus, one below the other, for a BScrollView with a vertical bar.
/// The bar is shown only while there are more than fit; what gets the focus scrolls into sight.
class SwitchList : public BView
{
public:
    explicit SwitchList(BRect frame);

    /// Adds a box below the others, off, and returns it; it is a child.
    BCheckBox* AddSwitch(const char* name, const char* label);
    /// Adds a field with `menu` below the others; it is a child. Ownership: adopts `menu`.
    BMenuField* AddMenu(const char* name, const char* label, BMenu* menu);
    /// Scrolls until `place`, in the list's coordinates, is seen whole, as far as it can be.
    void ScrollIntoSight(BRect place);

    // BView
    void AttachedToWindow() override;
    void FrameResized(float width, float height) override;
    void TargetedByScrollView(BScrollView* scrollView) override;

private:
    BRect NextPlace(float height) const;
    float ContentsBottom() const;
    void FitBar();

    std::vector<BView*> fEntries; // children
    BScrollBar* fBar = nullptr;   // the scroll view's
    bool fHidesBar = false;
};

} // namespace norvane
