#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace kits {

bool Canvas::SetSize(int widthUnits, int heightUnits, double scale)
{
    // Rounded up: the native window's own size may be a pixel more than the rounded one.
    const QSize size(std::max(1, static_cast<int>(std::ceil(widthUnits * scale))),
                     std::max(1, static_cast<int>(std::ceil(heightUnits * scale))));
    if (size == fImage.size() && scale == fScale) {
        return false;
    }
    Finish();
    fPixels = QImage();
    const bool isNew = fImage.isNull() || scale != fScale;
    QImage old = std::exchange(fImage, QImage(size, QImage::Format_RGB32));
    fImage.setDevicePixelRatio(scale);
    fScale = scale;
    fImage.fill(Qt::white);
    fPixels = QImage(fImage.bits(), fImage.width(), fImage.height(), fImage.bytesPerLine(),
                     fImage.format());
    if (isNew) {
        return true;
    }
    const int rows = std::min(old.height(), fImage.height());
    const auto length = static_cast<size_t>(std::min(old.bytesPerLine(), fImage.bytesPerLine()));
    for (int row = 0; row < rows; ++row) {
        std::memcpy(fPixels.scanLine(row), old.constScanLine(row), length);
    }
    return false;
}

int Canvas::Edge(double units) const
{
    return static_cast<int>(std::floor(units * fScale + 0.5));
}

int Canvas::Thickness(double units) const
{
    return std::max(1, static_cast<int>(std::floor(units * fScale + 0.25)));
}

QRect Canvas::ToDevice(const QRect& units) const
{
    const int left = Edge(units.left());
    const int top = Edge(units.top());
    return QRect(left, top, Edge(units.left() + units.width()) - left,
                 Edge(units.top() + units.height()) - top);
}

QRegion Canvas::ToDevice(const QRegion& units) const
{
    if (fScale == 1) {
        return units;
    }
    QRegion device;
    for (const QRect& rect : units) {
        device += ToDevice(rect);
    }
    return device;
}

QPainter& Canvas::Painter()
{
    if (fPainter && fPainterThread != std::this_thread::get_id()) {
        Finish();
    }
    if (!fPainter) {
        fPainter.emplace(&fPixels);
        fPainterThread = std::this_thread::get_id();
        fIsClipSet = false;
    }
    if (!fIsClipSet) {
        fPainter->setClipRegion(fClip);
        fIsClipSet = true;
    }
    return *fPainter;
}

void Canvas::SetClip(const QRegion& device)
{
    fClip = device;
    fIsClipSet = false;
}

void Canvas::Finish()
{
    fPainter.reset();
}

bool Canvas::IsWhole(int units) const
{
    const double device = units * fScale;
    return device == std::floor(device);
}

void Canvas::Move(const QRect& target, int dx, int dy)
{
    const QRect all(QPoint(0, 0), fImage.size());
    const QRect to = target & all & all.translated(dx, dy);
    if (to.isEmpty()) {
        return;
    }
    const auto length = static_cast<size_t>(to.width()) * 4;
    const auto place = [this](int x, int y) {
        return fPixels.scanLine(y) + static_cast<ptrdiff_t>(x) * 4;
    };
    // Rows are taken in the order that reads each one before it is written over.
    for (int i = 0; i < to.height(); ++i) {
        const int y = dy > 0 ? to.bottom() - i : to.top() + i;
        std::memmove(place(to.left(), y), place(to.left() - dx, y - dy), length);
    }
}

} // namespace kits
