#include "FrontImage.h"

#include <algorithm>

namespace kits {

bool FrontImage::Update(const QImage& canvas, const QRegion& damage)
{
    MutexLock lock(fLock);
    QRegion copied = damage & canvas.rect();
    if (fImage.size() != canvas.size() || fImage.format() != canvas.format()) {
        fImage = QImage(canvas.size(), canvas.format());
        fImage.setDevicePixelRatio(canvas.devicePixelRatio());
        copied = QRegion(canvas.rect());
        fDamage = {};
    } else if (fImage.devicePixelRatio() != canvas.devicePixelRatio()) {
        fImage.setDevicePixelRatio(canvas.devicePixelRatio());
        copied = QRegion(canvas.rect());
    }
    const qsizetype bytesPerPixel = canvas.depth() / 8;
    for (const QRect& rect : copied) {
        const qsizetype offset = rect.left() * bytesPerPixel;
        const size_t length = static_cast<size_t>(rect.width() * bytesPerPixel);
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            std::copy_n(canvas.constScanLine(y) + offset, length, fImage.scanLine(y) + offset);
        }
        fDamage += rect; // not the region, whose data the two threads would share
    }
    const bool mustPresent = !fIsPresentPending && !fDamage.isEmpty();
    fIsPresentPending = fIsPresentPending || mustPresent;
    return mustPresent;
}

QImage FrontImage::Copy() const
{
    MutexLock lock(fLock);
    return fImage.copy();
}

} // namespace kits
