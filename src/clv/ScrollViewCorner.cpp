#include "clv/ScrollViewCorner.h"

namespace norvane {

namespace {

constexpr float kSide = 13; // from the first to the last pixel of fourteen
constexpr rgb_color kLine = {184, 184, 184, 255};
constexpr rgb_color kIdle = {240, 240, 240, 255};

} // namespace

ScrollViewCorner::ScrollViewCorner(float left, float top)
    : BView(BRect(left, top, left + kSide, top + kSide), "ScrollViewCorner",
            B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, B_WILL_DRAW)
{
    SetViewColor(kIdle);
    SetHighColor(kLine);
}

void ScrollViewCorner::Draw(BRect)
{
    StrokeLine(BPoint(0, kSide), BPoint(kSide, kSide));
    StrokeLine(BPoint(kSide, 0), BPoint(kSide, kSide - 1));
}

} // namespace norvane
