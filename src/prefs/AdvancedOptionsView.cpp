#include "prefs/AdvancedOptionsView.h"

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};

} // namespace

AdvancedOptionsView::AdvancedOptionsView(BRect frame)
    : BView(frame, "Advanced", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(kGrey);
}

} // namespace norvane
