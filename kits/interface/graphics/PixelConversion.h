#pragma once

#include <GraphicsDefs.h>

namespace kits {

/// 0 for a colour space that bitmaps do not have.
int32 BytesPerPixel(color_space space);

/// Converts `count` pixels; the two places do not overlap. Colours become the nearest entry of
/// B_CMAP8, less than half opaque ones its transparent entry; a B_RGB32 pixel of the colour
/// B_TRANSPARENT_COLOR is transparent.
void ConvertPixels(const void* from, color_space fromSpace, void* to, color_space toSpace,
                   int32 count);

} // namespace kits
