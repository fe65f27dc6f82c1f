#pragma once

#include <Control.h>

/// A labelled box that is marked or not; a click or Space changes that and sends its message.
///
/// The label belongs to what is clicked. The mark is the control's value.
class BCheckBox : public BControl
{
public:
    /// Makes an unmarked box. Ownership: adopts `message`, which may be null.
    BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
              uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
              uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BCheckBox() override;

    // BView
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void DetachedFromWindow() override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    /// The box and the whole label.
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

private:
    void SetPressed(bool isPressed);
    BRect BoxFrame() const;
    void DrawBox(BRect box);
    void DrawLabel(float left);

    bool fIsPressed = false; // while a button of the mouse is held over it
};
