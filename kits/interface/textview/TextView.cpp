#include <TextView.h>

#include "TextViewState.h"
#include "interface/text/TextDecoding.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

// How much of a text is told; it is told anew at each frame while somebody listens.
constexpr int32 kMostToldBytes = 4096;

} // namespace

using kits::TextAction;
using kits::TextViewState;

namespace kits {

TextViewState::TextViewState(BTextView& owner, BRect textRect) : view(owner)
{
    geometry.SetRect(textRect);
}

} // namespace kits

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode,
                     uint32 flags)
    : BTextView(frame, name, textRect, nullptr, nullptr, resizingMode, flags)
{
}

BTextView::BTextView(BRect frame, const char* name, BRect textRect, const BFont* initialFont,
                     const rgb_color* initialColor, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FRAME_EVENTS | B_INPUT_METHOD_AWARE),
      fText(std::make_unique<TextViewState>(*this, textRect))
{
    SetViewColor(255, 255, 255);
    SetFontAndColor(initialFont, B_FONT_ALL, initialColor);
    fText->ShapePointer();
}

BTextView::~BTextView() = default;

// BView

void BTextView::AttachedToWindow()
{
    BView::AttachedToWindow();
    const float missing = LineHeight() - (Bounds().Height() + 1);
    if (IsSingleLine() && missing > 0) {
        // A frame lower than the font would cut letters off; it grows around its middle.
        MoveBy(0, -std::ceil(missing / 2));
        ResizeBy(0, missing);
    }
    fText->UpdateScrollBars();
}

void BTextView::DetachedFromWindow()
{
    fText->GiveUpPaste();
    fText->OfferWhatKeysSelected();
    fText->geometry.SetPreview({});
    fText->isDragging = false;
    fText->dragTicker.reset();
    fText->blinkTicker.reset();
    fText->isCaretOn = false;
    BView::DetachedFromWindow();
}

void BTextView::Draw(BRect updateRect)
{
    fText->Draw(updateRect);
}

void BTextView::MouseDown(BPoint where)
{
    fText->Press(where);
}

void BTextView::MouseUp(BPoint where)
{
    BView::MouseUp(where);
    fText->Release();
}

void BTextView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage)
{
    BView::MouseMoved(where, transit, dragMessage);
    fText->DragTo(where);
}

void BTextView::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (!active) {
        fText->OfferWhatKeysSelected();
    }
    if (IsFocus()) {
        fText->InvalidateSelection(fText->Start(), fText->End());
        fText->ShowCaret();
    }
}

void BTextView::KeyDown(const char* bytes, int32 byteCount)
{
    if (!fText->Key(bytes, byteCount)) {
        BView::KeyDown(bytes, byteCount);
    }
}

void BTextView::FrameResized(float newWidth, float newHeight)
{
    BView::FrameResized(newWidth, newHeight);
    fText->LimitScrolling();
}

void BTextView::MakeFocus(bool focus)
{
    if (focus == IsFocus()) {
        return;
    }
    if (!focus) {
        fText->EndPreview();
        fText->OfferWhatKeysSelected();
    }
    BView::MakeFocus(focus);
    fText->undo.EndRun();
    if (Window() != nullptr) {
        fText->InvalidateSelection(fText->Start(), fText->End());
        fText->ShowCaret();
    }
}

void BTextView::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kits::kTick: {
        const int32 id = message->GetInt32("ticker", 0);
        if (fText->blinkTicker != nullptr && fText->blinkTicker->Id() == id) {
            fText->BlinkTick();
        } else if (fText->dragTicker != nullptr && fText->dragTicker->Id() == id) {
            fText->DragTick();
        }
        break;
    }
    case kits::kRowsCorrected:
        fText->LimitScrolling();
        break;
    case B_INPUT_METHOD_EVENT:
        fText->TakeInput(*message);
        break;
    case kits::kPasteArrived:
        fText->PasteArrived(message->GetInt32("paste", 0));
        break;
    case B_MODIFIERS_CHANGED:
        if ((static_cast<uint32>(message->GetInt32("modifiers", 0)) & B_SHIFT_KEY) == 0) {
            fText->OfferWhatKeysSelected();
        }
        BView::MessageReceived(message);
        break;
    case B_CUT:
        Cut(be_clipboard);
        break;
    case B_COPY:
        Copy(be_clipboard);
        break;
    case B_PASTE:
        Paste(be_clipboard);
        break;
    case B_UNDO:
        Undo(be_clipboard);
        break;
    case B_SELECT_ALL:
        SelectAll();
        break;
    default:
        BView::MessageReceived(message);
    }
}

void BTextView::SetFont(const BFont* font, uint32 mask)
{
    BView::SetFont(font, mask);
    BFont merged;
    GetFont(&merged);
    fText->geometry.SetFont(merged);
    Invalidate();
}

void BTextView::ScrollTo(BPoint where)
{
    BView::ScrollTo(fText->CountSight(where));
}

void BTextView::GetPreferredSize(float* width, float* height)
{
    const BRect rect = TextRect();
    *width = Bounds().Width();
    *height = std::max(rect.Height() + 2 * std::max(0.0f, rect.top), LineHeight());
}

void BTextView::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

// Looks

void BTextView::SetTextRect(BRect rect)
{
    fText->geometry.SetRect(rect);
    Invalidate();
    fText->LimitScrolling();
}

BRect BTextView::TextRect() const
{
    BRect rect = fText->geometry.Rect();
    rect.bottom = static_cast<float>(fText->geometry.RowTop(CountLines())) - 1;
    return rect;
}

void BTextView::SetFontAndColor(const BFont* font, uint32 mode, const rgb_color* color)
{
    if (font != nullptr) {
        SetFont(font, mode);
    }
    if (color != nullptr) {
        fText->color = *color;
        Invalidate();
    }
}

void BTextView::GetFontAndColor(BFont* font, uint32* mode, rgb_color* color) const
{
    if (font != nullptr) {
        GetFont(font);
    }
    if (mode != nullptr) {
        *mode = B_FONT_ALL; // all of the text has the same
    }
    if (color != nullptr) {
        *color = fText->color;
    }
}

void BTextView::SetTabWidth(float width)
{
    fText->geometry.SetTabWidth(width);
    fText->geometry.Reset();
    Invalidate();
}

float BTextView::TabWidth() const
{
    return fText->geometry.TabWidth();
}

void BTextView::SetWordWrap(bool wrap)
{
    fText->geometry.SetWrap(wrap);
    Invalidate();
    fText->LimitScrolling();
}

bool BTextView::DoesWordWrap() const
{
    return fText->geometry.Wraps();
}

void BTextView::SetAlignment(alignment flag)
{
    fText->geometry.SetAlignment(flag);
    Invalidate();
}

alignment BTextView::Alignment() const
{
    return fText->geometry.Alignment();
}

// Manners

void BTextView::MakeSelectable(bool selectable)
{
    fText->isSelectable = selectable;
    fText->ShapePointer();
    Invalidate();
}

bool BTextView::IsSelectable() const
{
    return fText->isSelectable;
}

void BTextView::MakeEditable(bool editable)
{
    fText->EndPreview();
    fText->isEditable = editable;
    fText->ShapePointer();
    fText->ShowCaret();
    Invalidate();
}

bool BTextView::IsEditable() const
{
    return fText->isEditable;
}

void BTextView::SetMaxBytes(int32 max)
{
    fText->maxBytes = std::max<int32>(0, max);
}

int32 BTextView::MaxBytes() const
{
    return fText->maxBytes;
}

void BTextView::DisallowChar(uint32 character)
{
    fText->disallowed.insert(character);
}

void BTextView::AllowChar(uint32 character)
{
    fText->disallowed.erase(character);
}

void BTextView::SetAutoindent(bool indents)
{
    fText->indents = indents;
}

bool BTextView::DoesAutoindent() const
{
    return fText->indents;
}

void BTextView::SetSingleLine(bool isSingle)
{
    fText->text.SetSingleLine(isSingle);
    fText->geometry.Reset();
    Invalidate();
}

void BTextView::HideTyping(bool enabled)
{
    fText->text.SetHidesText(enabled);
    fText->geometry.Reset();
    Invalidate();
    fText->LimitScrolling();
}

bool BTextView::IsTypingHidden() const
{
    return fText->text.HidesText();
}

bool BTextView::IsSingleLine() const
{
    return fText->text.IsSingleLine();
}

void BTextView::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kTextField;
    if (!IsEditable()) {
        description->states |= BViewDescription::kDisabled;
    }
    const kits::TextBuffer& text = fText->text;
    if (text.HidesText()) {
        description->states |= BViewDescription::kHidesText;
        return;
    }
    const int32 end = text.Clamp(std::min(text.Length(), kMostToldBytes));
    description->value = kits::DecodedText(text.Part(0, end), text.Showing()).Text().toStdString();
}

bool BTextView::DescribeInput(BInputDescription* description) const
{
    fText->DescribeInput(description);
    return true;
}

bool BTextView::WantsKey(const BMessage& key) const
{
    return fText->WantsKey(key);
}
