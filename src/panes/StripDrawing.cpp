#include "panes/StripDrawing.h"

#include <Font.h>
#include <String.h>
#include <View.h>

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
    strip.SetHighColor(kStripLight);
    strip.StrokeLine(bounds.LeftTop(), bounds.RightTop());
    strip.StrokeLine(bounds.LeftTop(), bounds.LeftBottom());
    strip.SetHighColor(kStripShadow);
    strip.StrokeLine(bounds.LeftBottom(), bounds.RightBottom());
    strip.StrokeLine(bounds.RightTop(), bounds.RightBottom());
    strip.SetHighColor(textColor);
    strip.SetDrawingMode(B_OP_OVER);
    BString shown(text);
    strip.TruncateString(&shown, B_TRUNCATE_MIDDLE, bounds.Width() - 2 * kTextLeft);
    strip.DrawString(shown.String(), BPoint(kTextLeft, StripTextBottom(baseline)));
    strip.SetDrawingMode(B_OP_COPY);
}

} // namespace norvane
