#pragma once

#include <Point.h>

namespace norvane {

class DirListItem;

/// A press without modifiers that a list follows until its release.
struct MousePress
{
    BPoint where;
    DirListItem* row = nullptr; // may be null; cleared when the row goes
    bool isInPlace = true;      // the pointer never left the square around the press
};

} // namespace norvane
