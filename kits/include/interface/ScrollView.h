#pragma once

#include <ScrollBar.h>
#include <View.h>

/// Contains a target view with scroll bars beside it and a border around both.
///
/// The frame is worked out from the target's: the target keeps its place and size on the screen.
/// Ownership: adopts the target as a child.
class BScrollView : public BView
{
public:
    /// Lies around `target` (null: none yet), which it adopts as a child, with the bars that are
    /// asked for.
    BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                uint32 flags = 0, bool horizontal = false, bool vertical = false,
                border_style border = B_FANCY_BORDER);

    /// The bar of that direction, or null.
    BScrollBar* ScrollBar(orientation direction) const;
    /// Changes the border's look; its place for the contents stays as it was constructed.
    virtual void SetBorder(border_style border);
    border_style Border() const { return fBorder; }
    /// Draws the border in the focus colour, for a target that has the focus.
    /// Errors: B_ERROR when the border is not B_FANCY_BORDER; nothing changes then.
    virtual status_t SetBorderHighlighted(bool highlighted);
    bool IsBorderHighlighted() const { return fIsHighlighted; }
    /// Puts another view into the place of the target; the old one is removed, not deleted.
    void SetTarget(BView* target);
    BView* Target() const { return fTarget; }

    // BView
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;

private:
    void InvalidateBorder();

    BView* fTarget; // a child; may be null
    BScrollBar* fHorizontalBar = nullptr;
    BScrollBar* fVerticalBar = nullptr;
    border_style fBorder;
    bool fIsHighlighted = false;
};
