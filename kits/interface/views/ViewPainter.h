#pragma once

#include "interface/graphics/Canvas.h"

#include <GraphicsDefs.h>
#include <Rect.h>

#include <QBrush>
#include <QPolygonF>

#include <functional>
#include <string_view>

class BView;

namespace kits {

struct DrawState;

/// Who is told what was drawn on a canvas.
class DrawingTarget
{
public:
    virtual ~DrawingTarget() = default;
    /// Says that device pixels were drawn.
    virtual void Drawn(const QRect& device) = 0;
};

/// Draws one thing for a view: turns its units into device pixels, its colours and mode into the
/// painter's. Thread: the view's.
class ViewPainter
{
public:
    explicit ViewPainter(const BView& view);

    /// False when nothing of the view can be seen or painted.
    explicit operator bool() const { return fCanvas != nullptr; }

    const DrawState& State() const { return *fState; }
    double Scale() const { return fCanvas->Scale(); }
    QRect Pixels(const BRect& rect) const;
    /// The centre of a unit, for shapes that are not made of whole pixels.
    QPointF Centre(BPoint point) const;
    QRectF Centres(const BRect& rect) const;
    QRectF Outline(const BRect& rect) const;
    /// The device pixels of a line that is level or upright.
    QRect StraightLine(BPoint from, BPoint to) const;
    /// The device pixels of a frame: top, bottom, left and right, which do not overlap.
    void GetFrame(const BRect& rect, QRect sides[4]) const;

    void Fill(const QRect& device, const pattern& p);
    void FillColor(const QRect& device, rgb_color color);
    void Invert(const QRect& device);
    void Line(BPoint from, BPoint to, const QBrush& brush);
    void Ellipse(const BRect& rect, const pattern& p, bool isFilled);
    void RoundRect(const BRect& rect, float xRadius, float yRadius, const pattern& p,
                   bool isFilled);
    void Polygon(const BPoint* points, int32 count, const pattern& p, bool isFilled, bool isClosed);
    void Text(std::string_view text, BPoint where);
    /// Lets `paint` draw text: its painter has the view's high colour and the view's units.
    /// `area`, in view units too, is what it may reach.
    void Units(const QRectF& area, const std::function<void(QPainter&)>& paint);
    void Picture(const QImage& picture, const QRectF& source, const QRect& target);

    /// The brush for a pattern in the view's colours and mode.
    QBrush BrushFor(const pattern& p) const;
    QBrush BrushFor(rgb_color color) const;

private:
    bool SetMode(bool isCrisp);
    QPen PenFor(const QBrush& brush) const;
    void Drawn(const QRectF& device);

    DrawingTarget* fTarget = nullptr; // null when fCanvas is
    Canvas* fCanvas = nullptr;
    const DrawState* fState;
    double fX = 0; // where the view's point (0, 0) lies in the window
    double fY = 0;
};

} // namespace kits
