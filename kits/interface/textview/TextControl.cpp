#include <TextControl.h>

#include "TextControlField.h"
#include "TextViewState.h"
#include "interface/views/Look.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

// Between the control's edge and the text: the frame, a unit of white, the text's own margin.
constexpr float kFrame = 2;
constexpr float kMargin = 2;
// Between the label and the field.
constexpr float kLabelGap = 5;
constexpr float kLeastFieldWidth = 60;

constexpr rgb_color kDisabledField = {232, 232, 232, 255};
constexpr rgb_color kField = {255, 255, 255, 255};

} // namespace

namespace kits {

FieldTextView::FieldTextView(BTextControl& control, BRect frame, uint32 flags)
    : BTextView(frame, "_input_", BRect(), B_FOLLOW_NONE, flags), fControl(control)
{
    SetSingleLine(true);
    TextViewAccess::State(*this).edited = [&control] {
        control.TextEdited();
    };
}

void FieldTextView::KeyDown(const char* bytes, int32 byteCount)
{
    if (byteCount == 1 && bytes[0] == B_ENTER) {
        if (look::MayAnswer(this)) {
            fControl.Invoke();
        }
        return;
    }
    BTextView::KeyDown(bytes, byteCount);
}

void FieldTextView::MakeFocus(bool focus)
{
    if (focus == IsFocus()) {
        return;
    }
    BTextView::MakeFocus(focus);
    if (focus) {
        fControl.Invalidate();
    } else {
        fControl.FieldLostFocus();
    }
}

void FieldTextView::Describe(BViewDescription* description) const
{
    BTextView::Describe(description);
    const bool hasLabel = fControl.Label()[0] != '\0' || fControl.Name() == nullptr;
    description->name = hasLabel ? fControl.Label() : fControl.Name();
}

void FieldTextView::InsertText(const char* text, int32 length, int32 offset,
                               const text_run_array* runs)
{
    std::string inserted(text, static_cast<size_t>(length));
    fControl.TextInserted(offset, &inserted);
    BTextView::InsertText(inserted.data(), static_cast<int32>(inserted.size()), offset, runs);
}

void FieldTextView::DeleteText(int32 start, int32 end)
{
    fControl.TextDeleted(start, end);
    BTextView::DeleteText(start, end);
}

} // namespace kits

BTextControl::BTextControl(BRect frame, const char* name, const char* label,
                           const char* initialText, BMessage* message, uint32 resizingMode,
                           uint32 flags)
    : BControl(frame, name, label, message, resizingMode,
               (flags & ~B_NAVIGABLE) | B_FULL_UPDATE_ON_RESIZE | B_FRAME_EVENTS),
      fField(
          new kits::FieldTextView(*this, BRect(0, 0, 10, 10), B_WILL_DRAW | (flags & B_NAVIGABLE)))
{
    AddChild(fField); // adopted
    if (Label()[0] != '\0') {
        fDivider = std::floor((Bounds().Width() + 1) / 2);
    }
    fField->SetText(initialText);
    PlaceField();
}

BTextControl::~BTextControl() = default;

// Text

void BTextControl::SetText(const char* text)
{
    fField->SetText(text);
    fIsEdited = false;
    if (fField->IsFocus()) {
        fField->SelectAll();
    }
}

const char* BTextControl::Text() const
{
    return fField->Text();
}

int32 BTextControl::TextLength() const
{
    return fField->TextLength();
}

BTextView* BTextControl::TextView() const
{
    return fField;
}

void BTextControl::SetModificationMessage(BMessage* message)
{
    fModification.reset(message);
}

void BTextControl::TextInserted(int32, std::string*) {}

void BTextControl::TextDeleted(int32, int32) {}

void BTextControl::TextEdited()
{
    fIsEdited = true;
    if (fModification != nullptr) {
        BControl::Invoke(fModification.get());
    }
}

void BTextControl::FieldLostFocus()
{
    Invalidate();
    if (fIsEdited) {
        Invoke();
    }
}

status_t BTextControl::Invoke(BMessage* message)
{
    fIsEdited = false;
    return BControl::Invoke(message);
}

// Looks

void BTextControl::SetAlignment(alignment labelAlignment, alignment textAlignment)
{
    fLabelAlignment = labelAlignment;
    fField->SetAlignment(textAlignment);
    Invalidate();
}

void BTextControl::GetAlignment(alignment* labelAlignment, alignment* textAlignment) const
{
    if (labelAlignment != nullptr) {
        *labelAlignment = fLabelAlignment;
    }
    if (textAlignment != nullptr) {
        *textAlignment = fField->Alignment();
    }
}

void BTextControl::SetDivider(float divider)
{
    fDivider = std::clamp(std::round(divider), 0.0f, std::max(0.0f, Bounds().Width()));
    PlaceField();
    Invalidate();
}

void BTextControl::SetLabel(const char* label)
{
    BControl::SetLabel(label);
}

void BTextControl::SetEnabled(bool enabled)
{
    if (enabled == IsEnabled()) {
        return;
    }
    if (!enabled && fField->IsFocus()) {
        fField->MakeFocus(false);
    }
    BControl::SetEnabled(enabled);
    const rgb_color text = enabled ? kits::look::kText : kits::look::kDisabledText;
    fField->MakeEditable(enabled);
    fField->MakeSelectable(enabled);
    fField->SetViewColor(enabled ? kField : kDisabledField);
    fField->SetFontAndColor(nullptr, B_FONT_ALL, &text);
    fField->SetFlags(enabled ? fField->Flags() | B_NAVIGABLE : fField->Flags() & ~B_NAVIGABLE);
}

void BTextControl::SetFlags(uint32 flags)
{
    // The focus is the field's, and so is the place in the Tab order.
    const uint32 navigable = IsEnabled() ? flags & B_NAVIGABLE : 0;
    fField->SetFlags((fField->Flags() & ~B_NAVIGABLE) | navigable);
    BControl::SetFlags(flags & ~B_NAVIGABLE);
}

void BTextControl::SetFont(const BFont* font, uint32 mask)
{
    BControl::SetFont(font, mask);
    fField->SetFont(font, mask);
    PlaceField();
}

// What lies inside the frame.
BRect BTextControl::FieldFrame() const
{
    BRect frame = Bounds();
    frame.left += fDivider;
    return frame;
}

void BTextControl::PlaceField()
{
    const BRect frame = FieldFrame().InsetByCopy(kFrame, kFrame);
    fField->MoveTo(frame.LeftTop());
    fField->ResizeTo(frame.Width(), frame.Height());
    // One line, in the middle of whatever height there is.
    const float spare = frame.Height() + 1 - fField->LineHeight();
    fField->SetTextRect(
        BRect(kMargin, std::floor(spare / 2), frame.Width() - kMargin, frame.Height()));
}

void BTextControl::FrameResized(float width, float height)
{
    BControl::FrameResized(width, height);
    PlaceField();
}

void BTextControl::GetPreferredSize(float* width, float* height)
{
    font_height font;
    GetFontHeight(&font);
    const float label =
        Label()[0] != '\0' ? std::max(fDivider, std::ceil(StringWidth(Label())) + kLabelGap) : 0;
    const float text = std::ceil(StringWidth(Text())) + 2 * (kFrame + kMargin);
    *width = label + std::max(kLeastFieldWidth, text);
    *height = std::ceil(font.ascent + font.descent) + 2 * kFrame + 2;
}

void BTextControl::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
    PlaceField();
}

// BView

void BTextControl::AttachedToWindow()
{
    BControl::AttachedToWindow();
    const float missing = fField->LineHeight() + 2 * kFrame - (Bounds().Height() + 1);
    if (missing > 0) {
        // A frame lower than the font would cut letters off; it grows around its middle.
        MoveBy(0, -std::ceil(missing / 2));
        ResizeBy(0, missing);
    }
    PlaceField();
}

void BTextControl::WindowActivated(bool active)
{
    BControl::WindowActivated(active);
    if (fField->IsFocus()) {
        Invalidate();
    }
}

void BTextControl::MakeFocus(bool focused)
{
    if (focused == fField->IsFocus() || (focused && !IsEnabled())) {
        return;
    }
    fField->MakeFocus(focused);
    if (focused) {
        fField->Select(0, fField->TextLength());
    }
}

void BTextControl::MouseDown(BPoint)
{
    if (IsEnabled() && !fField->IsFocus()) {
        MakeFocus(true); // the label stands for its field
    }
}

void BTextControl::Draw(BRect)
{
    const BRect frame = FieldFrame();
    const bool hasFocus = fField->IsFocus() && Window() != nullptr && Window()->IsActive();
    if (hasFocus) {
        kits::look::Fill(this, frame, kits::look::kFocus); // a ring without a gap at every scale
    }
    kits::look::Fill(this, frame.InsetByCopy(kFrame, kFrame),
                     IsEnabled() ? kField : kDisabledField);
    if (!hasFocus) {
        kits::look::SunkenFrame(this, frame);
        kits::look::Frame(this, frame.InsetByCopy(1, 1), kits::look::kOutline,
                          kits::look::kSoftShine);
    }
    if (Label()[0] == '\0') {
        return;
    }
    font_height font;
    GetFontHeight(&font);
    BFont plain;
    GetFont(&plain);
    BString label(Label());
    plain.TruncateString(&label, B_TRUNCATE_END, fDivider - kLabelGap);
    const float free = fDivider - kLabelGap - StringWidth(label.String());
    float left = Bounds().left;
    if (fLabelAlignment == B_ALIGN_RIGHT) {
        left += std::floor(free);
    } else if (fLabelAlignment == B_ALIGN_CENTER) {
        left += std::floor(free / 2);
    }
    const float spare = Bounds().Height() + 1 - (font.ascent + font.descent);
    SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    SetLowColor(ViewColor());
    DrawString(label.String(), BPoint(left, std::floor(spare / 2) + font.ascent));
}

// The field inside says the rest.
void BTextControl::Describe(BViewDescription* description) const
{
    description->name = Label();
}
