#pragma once

#include <Rect.h>

namespace kits {

enum class MenuSide : uint8 {
    kBelow, // a menu of a bar: under its title, or else above it
    kRight, // a submenu: right of its item, or else left of it
};

/// Where a menu of that size goes on a screen: at the wished side of what it hangs on, else at the
/// other side, at last shifted until it fits. One that is larger than the screen begins at the
/// screen's edge and is cut. Units: screen units; `width` and `height` as BRect's.
BRect PlaceMenu(BRect anchor, float width, float height, BRect screen, MenuSide side);
/// The same for a menu that begins at `leftTop`, if the screen has room there.
BRect PlaceMenuAt(BPoint leftTop, float width, float height, BRect screen);

} // namespace kits
