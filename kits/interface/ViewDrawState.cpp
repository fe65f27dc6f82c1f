#include <View.h>

#include "Access.h"
#include "FontAccess.h"
#include "RegionAccess.h"
#include "ViewHost.h"
#include "ViewState.h"

#include <Region.h>

#include <algorithm>

namespace {

// A program that saves states and never takes them back would otherwise grow without end.
constexpr size_t kMaxSavedStates = 1000;

} // namespace

void BView::PushState()
{
    if (fState->saved.size() < kMaxSavedStates) {
        fState->saved.push_back(fState->now);
    }
}

void BView::PopState()
{
    if (fState->saved.empty()) {
        return;
    }
    fState->now = std::move(fState->saved.back());
    fState->saved.pop_back();
    if (fHost != nullptr) {
        fHost->LayoutChanged(); // the clip may be another one
    }
}

void BView::SetViewColor(rgb_color color)
{
    CheckLock();
    if (fViewColor == color) {
        return;
    }
    fViewColor = color;
    Invalidate();
}

void BView::SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetViewColor(rgb_color{red, green, blue, alpha});
}

void BView::SetHighColor(rgb_color color)
{
    fState->now.high = color;
}

void BView::SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetHighColor(rgb_color{red, green, blue, alpha});
}

rgb_color BView::HighColor() const
{
    return fState->now.high;
}

void BView::SetLowColor(rgb_color color)
{
    fState->now.low = color;
}

void BView::SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetLowColor(rgb_color{red, green, blue, alpha});
}

rgb_color BView::LowColor() const
{
    return fState->now.low;
}

void BView::SetDrawingMode(drawing_mode mode)
{
    fState->now.mode = mode;
}

drawing_mode BView::DrawingMode() const
{
    return fState->now.mode;
}

void BView::SetBlendingMode(source_alpha source, alpha_function alpha)
{
    fState->now.sourceAlpha = source;
    fState->now.alphaFunction = alpha;
}

void BView::SetPenSize(float size)
{
    fState->now.penSize = std::max(1.0f, size);
}

float BView::PenSize() const
{
    return fState->now.penSize;
}

void BView::SetLineMode(cap_mode cap, join_mode join, float miterLimit)
{
    fState->now.cap = cap;
    fState->now.join = join;
    fState->now.miterLimit = miterLimit;
}

// Fonts

void BView::SetFont(const BFont* font, uint32 mask)
{
    if (font == nullptr) {
        return;
    }
    fState->Pen(); // what was drawn is measured in the font it was drawn in
    BFont& own = fState->now.font;
    if ((mask & (B_FONT_FAMILY_AND_STYLE | B_FONT_SIZE)) ==
        (B_FONT_FAMILY_AND_STYLE | B_FONT_SIZE)) {
        own = *font;
        return;
    }
    if ((mask & B_FONT_FAMILY_AND_STYLE) != 0) {
        const float size = own.Size();
        own = *font;
        own.SetSize(size);
    }
    if ((mask & B_FONT_SIZE) != 0) {
        own.SetSize(font->Size());
    }
    if ((mask & B_FONT_FACE) != 0) {
        own.SetFace(font->Face());
    }
}

void BView::GetFont(BFont* font) const
{
    *font = fState->now.font;
}

void BView::SetFontSize(float size)
{
    fState->Pen();
    fState->now.font.SetSize(size);
}

void BView::GetFontHeight(font_height* height) const
{
    fState->now.font.GetHeight(height);
}

float BView::StringWidth(const char* string) const
{
    return fState->now.font.StringWidth(string);
}

float BView::StringWidth(const char* string, int32 length) const
{
    return fState->now.font.StringWidth(string, length);
}

void BView::TruncateString(BString* text, uint32 mode, float width) const
{
    fState->now.font.TruncateString(text, mode, width);
}

// Clipping

void BView::GetClippingRegion(BRegion* region) const
{
    CheckLock();
    if (region == nullptr) {
        return;
    }
    region->MakeEmpty();
    if (fHost == nullptr) {
        return;
    }
    double x = 0;
    double y = 0;
    kits::ViewAccess::GetOrigin(*this, &x, &y);
    kits::RegionAccess::Set(*region, fHost->DrawingRegion(*this).translated(-static_cast<int>(x),
                                                                            -static_cast<int>(y)));
}

void BView::ConstrainClippingRegion(BRegion* region)
{
    CheckLock();
    if (region != nullptr) {
        fState->now.clip = *region;
    } else {
        fState->now.clip.reset();
    }
    if (fHost != nullptr) {
        fHost->LayoutChanged();
    }
}

// Updating

void BView::Invalidate()
{
    Invalidate(Bounds());
}

void BView::Invalidate(BRect rect)
{
    CheckLock();
    if (fHost != nullptr) {
        fHost->Invalidate(*this, kits::PixelsOf(rect & Bounds()));
    }
}

void BView::Invalidate(const BRegion* region)
{
    CheckLock();
    if (fHost != nullptr && region != nullptr) {
        fHost->Invalidate(*this, kits::RegionAccess::Get(*region));
    }
}

void BView::Flush() const
{
    CheckLock();
    if (fHost != nullptr) {
        fHost->Present();
    }
}

void BView::Sync() const
{
    Flush();
}
