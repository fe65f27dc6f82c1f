#pragma once

#include "WindowShape.h"

#include <QRect>
#include <QSize>
#include <Qt>

namespace kits {

/// The toolkit's kind and frame buttons for a window of this look, feel and flags.
Qt::WindowFlags WindowFlagsFor(const WindowShape& shape);

/// The sizes a person may give the window; equal where the flags forbid resizing.
struct SizeLimits
{
    QSize smallest;
    QSize largest;
};
SizeLimits SizeLimitsFor(const WindowShape& shape);

/// Whether the window has a frame with a title bar.
bool HasTitle(const WindowShape& shape);

/// The frame in the toolkit's terms: left, top and how many pixels.
QRect RectFrom(const BRect& frame);
BRect RectTo(const QRect& frame);

} // namespace kits
