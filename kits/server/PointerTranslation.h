#pragma once

#include <SupportDefs.h>

#include <QPoint>
#include <Qt>

namespace kits {

/// The platform's bits of mouse buttons.
uint32 ButtonsFrom(Qt::MouseButtons buttons);

/// Counts the presses of double and triple clicks, one for all windows.
///
/// The system's own double-click events come every second press whatever window was hit between,
/// and also after a press that closed a menu; so presses are counted here.
class ClickCounter
{
public:
    struct Press
    {
        int32 window = 0;
        uint32 button = 0;
        QPoint where; // screen units
        bigtime_t when = 0;
    };

    /// 1, 2, 3, ... for presses of one button at one place of one window, each within the interval
    /// of the last.
    int32 Count(const Press& press, bigtime_t interval, int distance);
    /// What comes next is a first click: something else happened between.
    void Reset() { fCount = 0; }

private:
    Press fLast;
    int32 fCount = 0;
};

/// Turns wheel angles into whole lines and keeps what is left for the next event.
class WheelSum
{
public:
    /// `angle` in eighths of a degree, `linesPerNotch` as the desktop has it. Returns lines to
    /// scroll.
    QPoint Add(QPoint angle, int linesPerNotch);
    void Reset() { fRest = {}; }

private:
    QPoint fRest; // in parts of a line: angle x lines per notch
};

} // namespace kits
