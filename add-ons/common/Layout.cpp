#include "common/Layout.h"

#include <Font.h>
#include <Screen.h>
#include <View.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace add_ons {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kLeastButtonWidth = 75;
constexpr float kBesideLabel = 20;
constexpr float kAroundLabel = 9;

} // namespace

BRect CentredFrame(float width, float height)
{
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    width = std::min(width, screen.Width());
    height = std::min(height, screen.Height());
    const float left = std::round((screen.left + screen.right - width) / 2);
    const float top = std::round((screen.top + screen.bottom - height) / 2);
    return BRect(left, top, left + width, top + height);
}

BView* MakeGround(BWindow* window)
{
    auto* ground = new BView(window->Bounds(), "ground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    ground->SetViewColor(kGrey);
    ground->SetLowColor(kGrey);
    window->AddChild(ground);
    return ground;
}

float ButtonWidth(const char* label)
{
    return std::max(kLeastButtonWidth, std::ceil(BFont().StringWidth(label)) + kBesideLabel);
}

float ButtonHeight()
{
    return LineHeight() + kAroundLabel;
}

float LineHeight()
{
    font_height height;
    BFont().GetHeight(&height);
    return std::ceil(height.ascent + height.descent);
}

} // namespace add_ons
