#pragma once

#include <Rect.h>

namespace norvane {

/// The frame of the outline's arrow pictures.
inline const BRect kArrowBounds(0, 0, 10, 10);

/// Bits in B_CMAP8 for a bitmap of kArrowBounds: the arrow of a collapsed row.
const void* RightArrowBits();
/// The arrow of an expanded row.
const void* DownArrowBits();

} // namespace norvane
