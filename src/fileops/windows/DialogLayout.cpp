#include "fileops/windows/DialogLayout.h"

#include <Alert.h>
#include <Font.h>
#include <Screen.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kLeastButtonWidth = 75;
constexpr float kBesideLabel = 20;
constexpr float kAroundLabel = 9;

} // namespace

BRect CentredFrame(BRect around, float width, float height)
{
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    width = std::min(width, screen.Width());
    height = std::min(height, screen.Height());
    const auto place = [](float middle, float size, float first, float last) {
        return std::clamp(std::round(middle - size / 2), first, std::max(first, last - size));
    };
    const float left = place((around.left + around.right) / 2, width, screen.left, screen.right);
    const float top = place((around.top + around.bottom) / 2, height, screen.top, screen.bottom);
    return BRect(left, top, left + width, top + height);
}

BView* MakeDialogGround(BRect bounds, const char* name)
{
    auto* ground = new BView(bounds, name, B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    ground->SetViewColor(kGrey);
    ground->SetLowColor(kGrey);
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

bool WarnAndAsk(const std::string& question, const char* button)
{
    // It deletes itself once it is answered.
    auto* alert = new BAlert("Hey", question.c_str(), "Cancel", button, nullptr, B_WIDTH_AS_USUAL,
                             B_WARNING_ALERT);
    return alert->Go() == 1;
}

} // namespace norvane
