#include "panes/NVHeader.h"

#include "panes/DirPane.h"

#include <Font.h>
#include <ViewDescription.h>

#include <cmath>

namespace norvane {

namespace {

constexpr float kTextLeft = 9;
constexpr float kTextDrop = 5; // of the baseline, below its offset

} // namespace

int StripBaseline()
{
    font_height height;
    be_plain_font->GetHeight(&height);
    return static_cast<int>(std::ceil(height.ascent));
}

float StripTextBottom(int baseline)
{
    return static_cast<float>(baseline) + kTextDrop;
}

void DrawStrip(BView& strip, const char* text, int baseline)
{
    const BRect bounds = strip.Bounds();
    const rgb_color textColor = strip.HighColor();
    strip.FillRect(bounds, B_SOLID_LOW);
    strip.SetHighColor(DirPane::kWhite);
    strip.StrokeLine(bounds.LeftTop(), bounds.RightTop());
    strip.StrokeLine(bounds.LeftTop(), bounds.LeftBottom());
    strip.SetHighColor(DirPane::kBevel);
    strip.StrokeLine(bounds.LeftBottom(), bounds.RightBottom());
    strip.StrokeLine(bounds.RightTop(), bounds.RightBottom());
    strip.SetHighColor(textColor);
    strip.SetDrawingMode(B_OP_OVER);
    strip.DrawString(text, BPoint(kTextLeft, StripTextBottom(baseline)));
    strip.SetDrawingMode(B_OP_COPY);
}

NVHeader::NVHeader(BRect frame, const char* text, const char* name, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE), fText(text),
      fBaseline(StripBaseline())
{
    SetSelected(false);
}

void NVHeader::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    description->name = fText;
}

void NVHeader::Draw(BRect)
{
    DrawStrip(*this, fText.c_str(), fBaseline);
}

void NVHeader::MouseDown(BPoint)
{
    if (auto* pane = dynamic_cast<DirPane*>(Parent())) {
        pane->SetFocus();
    }
}

void NVHeader::SetSelected(bool isSelected)
{
    fIsSelected = isSelected;
    const rgb_color background = isSelected ? DirPane::kSelection : DirPane::kBackground;
    SetViewColor(background);
    SetLowColor(background);
    SetHighColor(isSelected ? DirPane::kWhite : DirPane::kBlack);
    Invalidate();
}

} // namespace norvane
