#pragma once

#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <QImage>
#include <QRegion>

#include <atomic>

namespace kits {

/// The picture of a window that the screen shows: painted into by the window's thread, read by the
/// server's.
///
/// The window copies finished damage into it and asks for a present; the server alone answers
/// exposes from it, so a window whose thread is busy is still shown whole. Thread: any. The lock is
/// held for copying pixels only.
class FrontImage
{
public:
    /// Copies `damage` (device pixels) of `canvas` into the image; takes the canvas's size and
    /// device pixel ratio when they differ (then everything is damage). Returns true when no
    /// present was pending: the caller then owes the server one `WindowLink::Present()`.
    bool Update(const QImage& canvas, const QRegion& damage);

    /// Draws the pending damage of the front image with `paint` under the lock and clears it.
    /// Thread: the server's.
    template<typename Paint>
    void TakeDamage(Paint paint)
    {
        MutexLock lock(fLock);
        fIsPresentPending = false;
        QRegion damage;
        damage.swap(fDamage);
        paint(static_cast<const QImage&>(fImage), damage);
    }

    /// A copy of the whole image, for pictures in tests.
    QImage Copy() const;

    /// When the first frame was on the screen, in system_time(); 0 before.
    /// Reset when the window is hidden, so that it speaks of the latest showing.
    std::atomic<bigtime_t> firstPresentTime{0};

private:
    mutable Mutex fLock;
    QImage fImage GUARDED_BY(fLock);
    QRegion fDamage GUARDED_BY(fLock); // device pixels
    bool fIsPresentPending GUARDED_BY(fLock) = false;
};

} // namespace kits
