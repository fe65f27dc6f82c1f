#pragma once

#include <View.h>

#include <string>

/// A border around other views, with a label set into its top line.
class BBox : public BView
{
public:
    /// Makes a box without a label. The border is drawn inside `frame`.
    explicit BBox(BRect frame, const char* name = nullptr,
                  uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                  uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP,
                  border_style border = B_FANCY_BORDER);

    /// Sets the kind of the border: none, one line, or the usual two; draws it again.
    virtual void SetBorder(border_style border);
    border_style Border() const { return fBorder; }
    /// Sets the label's text; null for none. A label view set before is deleted.
    void SetLabel(const char* label);
    /// Sets a view as the label.
    /// Ownership: adopts the view as a child.
    status_t SetLabel(BView* label);
    /// The label's text, or null.
    const char* Label() const;
    /// Lends the view that is the label, or null.
    BView* LabelView() const { return fLabelView; }

    // BView
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;

private:
    void RemoveLabelView();
    float TopBorderOffset();
    void DrawBorder(BRect frame);
    void DrawLabel();

    std::string fLabel;
    bool fHasLabel = false;
    BView* fLabelView = nullptr; // a child
    border_style fBorder;
};
