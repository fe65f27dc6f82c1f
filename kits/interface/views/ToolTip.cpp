#include <ToolTip.h>

#include "TipText.h"

#include <InterfaceDefs.h>
#include <View.h>
#include <ViewDescription.h>

#include <algorithm>
#include <cmath>
#include <vector>

BToolTip::BToolTip() = default;

BToolTip::~BToolTip() = default;

namespace {

constexpr float kWidest = 400; // of a line, in view units
constexpr float kBeside = 5;   // the text
constexpr float kAbove = 3;
constexpr rgb_color kBorder = {118, 118, 96, 255};

class TextTipView : public BView
{
public:
    explicit TextTipView(const std::string& text)
        : BView(BRect(0, 0, 10, 10), "tip", B_FOLLOW_NONE, B_WILL_DRAW), fText(text),
          fLines(kits::TipLines(*be_plain_font, text, kWidest))
    {
        float width = 0;
        for (const std::string& line : fLines) {
            width = std::max(width, be_plain_font->StringWidth(line.c_str()));
        }
        font_height height;
        be_plain_font->GetHeight(&height);
        fAscent = std::ceil(height.ascent);
        fLineHeight = fAscent + std::ceil(height.descent);
        ResizeTo(std::ceil(width) + 2 * kBeside - 1,
                 fLineHeight * static_cast<float>(fLines.size()) + 2 * kAbove - 1);
        SetViewColor(ui_color(B_TOOL_TIP_BACKGROUND_COLOR));
        SetLowColor(ViewColor());
    }

    void Draw(BRect) override
    {
        SetHighColor(kBorder);
        StrokeRect(Bounds());
        SetHighColor(ui_color(B_TOOL_TIP_TEXT_COLOR));
        float base = kAbove + fAscent;
        for (const std::string& line : fLines) {
            DrawString(line.c_str(), BPoint(kBeside, base));
            base += fLineHeight;
        }
    }

    void Describe(BViewDescription* description) const override
    {
        description->role = BViewDescription::Role::kStaticText;
        description->name = fText;
    }

private:
    const std::string fText;
    const std::vector<std::string> fLines;
    float fAscent = 0;
    float fLineHeight = 0;
};

} // namespace

BTextToolTip::BTextToolTip(const char* text) : fText(text != nullptr ? text : "") {}

BTextToolTip::~BTextToolTip() = default;

BView* BTextToolTip::View() const
{
    if (fView == nullptr || (fIsViewOld && fView->Window() == nullptr)) {
        fIsViewOld = false;
        fView = std::make_unique<TextTipView>(fText);
    }
    return fView.get();
}

void BTextToolTip::SetText(const char* text)
{
    const std::string changed = text != nullptr ? text : "";
    if (changed != fText) {
        fText = changed;
        fIsViewOld = true;
    }
}
