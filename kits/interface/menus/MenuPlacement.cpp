#include "MenuPlacement.h"

#include <algorithm>

namespace kits {

namespace {

float Shifted(float start, float length, float low, float high)
{
    return std::max(low, std::min(start, high - length));
}

// Beside the anchor's end, or before its start when only there is room. Flipping comes before
// shifting: a menu that is only shifted would cover what it hangs on.
float Flipped(float anchorStart, float anchorEnd, float length, float low, float high)
{
    const float after = anchorEnd + 1;
    const float before = anchorStart - 1 - length;
    return after + length > high && before >= low ? before : after;
}

} // namespace

BRect PlaceMenu(BRect anchor, float width, float height, BRect screen, MenuSide side)
{
    float left = anchor.left;
    float top = anchor.top;
    if (side == MenuSide::kBelow) {
        top = Flipped(anchor.top, anchor.bottom, height, screen.top, screen.bottom);
    } else {
        left = Flipped(anchor.left, anchor.right, width, screen.left, screen.right);
    }
    return PlaceMenuAt(BPoint(left, top), width, height, screen);
}

BRect PlaceMenuAt(BPoint leftTop, float width, float height, BRect screen)
{
    width = std::min(width, screen.Width());
    height = std::min(height, screen.Height());
    const float left = Shifted(leftTop.x, width, screen.left, screen.right);
    const float top = Shifted(leftTop.y, height, screen.top, screen.bottom);
    return BRect(left, top, left + width, top + height);
}

} // namespace kits
