#include "panes/ScrollIntoSight.h"

#include <algorithm>

namespace norvane {

namespace {

/// One axis of it.
float Start(float seenStart, float seenEnd, float partStart, float partEnd)
{
    const float missing = std::max(partEnd - seenEnd, 0.0f);
    return std::min(seenStart + missing, partStart);
}

} // namespace

BPoint ScrolledToShow(BRect seen, BRect part)
{
    return {Start(seen.left, seen.right, part.left, part.right),
            Start(seen.top, seen.bottom, part.top, part.bottom)};
}

} // namespace norvane
