#pragma once

#include <Point.h>
#include <Rect.h>

namespace norvane {

/// Where a view that shows `seen` is to be scrolled to, so that it shows `part`: as little as that
/// takes, and from its left and top edges on where it has no room for the whole part.
BPoint ScrolledToShow(BRect seen, BRect part);

} // namespace norvane
