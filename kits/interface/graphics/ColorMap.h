#pragma once

#include <GraphicsDefs.h>

namespace kits {

/// The entry of the system's colour map that is nearest to the colour, never the transparent one.
/// Thread: any.
uint8 NearestIndex(uint8 red, uint8 green, uint8 blue);

} // namespace kits
