#include <Box.h>

#include "interface/views/Look.h"

#include <Font.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLabelLeft = 10;
constexpr float kLabelGap = 4; // between the label and the line at both its sides

} // namespace

BBox::BBox(BRect frame, const char* name, uint32 resizingMode, uint32 flags, border_style border)
    : BView(frame, name, resizingMode, flags | B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fBorder(border)
{
    SetFont(be_bold_font);
}

void BBox::SetBorder(border_style border)
{
    if (border == fBorder) {
        return;
    }
    fBorder = border;
    if (Window() != nullptr) {
        Invalidate();
    }
}

void BBox::SetLabel(const char* label)
{
    RemoveLabelView();
    fHasLabel = label != nullptr;
    fLabel = label != nullptr ? label : "";
    if (Window() != nullptr) {
        Invalidate();
    }
}

status_t BBox::SetLabel(BView* label)
{
    SetLabel(static_cast<const char*>(nullptr));
    if (label != nullptr) {
        fLabelView = label;
        label->MoveTo(kLabelLeft, 0);
        AddChild(label);
    }
    return B_OK;
}

const char* BBox::Label() const
{
    return fHasLabel ? fLabel.c_str() : nullptr;
}

void BBox::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
    } else {
        SetViewColor(kits::look::kGround);
    }
    SetLowColor(ViewColor());
}

void BBox::Draw(BRect)
{
    BRect frame = Bounds();
    frame.top += TopBorderOffset();
    DrawBorder(frame);
    if (fHasLabel) {
        DrawLabel();
    }
}

// The top line runs through the middle of the label.
float BBox::TopBorderOffset()
{
    if (fLabelView != nullptr) {
        return std::floor(fLabelView->Frame().Height() / 2);
    }
    if (!fHasLabel) {
        return 0;
    }
    font_height height;
    GetFontHeight(&height);
    return std::floor((height.ascent + height.descent) / 2);
}

void BBox::DrawBorder(BRect frame)
{
    switch (fBorder) {
    case B_FANCY_BORDER:
        // Two lines of light and shadow look like a groove.
        kits::look::Frame(this, frame.InsetByCopy(1, 1), kits::look::kShine, kits::look::kShadow);
        kits::look::Frame(this, frame, kits::look::kShadow, kits::look::kShine);
        break;
    case B_PLAIN_BORDER:
        SetHighColor(kits::look::kOutline);
        StrokeRect(frame);
        break;
    default:
        break;
    }
}

void BBox::DrawLabel()
{
    font_height height;
    GetFontHeight(&height);
    const float width = std::ceil(StringWidth(fLabel.c_str()));
    kits::look::Fill(this,
                     BRect(kLabelLeft - kLabelGap, 0, kLabelLeft + width + kLabelGap - 1,
                           height.ascent + height.descent - 1),
                     ViewColor());
    SetHighColor(kits::look::kText);
    SetLowColor(ViewColor());
    DrawString(fLabel.c_str(), BPoint(kLabelLeft, height.ascent));
}

void BBox::RemoveLabelView()
{
    if (fLabelView != nullptr) {
        RemoveChild(fLabelView);
        delete fLabelView;
        fLabelView = nullptr;
    }
}
