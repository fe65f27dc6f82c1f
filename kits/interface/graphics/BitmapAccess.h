#pragma once

#include <Bitmap.h>

#include <QImage>

#include <functional>
#include <vector>

namespace kits {

/// Draws a bitmap's picture for a number of device pixels; a null image when it cannot.
using PictureSource = std::function<QImage(int32 widthPx, int32 heightPx)>;

struct BitmapData
{
    BRect bounds;
    color_space space = B_NO_COLOR_SPACE;
    int32 width = 0;
    int32 height = 0;
    int32 bytesPerRow = 0;
    std::vector<uint8> bits;
    QImage doubled;       // the picture for scale 2; null when there is none
    PictureSource source; // pictures for any size; empty when there is none
    QImage drawn;         // what `source` gave last
};

/// What draws bitmaps and what fills them with pictures. Thread: the bitmap's.
class BitmapAccess
{
public:
    /// Fills the bitmap with a picture and keeps where it came from, so that it is drawn sharp at
    /// every density. False when the bitmap is not valid or `source` gives nothing; nothing changes
    /// then.
    static bool SetPicture(BBitmap& bitmap, const PictureSource& source);
    /// The picture for a screen of that density: B_CMAP8's transparent entry and the alpha of
    /// B_RGBA32 are honoured when `hasAlpha`; else every pixel covers. `*scale` tells the density
    /// it was drawn for.
    static QImage Picture(const BBitmap& bitmap, double scale, bool hasAlpha, double* pictureScale);

private:
    static QImage Plain(const BitmapData& data, bool hasAlpha);
};

} // namespace kits
