#include "Fitting.h"

#include <algorithm>

namespace kits {

namespace {

constexpr int kTitleHeight = 24;
constexpr int kVisibleWidth = 100;

// The lower bound wins where both cannot be held.
int Clamp(int value, int low, int high)
{
    return std::max(low, std::min(value, high));
}

} // namespace

QRect FitWindow(const QRect& frame, const QRect& available, bool hasTitle)
{
    const int titleHeight = hasTitle ? kTitleHeight : 0;
    const QSize size = frame.size().boundedTo(available.size() - QSize(0, titleHeight));
    const int visibleWidth = std::min(kVisibleWidth, size.width());
    const int left = Clamp(frame.left(), available.left() + visibleWidth - size.width(),
                           available.right() + 1 - visibleWidth);
    const int top = Clamp(frame.top(), available.top() + titleHeight,
                          available.bottom() + 1 - std::min(kTitleHeight, size.height()));
    return QRect(QPoint(left, top), size);
}

QRect FitPopUp(const QRect& frame, const QRect& available)
{
    const int left = Clamp(frame.left(), available.left(), available.right() + 1 - frame.width());
    const int top = Clamp(frame.top(), available.top(), available.bottom() + 1 - frame.height());
    return QRect(QPoint(left, top), frame.size());
}

} // namespace kits
