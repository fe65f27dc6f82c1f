#include <ViewDrawing.h>

#include "ViewAccess.h"
#include "ViewHost.h"
#include "ViewPainter.h"
#include "ViewState.h"
#include "interface/graphics/FontAccess.h"
#include "interface/graphics/RegionAccess.h"

#include <Region.h>

#include <algorithm>

namespace kits {

namespace {

// A program that saves states and never takes them back would otherwise grow without end.
constexpr size_t kMaxSavedStates = 1000;

} // namespace

ViewDrawing::ViewDrawing() : fState(std::make_unique<ViewState>()) {}

ViewDrawing::~ViewDrawing() = default;

BView& ViewDrawing::Self()
{
    return static_cast<BView&>(*this);
}

const BView& ViewDrawing::Self() const
{
    return static_cast<const BView&>(*this);
}

void ViewDrawing::CheckLock() const
{
    Self().CheckLock();
}

void ViewDrawing::ClipChanged()
{
    if (ViewHost* host = Self().fHost) {
        host->LayoutChanged();
    }
}

void ViewDrawing::PushState()
{
    if (fState->saved.size() < kMaxSavedStates) {
        fState->saved.push_back(fState->now);
    }
}

void ViewDrawing::PopState()
{
    if (fState->saved.empty()) {
        return;
    }
    fState->now = std::move(fState->saved.back());
    fState->saved.pop_back();
    ClipChanged();
}

void ViewDrawing::SetHighColor(rgb_color color)
{
    fState->now.high = color;
}

void ViewDrawing::SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetHighColor(rgb_color{red, green, blue, alpha});
}

rgb_color ViewDrawing::HighColor() const
{
    return fState->now.high;
}

void ViewDrawing::SetLowColor(rgb_color color)
{
    fState->now.low = color;
}

void ViewDrawing::SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetLowColor(rgb_color{red, green, blue, alpha});
}

rgb_color ViewDrawing::LowColor() const
{
    return fState->now.low;
}

void ViewDrawing::SetDrawingMode(drawing_mode mode)
{
    fState->now.mode = mode;
}

drawing_mode ViewDrawing::DrawingMode() const
{
    return fState->now.mode;
}

void ViewDrawing::SetBlendingMode(source_alpha source, alpha_function alpha)
{
    fState->now.sourceAlpha = source;
    fState->now.alphaFunction = alpha;
}

void ViewDrawing::SetPenSize(float size)
{
    fState->now.penSize = std::max(1.0f, size);
}

float ViewDrawing::PenSize() const
{
    return fState->now.penSize;
}

void ViewDrawing::SetLineMode(cap_mode cap, join_mode join, float miterLimit)
{
    fState->now.cap = cap;
    fState->now.join = join;
    fState->now.miterLimit = miterLimit;
}

// Fonts

void ViewDrawing::SetFont(const BFont* font, uint32 mask)
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

void ViewDrawing::GetFont(BFont* font) const
{
    *font = fState->now.font;
}

void ViewDrawing::SetFontSize(float size)
{
    BFont font = fState->now.font;
    font.SetSize(size);
    SetFont(&font, B_FONT_SIZE); // what derives from this hears of it there
}

void ViewDrawing::GetFontHeight(font_height* height) const
{
    fState->now.font.GetHeight(height);
}

float ViewDrawing::StringWidth(const char* string) const
{
    return fState->now.font.StringWidth(string);
}

float ViewDrawing::StringWidth(const char* string, int32 length) const
{
    return fState->now.font.StringWidth(string, length);
}

void ViewDrawing::TruncateString(BString* text, uint32 mode, float width) const
{
    fState->now.font.TruncateString(text, mode, width);
}

// Clipping

void ViewDrawing::GetClippingRegion(BRegion* region) const
{
    CheckLock();
    if (region == nullptr) {
        return;
    }
    region->MakeEmpty();
    const BView& self = Self();
    ViewHost* host = self.fHost;
    if (host == nullptr) {
        return;
    }
    double x = 0;
    double y = 0;
    ViewAccess::GetOrigin(self, &x, &y);
    RegionAccess::Set(
        *region, host->DrawingRegion(self).translated(-static_cast<int>(x), -static_cast<int>(y)));
}

void ViewDrawing::ConstrainClippingRegion(BRegion* region)
{
    CheckLock();
    if (region != nullptr) {
        fState->now.clip = *region;
    } else {
        fState->now.clip.reset();
    }
    ClipChanged();
}

// Painting itself knows no views.
ViewPainter::ViewPainter(const BView& view) : fState(&ViewAccess::State(view).now)
{
    if (ViewHost* host = ViewAccess::Host(view)) {
        fTarget = host;
        fCanvas = host->BeginDrawing(view);
        ViewAccess::GetOrigin(view, &fX, &fY);
    }
}

} // namespace kits
