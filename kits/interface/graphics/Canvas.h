#pragma once

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <optional>
#include <thread>

namespace kits {

/// The picture that the views of one window paint into, and the one place where units become
/// pixels.
///
/// Every edge of every fill, clip and copy goes through Edge(), so that neighbours meet exactly at
/// any density. Thread: one at a time.
class Canvas
{
public:
    /// Takes a size in units and a density; keeps what fits when only the size changes.
    /// True when nothing of the old picture is left.
    bool SetSize(int widthUnits, int heightUnits, double scale);
    const QImage& Image() const { return fImage; }
    double Scale() const { return fScale; }
    bool IsNull() const { return fImage.isNull(); }

    /// The device pixel at which a place in units begins.
    int Edge(double units) const;
    /// How many device pixels a line of that breadth (1 or more units) is broad.
    int Thickness(double units) const;
    QRect ToDevice(const QRect& units) const;
    QRegion ToDevice(const QRegion& units) const;

    /// The painter, whose coordinates are device pixels and which has the clip of SetClip().
    QPainter& Painter();
    void SetClip(const QRegion& device);
    const QRegion& Clip() const { return fClip; }
    /// Ends painting; Painter() begins anew.
    void Finish();

    /// Whether a distance in units is a whole number of pixels.
    bool IsWhole(int units) const;
    /// Moves the pixels that are to be at `target` there, from `-dx, -dy` of it. Device pixels.
    void Move(const QRect& target, int dx, int dy);

private:
    QImage fImage;
    QImage fPixels; // the same memory without a density: its painter works in device pixels
    double fScale = 1;
    std::optional<QPainter> fPainter;
    std::thread::id fPainterThread; // what a painter holds of fonts belongs to the thread
    QRegion fClip;
    bool fIsClipSet = false;
};

} // namespace kits
