#include "Fitting.h"

#include <algorithm>

namespace kits {

namespace {

constexpr int kVisibleWidth = 100;

// The lower bound wins where both cannot be held.
int Clamp(int value, int low, int high)
{
    return std::max(low, std::min(value, high));
}

// How far apart two stretches are; 0 when they touch.
qint64 Gap(int first, int last, int otherFirst, int otherLast)
{
    return std::max({0, otherFirst - last, first - otherLast});
}

qint64 SquareDistance(const QRect& one, const QRect& other)
{
    const qint64 across = Gap(one.left(), one.right(), other.left(), other.right());
    const qint64 down = Gap(one.top(), one.bottom(), other.top(), other.bottom());
    return across * across + down * down;
}

qint64 Shared(const QRect& one, const QRect& other)
{
    const QRect both = one & other;
    return both.isEmpty() ? 0 : qint64{both.width()} * both.height();
}

QRect WithoutTitle(const QRect& available, bool hasTitle)
{
    return available.adjusted(0, hasTitle ? kTitleHeight : 0, 0, 0);
}

} // namespace

int AreaOf(const QRect& frame, const std::vector<QRect>& areas)
{
    int best = -1;
    for (int i = 0; i < static_cast<int>(areas.size()); ++i) {
        const QRect& area = areas[static_cast<size_t>(i)];
        if (best < 0) {
            best = i;
            continue;
        }
        const QRect& other = areas[static_cast<size_t>(best)];
        const qint64 shown = Shared(frame, area);
        const qint64 shownThere = Shared(frame, other);
        if (shown > shownThere ||
            (shown == shownThere && SquareDistance(frame, area) < SquareDistance(frame, other))) {
            best = i;
        }
    }
    return best;
}

QSize LargestSize(const QRect& available, bool hasTitle)
{
    return WithoutTitle(available, hasTitle).size();
}

QRect FitWindow(const QRect& frame, const QRect& available, bool hasTitle)
{
    const QRect room = WithoutTitle(available, hasTitle);
    const QSize size = frame.size().boundedTo(room.size());
    const int visibleWidth = std::min(kVisibleWidth, size.width());
    const int left = Clamp(frame.left(), room.left() + visibleWidth - size.width(),
                           room.right() + 1 - visibleWidth);
    const int top =
        Clamp(frame.top(), room.top(), room.bottom() + 1 - std::min(kTitleHeight, size.height()));
    return QRect(QPoint(left, top), size);
}

QRect FitWindow(const QRect& frame, const std::vector<QRect>& rooms, bool hasTitle)
{
    const int number = AreaOf(frame, rooms);
    if (number < 0) {
        return frame;
    }
    const QRect& available = rooms[static_cast<size_t>(number)];
    if (frame.intersects(available)) {
        return FitWindow(frame, available, hasTitle);
    }
    const QRect room = WithoutTitle(available, hasTitle);
    return FitPopUp(QRect(frame.topLeft(), frame.size().boundedTo(room.size())), room);
}

QRect FitPopUp(const QRect& frame, const QRect& available)
{
    const int left = Clamp(frame.left(), available.left(), available.right() + 1 - frame.width());
    const int top = Clamp(frame.top(), available.top(), available.bottom() + 1 - frame.height());
    return QRect(QPoint(left, top), frame.size());
}

} // namespace kits
