#pragma once

#include <Rect.h>
#include <View.h>

#include <vector>

class BCheckBox;
class BScrollBar;

namespace norvane {

/// Check boxes one below the other, for a BScrollView with a vertical bar. The bar is shown only
/// while there are more boxes than fit; the box that gets the focus scrolls into sight.
class SwitchList : public BView
{
public:
    explicit SwitchList(BRect frame);

    /// Adds a box below the others, off, and returns it; it is a child.
    BCheckBox* AddSwitch(const char* name, const char* label);
    /// Scrolls until `place`, in the list's coordinates, is seen whole, as far as it can be.
    void ScrollIntoSight(BRect place);

    // BView
    void AttachedToWindow() override;
    void FrameResized(float width, float height) override;
    void TargetedByScrollView(BScrollView* scrollView) override;

private:
    float ContentsBottom() const;
    void FitBar();

    std::vector<BCheckBox*> fBoxes; // children
    BScrollBar* fBar = nullptr;     // the scroll view's
    bool fHidesBar = false;
};

} // namespace norvane
