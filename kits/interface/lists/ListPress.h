#pragma once

#include "interface/views/Ticker.h"

#include <Point.h>

#include <memory>

namespace kits {

/// A press on a list that is being followed until its release.
class ListPress
{
public:
    ListPress(BPoint where, int32 row, bool wasSelected)
        : fWhere(where), fRow(row), fWasSelected(wasSelected)
    {
    }

    BPoint Where() const { return fWhere; }
    int32 Row() const { return fRow; }
    bool WasSelected() const { return fWasSelected; }

    /// Whether the pointer has gone far enough for the hand to have meant it.
    bool HasLeft(BPoint place, float distance) const
    {
        return place.x < fWhere.x - distance || place.x > fWhere.x + distance ||
               place.y < fWhere.y - distance || place.y > fWhere.y + distance;
    }

    bool wasDragOffered = false;
    bool isSweeping = false;           // the selection follows the pointer
    BPoint pointer;                    // where it was last
    std::unique_ptr<Ticker> scrolling; // while the pointer is above or below the view

private:
    BPoint fWhere;
    int32 fRow;
    bool fWasSelected;
};

} // namespace kits
