#pragma once

#include "ScrollGeometry.h"
#include "interface/views/Ticker.h"

#include <memory>

namespace kits {

/// A press on a scroll bar that is being followed until its release.
class ScrollPress
{
public:
    ScrollPress(ScrollGeometry::Part pressed, float position, float thumbStart)
        : part(pressed), pointer(position), grip(position - thumbStart)
    {
    }

    ScrollGeometry::Part part;
    float pointer;        // along the bar, where it was last
    float grip;           // how far into the thumb it was taken
    bool isInside = true; // over the part that was pressed; an arrow pauses while it is not
    std::unique_ptr<Ticker> repeating; // for arrows and the trough
};

} // namespace kits
