#pragma once

#include <Control.h>

#include <memory>
#include <string>

class BTextView;

namespace kits {
class FieldTextView;
}

/// A labelled one-line text field.
///
/// Enter sends the control's message when it has one and the window has no default button to
/// answer; so does a focus that moves on after the text was edited. A modification message is sent
/// at each change a person makes. The text view inside has the focus and the Tab order.
class BTextControl : public BControl
{
public:
    /// Makes a field; the left half is the label's, nothing without a label. Ownership: adopts
    /// `message`, which may be null.
    BTextControl(BRect frame, const char* name, const char* label, const char* initialText,
                 BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                 uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BTextControl() override;

    /// Replaces the text; sends nothing.
    virtual void SetText(const char* text);
    /// Lends the text, until it changes.
    const char* Text() const;
    /// The text's length in bytes.
    int32 TextLength() const;
    /// Lends the view inside that shows and edits the text, while the control lives.
    BTextView* TextView() const;
    /// Sets the message sent at each change a person makes. Ownership: adopts; null for none.
    virtual void SetModificationMessage(BMessage* message);
    /// Lends that message; null for none.
    BMessage* ModificationMessage() const { return fModification.get(); }
    /// Sets where label and text stand in their parts of the control; a null argument is not told.
    virtual void SetAlignment(alignment labelAlignment, alignment textAlignment);
    void GetAlignment(alignment* labelAlignment, alignment* textAlignment) const;
    /// Where the field begins, from the control's left edge.
    virtual void SetDivider(float divider);
    /// Where the field begins.
    float Divider() const { return fDivider; }

    // BControl
    void SetLabel(const char* label) override;
    void SetEnabled(bool enabled) override;
    status_t Invoke(BMessage* message = nullptr) override;

    // BView
    void Describe(BViewDescription* description) const override;
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void FrameResized(float width, float height) override;
    /// Gives the focus to the field, all its text selected.
    void MakeFocus(bool focused = true) override;
    void SetFlags(uint32 flags) override;
    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

protected:
    // Extensions of the platform: hooks that do nothing here. Whatever changes the field's text, a
    // person or the program, goes through them.

    /// Bytes come into the text at `offset`; what `text` holds afterwards comes instead.
    virtual void TextInserted(int32 offset, std::string* text);
    /// The bytes from `start` to `end` are about to go.
    virtual void TextDeleted(int32 start, int32 end);

private:
    friend class kits::FieldTextView;

    BRect FieldFrame() const;
    void PlaceField();
    void TextEdited();
    void FieldLostFocus();

    kits::FieldTextView* fField; // a child
    std::unique_ptr<BMessage> fModification;
    float fDivider = 0;
    alignment fLabelAlignment = B_ALIGN_LEFT;
    bool fIsEdited = false; // since the field got the focus or the message was sent
};
