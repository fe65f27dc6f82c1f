#include "clv/PrefilledBitmap.h"

namespace norvane {

PrefilledBitmap::PrefilledBitmap(BRect bounds, color_space space, const void* data,
                                 bool acceptsViews, bool needsContiguous)
    : BBitmap(bounds, space, acceptsViews, needsContiguous)
{
    SetBits(data, BitsLength(), 0, space);
}

} // namespace norvane
