#include "ViewPainter.h"

#include "ViewState.h"
#include "interface/graphics/FontAccess.h"
#include "interface/graphics/PictureShrinking.h"
#include "interface/graphics/VisibleText.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

QColor ColorFrom(rgb_color color, bool hasAlpha)
{
    return QColor(color.red, color.green, color.blue, hasAlpha ? color.alpha : 255);
}

} // namespace

// Units to pixels

QRect ViewPainter::Pixels(const BRect& rect) const
{
    if (!rect.IsValid()) {
        return {};
    }
    const int left = fCanvas->Edge(fX + static_cast<double>(rect.left));
    const int top = fCanvas->Edge(fY + static_cast<double>(rect.top));
    return QRect(left, top, fCanvas->Edge(fX + static_cast<double>(rect.right) + 1) - left,
                 fCanvas->Edge(fY + static_cast<double>(rect.bottom) + 1) - top);
}

QPointF ViewPainter::Centre(BPoint point) const
{
    return QPointF((fX + static_cast<double>(point.x) + 0.5) * Scale(),
                   (fY + static_cast<double>(point.y) + 0.5) * Scale());
}

QRectF ViewPainter::Centres(const BRect& rect) const
{
    return QRectF(Centre(rect.LeftTop()), Centre(rect.RightBottom()));
}

QRectF ViewPainter::Outline(const BRect& rect) const
{
    const double half = Scale() / 2;
    return Centres(rect).adjusted(-half, -half, half, half);
}

QRect ViewPainter::StraightLine(BPoint from, BPoint to) const
{
    // A broad pen lies around the line's middle.
    const double inset = std::floor((static_cast<double>(fState->penSize) - 1) / 2);
    const int thickness = fCanvas->Thickness(static_cast<double>(fState->penSize));
    const int left = fCanvas->Edge(fX + static_cast<double>(std::min(from.x, to.x)) - inset);
    const int top = fCanvas->Edge(fY + static_cast<double>(std::min(from.y, to.y)) - inset);
    const int right = fCanvas->Edge(fX + static_cast<double>(std::max(from.x, to.x)) - inset);
    const int bottom = fCanvas->Edge(fY + static_cast<double>(std::max(from.y, to.y)) - inset);
    return QRect(left, top, right - left + thickness, bottom - top + thickness);
}

void ViewPainter::GetFrame(const BRect& rect, QRect sides[4]) const
{
    const QRect top = StraightLine(rect.LeftTop(), rect.RightTop());
    const QRect bottom = StraightLine(rect.LeftBottom(), rect.RightBottom());
    const int thickness = top.height();
    const int height = bottom.top() - top.bottom() - 1;
    sides[0] = top;
    sides[1] = bottom.top() > top.top() ? bottom : QRect();
    sides[2] = QRect(top.left(), top.bottom() + 1, thickness, height);
    sides[3] = top.width() > thickness
                   ? QRect(top.right() - thickness + 1, top.bottom() + 1, thickness, height)
                   : QRect();
}

// Colours and modes

QBrush ViewPainter::BrushFor(rgb_color color) const
{
    return QBrush(ColorFrom(color, fState->mode == B_OP_ALPHA));
}

QBrush ViewPainter::BrushFor(const pattern& p) const
{
    if (fState->mode == B_OP_INVERT) {
        return QBrush(Qt::white);
    }
    if (p == B_SOLID_HIGH) {
        return BrushFor(fState->high);
    }
    if (p == B_SOLID_LOW) {
        return fState->mode == B_OP_COPY ? BrushFor(fState->low) : QBrush(Qt::transparent);
    }
    const bool hasAlpha = fState->mode == B_OP_ALPHA;
    const QRgb high = ColorFrom(fState->high, hasAlpha).rgba();
    const QRgb low =
        fState->mode == B_OP_OVER ? qRgba(0, 0, 0, 0) : ColorFrom(fState->low, hasAlpha).rgba();
    const int grain = std::max(1, static_cast<int>(Scale()));
    QImage tile(8 * grain, 8 * grain, QImage::Format_ARGB32);
    for (int y = 0; y < tile.height(); ++y) {
        for (int x = 0; x < tile.width(); ++x) {
            const bool isHigh = (p.data[y / grain] >> (7 - x / grain) & 1) != 0;
            tile.setPixel(x, y, isHigh ? high : low);
        }
    }
    return QBrush(tile);
}

// False when nothing is to be drawn.
bool ViewPainter::SetMode(bool isCrisp)
{
    QPainter& painter = fCanvas->Painter();
    switch (fState->mode) {
    case B_OP_OVER:
        if (fState->high == B_TRANSPARENT_COLOR) {
            return false;
        }
        [[fallthrough]];
    case B_OP_ALPHA:
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        break;
    case B_OP_INVERT:
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        break;
    case B_OP_COPY:
        painter.setCompositionMode(isCrisp ? QPainter::CompositionMode_Source
                                           : QPainter::CompositionMode_SourceOver);
        break;
    }
    painter.setRenderHint(QPainter::Antialiasing, !isCrisp);
    return true;
}

void ViewPainter::Drawn(const QRectF& device)
{
    fTarget->Drawn(device.toAlignedRect());
}

// Whole pixels

void ViewPainter::Fill(const QRect& device, const pattern& p)
{
    if (!device.isEmpty() && SetMode(true)) {
        fCanvas->Painter().fillRect(device, BrushFor(p));
        Drawn(device);
    }
}

void ViewPainter::FillColor(const QRect& device, rgb_color color)
{
    if (!device.isEmpty() && SetMode(true)) {
        fCanvas->Painter().fillRect(device, BrushFor(color));
        Drawn(device);
    }
}

void ViewPainter::Invert(const QRect& device)
{
    QPainter& painter = fCanvas->Painter();
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    painter.fillRect(device, Qt::white);
    Drawn(device);
}

// Smooth shapes

QPen ViewPainter::PenFor(const QBrush& brush) const
{
    const Qt::PenCapStyle cap = fState->cap == B_ROUND_CAP    ? Qt::RoundCap
                                : fState->cap == B_SQUARE_CAP ? Qt::SquareCap
                                                              : Qt::FlatCap;
    const Qt::PenJoinStyle join = fState->join == B_ROUND_JOIN   ? Qt::RoundJoin
                                  : fState->join == B_BEVEL_JOIN ? Qt::BevelJoin
                                                                 : Qt::MiterJoin;
    QPen pen(brush, fCanvas->Thickness(static_cast<double>(fState->penSize)), Qt::SolidLine, cap,
             join);
    pen.setMiterLimit(static_cast<double>(fState->miterLimit));
    return pen;
}

void ViewPainter::Line(BPoint from, BPoint to, const QBrush& brush)
{
    if (from.x == to.x || from.y == to.y) {
        if (SetMode(true)) {
            const QRect device = StraightLine(from, to);
            fCanvas->Painter().fillRect(device, brush);
            Drawn(device);
        }
        return;
    }
    if (SetMode(false)) {
        QPainter& painter = fCanvas->Painter();
        QPen pen = PenFor(brush);
        if (pen.capStyle() == Qt::FlatCap) {
            pen.setCapStyle(Qt::SquareCap); // both end pixels belong to the line
        }
        painter.setPen(pen);
        painter.drawLine(Centre(from), Centre(to));
        const double margin = pen.widthF() + 1;
        Drawn(QRectF(Centre(from), Centre(to))
                  .normalized()
                  .adjusted(-margin, -margin, margin, margin));
    }
}

void ViewPainter::Ellipse(const BRect& rect, const pattern& p, bool isFilled)
{
    if (!rect.IsValid() || !SetMode(false)) {
        return;
    }
    QPainter& painter = fCanvas->Painter();
    painter.setPen(isFilled ? QPen(Qt::NoPen) : PenFor(BrushFor(p)));
    painter.setBrush(isFilled ? BrushFor(p) : QBrush(Qt::NoBrush));
    painter.drawEllipse(isFilled ? Outline(rect) : Centres(rect));
    const double margin = fCanvas->Thickness(static_cast<double>(fState->penSize)) + 1;
    Drawn(Outline(rect).adjusted(-margin, -margin, margin, margin));
}

void ViewPainter::RoundRect(const BRect& rect, float xRadius, float yRadius, const pattern& p,
                            bool isFilled)
{
    if (!rect.IsValid() || !SetMode(false)) {
        return;
    }
    QPainter& painter = fCanvas->Painter();
    painter.setPen(isFilled ? QPen(Qt::NoPen) : PenFor(BrushFor(p)));
    painter.setBrush(isFilled ? BrushFor(p) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(isFilled ? Outline(rect) : Centres(rect),
                            static_cast<double>(xRadius) * Scale(),
                            static_cast<double>(yRadius) * Scale());
    const double margin = fCanvas->Thickness(static_cast<double>(fState->penSize)) + 1;
    Drawn(Outline(rect).adjusted(-margin, -margin, margin, margin));
}

void ViewPainter::Polygon(const BPoint* points, int32 count, const pattern& p, bool isFilled,
                          bool isClosed)
{
    if (points == nullptr || count < 2 || !SetMode(false)) {
        return;
    }
    QPolygonF polygon;
    for (int32 i = 0; i < count; ++i) {
        polygon << Centre(points[i]);
    }
    QPainter& painter = fCanvas->Painter();
    const QBrush brush = BrushFor(p);
    // A filled shape covers the pixels of its corners and sides, whose middles it goes through.
    painter.setPen(fState->mode == B_OP_INVERT && isFilled ? QPen(Qt::NoPen) : PenFor(brush));
    painter.setBrush(isFilled ? brush : QBrush(Qt::NoBrush));
    if (isFilled || isClosed) {
        painter.drawPolygon(polygon);
    } else {
        painter.drawPolyline(polygon);
    }
    // Sharp corners reach out by the mitre.
    const double margin = fCanvas->Thickness(static_cast<double>(fState->penSize)) *
                              std::max(1.0, static_cast<double>(fState->miterLimit)) +
                          1;
    Drawn(polygon.boundingRect().adjusted(-margin, -margin, margin, margin));
}

// Text and pictures

void ViewPainter::Text(std::string_view text, BPoint where)
{
    if (!SetMode(false)) {
        return;
    }
    const ThreadFont& font = FontAccess::For(fState->font);
    QPainter& painter = fCanvas->Painter();
    painter.setFont(font.font);
    painter.setPen(
        QPen(fState->mode == B_OP_INVERT ? QColor(Qt::white) : BrushFor(fState->high).color()));
    painter.setTransform(QTransform::fromScale(Scale(), Scale()));
    const double baseLine = fY + static_cast<double>(where.y);
    painter.drawText(QPointF(fX + static_cast<double>(where.x), baseLine), VisibleText(text));
    painter.resetTransform();
    // Letters of other scripts may reach beyond the font's own height, and to either side.
    const double height = font.metrics.height();
    const QRect clip = fCanvas->Clip().boundingRect();
    Drawn(
        QRectF(clip.left(), (baseLine - 2 * height) * Scale(), clip.width(), 3 * height * Scale()));
}

void ViewPainter::Units(const QRectF& area, const std::function<void(QPainter&)>& paint)
{
    if (!SetMode(false)) {
        return;
    }
    QPainter& painter = fCanvas->Painter();
    painter.setPen(QPen(BrushFor(fState->high).color()));
    painter.setTransform(QTransform::fromScale(Scale(), Scale()).translate(fX, fY));
    paint(painter);
    painter.resetTransform();
    Drawn(QTransform::fromScale(Scale(), Scale()).mapRect(area.translated(fX, fY)));
}

void ViewPainter::Picture(const QImage& picture, const QRectF& source, const QRect& target)
{
    if (target.isEmpty() || source.isEmpty()) {
        return;
    }
    QPainter& painter = fCanvas->Painter();
    painter.setCompositionMode(fState->mode == B_OP_COPY ? QPainter::CompositionMode_Source
                                                         : QPainter::CompositionMode_SourceOver);
    // Whole multiples stay crisp; anything else would drop or double single columns.
    const double across = target.width() / source.width();
    const bool isWhole = across == std::floor(across) &&
                         target.height() == static_cast<int>(source.height() * across);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole);
    const bool isFaded = fState->mode == B_OP_ALPHA && fState->sourceAlpha == B_CONSTANT_ALPHA;
    painter.setOpacity(isFaded ? fState->high.alpha / 255.0 : 1.0);
    const QRect seen = target & fCanvas->Clip().boundingRect();
    if (!IsShrunk(picture, source, target)) {
        painter.drawImage(QRectF(target), picture, source);
    } else if (!seen.isEmpty()) {
        painter.drawImage(seen.topLeft(), ShrinkPicture(picture, source, target, seen));
    }
    painter.setOpacity(1.0);
    Drawn(target);
}

} // namespace kits
