#pragma once

#include <QRect>

#include <vector>

namespace kits {

/// What a title bar is taken to need above the client area.
constexpr int kTitleHeight = 24;

/// The one of these areas that shows most of `frame`, or else is the nearest to it; -1 without any.
int AreaOf(const QRect& frame, const std::vector<QRect>& areas);

/// How large a client area may be where so much is free.
QSize LargestSize(const QRect& available, bool hasTitle);

/// Where a window's client area goes that was asked to be at `frame`: no larger than the screen's
/// free area, its title bar reachable. Frames that fit come back unchanged.
QRect FitWindow(const QRect& frame, const QRect& available, bool hasTitle);

/// The same where `rooms` are the free areas of all screens: fitted to the one that shows most of
/// it; a window that none shows goes onto the nearest one, whole.
QRect FitWindow(const QRect& frame, const std::vector<QRect>& rooms, bool hasTitle);

/// Where a menu goes that was asked to be at `frame`: wholly inside, as far as it is small enough;
/// the left top corner stays visible when it is not.
QRect FitPopUp(const QRect& frame, const QRect& available);

} // namespace kits
