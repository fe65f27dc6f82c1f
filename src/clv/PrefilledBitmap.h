#pragma once

#include <Bitmap.h>

namespace norvane {

/// A bitmap filled from static data when it is made.
class PrefilledBitmap : public BBitmap
{
public:
    PrefilledBitmap(BRect bounds, color_space space, const void* data, bool acceptsViews = false,
                    bool needsContiguous = false);
};

} // namespace norvane
