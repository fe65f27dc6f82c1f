#include "Surface.h"

#include "InputMethod.h"
#include "NativeWindow.h"
#include "WindowEvents.h"

#include <QExposeEvent>
#include <QInputMethodQueryEvent>
#include <QPainter>

#include <cmath>

namespace kits {

namespace {

constexpr QColor kGrey(216, 216, 216);

// The smallest rectangle in window units that covers these device pixels.
QRect UnitsAround(const QRect& device, qreal ratio)
{
    const QPoint leftTop(static_cast<int>(std::floor(device.left() / ratio)),
                         static_cast<int>(std::floor(device.top() / ratio)));
    const QPoint rightBottom(static_cast<int>(std::ceil((device.right() + 1) / ratio)),
                             static_cast<int>(std::ceil((device.bottom() + 1) / ratio)));
    return QRect(leftTop, rightBottom - QPoint(1, 1));
}

// The same pixels, read without a copy and without the ratio that would scale them.
QImage Undensed(const QImage& image)
{
    return QImage(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
                  image.format());
}

} // namespace

Surface::Surface(NativeWindow& owner, WindowEvents& events)
    : fOwner(owner), fEvents(events), fStore(this)
{
    setSurfaceType(QSurface::RasterSurface);
}

Surface::~Surface() = default;

QSize Surface::DeviceSize() const
{
    const qreal ratio = devicePixelRatio();
    return QSize(static_cast<int>(std::ceil(width() * ratio)),
                 static_cast<int>(std::ceil(height() * ratio)));
}

void Surface::Show(const QImage& image, const QRegion& region)
{
    const QImage source = Undensed(image);
    QRegion device = region & QRect(QPoint(0, 0), DeviceSize());
    const qreal ratio = devicePixelRatio();
    if (fStore.size() != size() || fStoreRatio != ratio) {
        fStore.resize(size());
        fStoreRatio = ratio;
        device = QRegion(QRect(QPoint(0, 0), DeviceSize()));
    }
    QRegion units;
    for (const QRect& rect : device) {
        units += UnitsAround(rect, ratio);
    }
    units &= QRect(QPoint(0, 0), size());
    if (units.isEmpty()) {
        return;
    }
    fStore.beginPaint(units);
    QPaintDevice* target = fStore.paintDevice();
    if (target != nullptr && target->devType() == QInternal::Image) {
        // Painted in device pixels, past the target's own ratio: so no pixel depends on rounding.
        auto* pixels = static_cast<QImage*>(target);
        QImage alias(pixels->bits(), pixels->width(), pixels->height(), pixels->bytesPerLine(),
                     pixels->format());
        QPainter painter(&alias);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect& rect : device) {
            const QRect covered = rect & QRect(QPoint(0, 0), image.size());
            if (covered != rect) {
                painter.fillRect(rect, kGrey);
            }
            if (!covered.isEmpty()) {
                painter.drawImage(covered.topLeft(), source, covered);
            }
        }
    }
    fStore.endPaint();
    fStore.flush(units);
}

void Surface::exposeEvent(QExposeEvent*)
{
    fOwner.ScaleMayHaveChanged();
    if (isExposed()) {
        fOwner.Exposed();
    }
}

void Surface::resizeEvent(QResizeEvent*)
{
    fOwner.ScaleMayHaveChanged();
    fOwner.GeometryChanged(geometry());
}

void Surface::moveEvent(QMoveEvent*)
{
    fOwner.ScaleMayHaveChanged();
    fOwner.GeometryChanged(geometry());
}

bool Surface::event(QEvent* event)
{
    if (fEvents.Input(fOwner.Token(), *event)) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::InputMethodQuery) {
        AnswerInputMethod(fOwner.GetPublished().inputMethod,
                          *static_cast<QInputMethodQueryEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::Close) {
        // Only the window's own thread knows whether it may go.
        event->ignore();
        fOwner.CloseAsked();
        return true;
    }
    if (event->type() == QEvent::WindowStateChange) {
        fOwner.StatesChanged(windowStates());
    }
    return QWindow::event(event);
}

QAccessibleInterface* Surface::accessibleRoot() const
{
    return fOwner.Accessible().Interface(AccessibleTree::kRoot);
}

} // namespace kits
