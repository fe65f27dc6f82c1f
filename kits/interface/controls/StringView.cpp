#include <StringView.h>

#include "interface/views/Look.h"

#include <Font.h>
#include <ViewDescription.h>
#include <Window.h>

#include <cmath>

BStringView::BStringView(BRect frame, const char* name, const char* text, uint32 resizingMode,
                         uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FULL_UPDATE_ON_RESIZE),
      fText(text != nullptr ? text : "")
{
}

void BStringView::SetText(const char* text)
{
    const char* shown = text != nullptr ? text : "";
    if (fText == shown) {
        return;
    }
    fText = shown;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BStringView::SetAlignment(alignment flag)
{
    if (fAlignment == flag) {
        return;
    }
    fAlignment = flag;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BStringView::SetTruncation(uint32 mode)
{
    fIsTruncated = true;
    fTruncation = mode;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BStringView::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
        SetLowColor(ViewColor());
    }
    font_height font;
    GetFontHeight(&font);
    const float missing = font.ascent + font.descent - 1 - Bounds().Height();
    if (missing > 0) {
        // A frame lower than the font would cut letters off; it grows around its middle.
        MoveBy(0, -std::ceil(missing / 2));
        ResizeBy(0, missing);
    }
}

void BStringView::Draw(BRect)
{
    const BRect bounds = Bounds();
    BString shown(fText.c_str());
    if (fIsTruncated) {
        BFont font;
        GetFont(&font);
        font.TruncateString(&shown, fTruncation, bounds.Width() + 1);
    }
    font_height height;
    GetFontHeight(&height);
    const float free = bounds.Width() + 1 - StringWidth(shown.String());
    float left = bounds.left;
    if (fAlignment == B_ALIGN_RIGHT) {
        left += std::floor(free);
    } else if (fAlignment == B_ALIGN_CENTER) {
        left += std::floor(free / 2);
    }
    const float spare = bounds.Height() + 1 - (height.ascent + height.descent);
    const float top = bounds.top + std::floor(spare / 2);
    DrawString(shown.String(), BPoint(left, top + height.ascent));
}

void BStringView::GetPreferredSize(float* width, float* height)
{
    font_height font;
    GetFontHeight(&font);
    *width = std::ceil(StringWidth(fText.c_str()));
    *height = font.ascent + font.descent - 1;
}

void BStringView::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BStringView::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    description->name = Text() != nullptr ? Text() : "";
}
