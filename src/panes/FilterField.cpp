#include "panes/FilterField.h"

#include "MessageCodes.h"
#include "panes/StripDrawing.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <TextView.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr const char* kLabel = "Filter:";
constexpr const char* kName = "Filter"; // for assistive programs
constexpr float kLabelLeft = 9;         // where the strips' texts begin
constexpr float kGap = 6;
constexpr float kFieldTop = 2; // the field's frame, within the strip's
constexpr float kTextMargin = 3;
constexpr float kTextTop = 2;                       // in line with the label
constexpr rgb_color kFilled = {255, 250, 205, 255}; // rows are missing: it is seen from afar
constexpr rgb_color kEmpty = {255, 255, 255, 255};

} // namespace

/// The text in the strip.
class FilterText : public BTextView
{
public:
    FilterText(FilterOwner& owner, const std::string& text)
        : BTextView(BRect(0, 0, 10, 10), "filter", BRect(), B_FOLLOW_LEFT | B_FOLLOW_TOP,
                    B_WILL_DRAW | B_NAVIGABLE),
          fOwner(owner)
    {
        SetSingleLine(true);
        SetText(text.c_str());
        fTold = text;
        ShowWhetherFilled();
    }

    void Describe(BViewDescription* description) const override
    {
        BTextView::Describe(description);
        description->name = kName;
    }

    void KeyDown(const char* bytes, int32 byteCount) override
    {
        const char byte = byteCount == 1 ? bytes[0] : '\0';
        if (byte == B_ESCAPE) {
            fOwner.FilterCancelled(); // it may delete this view, as may what follows
        } else if (byte == B_ENTER) {
            Tell();
            fOwner.FilterLeft();
        } else if (IsForList(byte)) {
            Tell();
            fOwner.FilterPassesKey(bytes, byteCount);
        } else {
            fIsInKey = true;
            BTextView::KeyDown(bytes, byteCount);
            fIsInKey = false;
            Tell();
        }
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kFilterTyped) {
            Tell();
        } else {
            BTextView::MessageReceived(message);
        }
    }

    void MakeFocus(bool isFocused = true) override
    {
        BTextView::MakeFocus(isFocused);
        fOwner.FilterFocused(isFocused);
    }

protected:
    void InsertText(const char* text, int32 length, int32 offset,
                    const text_run_array* runs) override
    {
        BTextView::InsertText(text, length, offset, runs);
        Changed();
    }

    void DeleteText(int32 start, int32 end) override
    {
        BTextView::DeleteText(start, end);
        Changed();
    }

private:
    /// Keys that do nothing in one line of text. With Shift or Command Insert pastes or copies.
    bool IsForList(char byte) const
    {
        switch (byte) {
        case B_UP_ARROW:
        case B_DOWN_ARROW:
        case B_PAGE_UP:
        case B_PAGE_DOWN:
        case B_FUNCTION_KEY:
            return true;
        case B_INSERT:
            return (Modifiers() & (B_SHIFT_KEY | B_COMMAND_KEY)) == 0;
        default:
            return false;
        }
    }

    uint32 Modifiers() const
    {
        const BMessage* key = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
        return key != nullptr ? static_cast<uint32>(key->GetInt32("modifiers", 0)) : 0;
    }

    /// What replaces a text takes it out first: the rows are looked through once, for the new one.
    void Changed()
    {
        if (!fIsInKey && Looper() != nullptr) {
            Looper()->PostMessage(kFilterTyped, this);
        }
    }

    void Tell()
    {
        if (fTold != Text()) {
            fTold = Text();
            ShowWhetherFilled();
            fOwner.FilterTyped(fTold);
        }
    }

    void ShowWhetherFilled()
    {
        SetViewColor(fTold.empty() ? kEmpty : kFilled);
        SetLowColor(fTold.empty() ? kEmpty : kFilled);
        Invalidate();
    }

    FilterOwner& fOwner;
    std::string fTold; // the text that the owner knows
    bool fIsInKey = false;
};

FilterField::FilterField(FilterOwner& owner, const std::string& text)
    : BView(BRect(0, 0, 10, 10), "Filter", B_FOLLOW_LEFT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE | B_FRAME_EVENTS),
      fText(new FilterText(owner, text))
{
    SetViewColor(kStripBackground);
    SetLowColor(kStripBackground);
    SetHighColor(kStripText);
    AddChild(fText); // adopted
}

FilterField::~FilterField() = default;

void FilterField::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    description->name = kLabel;
}

void FilterField::Draw(BRect)
{
    DrawStrip(*this, kLabel, StripBaseline());
    const BRect field = fText->Frame();
    const rgb_color before = HighColor();
    SetHighColor(kStripShadow);
    StrokeRect(field.InsetByCopy(-1, -1));
    SetHighColor(before);
}

void FilterField::FrameResized(float, float)
{
    LayOut();
}

void FilterField::ResizeTo(float width, float height)
{
    BView::ResizeTo(width, height);
    LayOut();
}

void FilterField::LayOut()
{
    const float left = std::ceil(kLabelLeft + StringWidth(kLabel) + kGap);
    const BRect bounds = Bounds();
    const float width = std::max(0.0f, bounds.Width() - left - kGap);
    const float height = std::max(0.0f, bounds.Height() - 2 * kFieldTop - 2);
    fText->MoveTo(left, kFieldTop + 1);
    fText->ResizeTo(width, height);
    fText->SetTextRect(
        BRect(kTextMargin, kTextTop, std::max(kTextMargin, width - kTextMargin), height));
    Invalidate();
}

void FilterField::MouseDown(BPoint)
{
    Take();
}

void FilterField::Take()
{
    fText->MakeFocus(true);
    fText->Select(fText->TextLength(), fText->TextLength());
}

bool FilterField::HasFocus() const
{
    return fText->IsFocus();
}

BTextView* FilterField::TextView() const
{
    return fText;
}

} // namespace norvane
