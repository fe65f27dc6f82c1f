#include <StatusBar.h>

#include "interface/views/Look.h"

#include <AppDefs.h>
#include <Font.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kTextHeight = 15;
constexpr float kTextGap = 6; // between the texts of the two sides
constexpr rgb_color kBarColor = {50, 150, 255, 255};

const char* OrEmpty(const char* text)
{
    return text != nullptr ? text : "";
}

} // namespace

BStatusBar::BStatusBar(BRect frame, const char* name, const char* label, const char* trailingLabel)
    : BView(frame, name, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_FRAME_EVENTS),
      fLabel(OrEmpty(label)), fTrailingLabel(OrEmpty(trailingLabel)), fBarColor(kBarColor)
{
}

void BStatusBar::SetBarColor(rgb_color color)
{
    fBarColor = color;
    if (Window() != nullptr) {
        Invalidate(BarFrame());
    }
}

void BStatusBar::SetBarHeight(float height)
{
    if (height == fBarHeight) {
        return;
    }
    fBarHeight = height;
    if (Window() != nullptr) {
        TakeOwnHeight();
        Invalidate();
    }
}

void BStatusBar::SetText(const char* text)
{
    SetLeftText(fLabel, OrEmpty(text));
}

void BStatusBar::SetTrailingText(const char* text)
{
    SetRightText(OrEmpty(text), fTrailingLabel);
}

void BStatusBar::SetMaxValue(float max)
{
    ShowValue(fValue, max);
}

void BStatusBar::Update(float delta, const char* text, const char* trailingText)
{
    if (text != nullptr) {
        SetLeftText(fLabel, text);
    }
    if (trailingText != nullptr) {
        SetRightText(trailingText, fTrailingLabel);
    }
    ShowValue(fValue + delta, fMax);
}

void BStatusBar::Reset(const char* label, const char* trailingLabel)
{
    SetLeftText(OrEmpty(label), "");
    SetRightText("", OrEmpty(trailingLabel));
    ShowValue(0, 100);
}

// BView

void BStatusBar::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
        SetLowColor(ViewColor());
    }
    TakeOwnHeight();
}

void BStatusBar::MessageReceived(BMessage* message)
{
    float delta = 0;
    const char* left = nullptr;
    const char* right = nullptr;
    switch (message->what) {
    case B_UPDATE_STATUS_BAR:
        message->FindFloat("delta", &delta);
        message->FindString("text", &left);
        message->FindString("trailing_text", &right);
        Update(delta, left, right);
        break;
    case B_RESET_STATUS_BAR:
        message->FindString("label", &left);
        message->FindString("trailing_label", &right);
        Reset(left, right);
        break;
    default:
        BView::MessageReceived(message);
    }
}

void BStatusBar::Draw(BRect updateRect)
{
    if (updateRect.Intersects(TextLine())) {
        DrawTexts();
    }
    if (updateRect.Intersects(BarFrame())) {
        DrawBar();
    }
}

void BStatusBar::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    TakeOwnHeight();
    // The right text and the bar's end moved with the edge.
    Invalidate();
}

void BStatusBar::GetPreferredSize(float* width, float* height)
{
    *width = Bounds().Width();
    *height = kTextHeight + fBarHeight + 1;
}

void BStatusBar::TakeOwnHeight()
{
    const float height = kTextHeight + fBarHeight + 1;
    if (Bounds().Height() != height) {
        ResizeTo(Bounds().Width(), height);
    }
}

BRect BStatusBar::TextLine() const
{
    return BRect(0, 0, Bounds().right, kTextHeight - 1);
}

BRect BStatusBar::BarFrame() const
{
    return BRect(0, kTextHeight + 1, Bounds().right, kTextHeight + 1 + fBarHeight);
}

// How many units of the bar's inside are filled.
float BStatusBar::FilledWidth() const
{
    const float inside = BarFrame().Width() - 1;
    if (fMax <= 0 || inside <= 0) {
        return 0;
    }
    return static_cast<float>(std::floor(inside * std::min(1.0, fValue / fMax)));
}

void BStatusBar::SetLeftText(const std::string& label, const std::string& text)
{
    if (label == fLabel && text == fText) {
        return;
    }
    fLabel = label;
    fText = text;
    InvalidateTexts();
}

void BStatusBar::SetRightText(const std::string& text, const std::string& label)
{
    if (text == fTrailingText && label == fTrailingLabel) {
        return;
    }
    fTrailingText = text;
    fTrailingLabel = label;
    InvalidateTexts();
}

void BStatusBar::InvalidateTexts()
{
    if (Window() != nullptr) {
        Invalidate(TextLine());
    }
}

// Only the columns that change their colour are drawn again.
void BStatusBar::ShowValue(double value, double max)
{
    const float before = FilledWidth();
    fMax = max;
    fValue = std::clamp(value, 0.0, std::max(0.0, max));
    const float after = FilledWidth();
    if (before == after || Window() == nullptr) {
        return;
    }
    const BRect bar = BarFrame().InsetByCopy(1, 1);
    // One more on the left: the edge of the filled part moves with it.
    const float first = std::max(0.0f, std::min(before, after) - 1);
    Invalidate(BRect(bar.left + first, bar.top, bar.left + std::max(before, after), bar.bottom));
}

void BStatusBar::DrawTexts()
{
    font_height height;
    GetFontHeight(&height);
    const float right = Bounds().right;
    const std::string trailing = fTrailingText + fTrailingLabel;
    const float trailingWidth = std::ceil(StringWidth(trailing.c_str()));
    SetHighColor(kits::look::kText);
    SetLowColor(ViewColor());
    DrawString(trailing.c_str(), BPoint(right + 1 - trailingWidth, height.ascent));

    BFont font;
    GetFont(&font);
    BString leading((fLabel + fText).c_str());
    const float room = right + 1 - trailingWidth - (trailingWidth > 0 ? kTextGap : 0);
    font.TruncateString(&leading, B_TRUNCATE_MIDDLE, room);
    DrawString(leading.String(), BPoint(0, height.ascent));
}

void BStatusBar::DrawBar()
{
    const BRect frame = BarFrame();
    kits::look::SunkenFrame(this, frame);
    const BRect inside = frame.InsetByCopy(1, 1);
    if (!inside.IsValid()) {
        return;
    }
    const float filled = FilledWidth();
    if (filled > 0) {
        const BRect done(inside.left, inside.top, inside.left + filled - 1, inside.bottom);
        kits::look::Fill(this, done, fBarColor);
        kits::look::Frame(this, done, tint_color(fBarColor, B_LIGHTEN_2_TINT),
                          tint_color(fBarColor, B_DARKEN_2_TINT));
    }
    const BRect rest(inside.left + filled, inside.top, inside.right, inside.bottom);
    kits::look::Fill(this, rest, kits::look::kShine);
}

void BStatusBar::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kProgressBar;
    if (Text() != nullptr && Text()[0] != '\0') {
        description->name = Text();
    }
    const float whole = MaxValue();
    const float share = whole > 0 ? CurrentValue() / whole * 100 : 0;
    description->value = std::to_string(static_cast<int32>(share)) + " %";
}
