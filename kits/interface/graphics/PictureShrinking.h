#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>

namespace kits {

/// Whether ShrinkPicture() does what is wanted better than the painter: some of the pixels would
/// not be seen at all otherwise.
bool IsShrunk(const QImage& picture, const QRectF& source, const QRect& target);

/// The part of a picture's area `source`, drawn smaller in `target`, that lies in `part` of it:
/// each pixel is the average of what it stands for. Parts that are drawn one by one fit each other
/// exactly. Costs what is seen: of large pictures no more than 36 pixels are looked at for each.
QImage ShrinkPicture(const QImage& picture, const QRectF& source, const QRect& target,
                     const QRect& part);

} // namespace kits
