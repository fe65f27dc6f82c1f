#include "PointerTranslation.h"

#include <InputConstants.h>

namespace kits {

uint32 ButtonsFrom(Qt::MouseButtons buttons)
{
    uint32 result = 0;
    if ((buttons & Qt::LeftButton) != 0) {
        result |= B_PRIMARY_MOUSE_BUTTON;
    }
    if ((buttons & Qt::RightButton) != 0) {
        result |= B_SECONDARY_MOUSE_BUTTON;
    }
    if ((buttons & Qt::MiddleButton) != 0) {
        result |= B_TERTIARY_MOUSE_BUTTON;
    }
    // Back and forward: the platform counts buttons on.
    if ((buttons & Qt::BackButton) != 0) {
        result |= 0x08;
    }
    if ((buttons & Qt::ForwardButton) != 0) {
        result |= 0x10;
    }
    return result;
}

int32 ClickCounter::Count(const Press& press, bigtime_t interval, int distance)
{
    const QPoint moved = press.where - fLast.where;
    const bool goesOn = fCount > 0 && press.window == fLast.window &&
                        press.button == fLast.button && press.when - fLast.when <= interval &&
                        qAbs(moved.x()) <= distance && qAbs(moved.y()) <= distance;
    fCount = goesOn ? fCount + 1 : 1;
    fLast = press;
    return fCount;
}

QPoint WheelSum::Add(QPoint angle, int linesPerNotch)
{
    constexpr int kNotch = 120;
    const auto take = [linesPerNotch](int& rest, int added) {
        // Turning back begins anew: the rest of the other direction would delay it.
        if ((rest < 0) != (added < 0) && added != 0) {
            rest = 0;
        }
        rest += added * linesPerNotch;
        const int lines = rest / kNotch;
        rest -= lines * kNotch;
        return lines;
    };
    // The system counts up and left as positive.
    return QPoint(take(fRest.rx(), -angle.x()), take(fRest.ry(), -angle.y()));
}

} // namespace kits
