#pragma once

#include <QRect>

namespace kits {

/// Where a window's client area goes that was asked to be at `frame`: no larger than the screen's
/// free area, its title bar reachable. Frames that fit come back unchanged.
QRect FitWindow(const QRect& frame, const QRect& available, bool hasTitle);

/// Where a menu goes that was asked to be at `frame`: wholly inside, as far as it is small enough;
/// the left top corner stays visible when it is not.
QRect FitPopUp(const QRect& frame, const QRect& available);

} // namespace kits
