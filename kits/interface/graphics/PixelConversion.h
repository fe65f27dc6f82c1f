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

/// Whether `count` pixels of B_RGB32 all cover as they are in memory: their fourth byte, which says
/// nothing in that space, is full, and, unless `isKeyed` is false, none has the colour that stands
/// for transparent.
bool CoverAll(const void* pixels, int32 count, bool isKeyed);

/// How many pixels were converted so far, by all threads.
int64 CountConvertedPixels();

} // namespace kits
