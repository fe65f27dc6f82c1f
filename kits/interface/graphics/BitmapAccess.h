#pragma once

#include <Bitmap.h>

#include <QImage>
#include <QRectF>

#include <functional>

namespace kits {

/// Draws a bitmap's picture for a number of device pixels; a null image when it cannot.
using PictureSource = std::function<QImage(int32 widthPx, int32 heightPx)>;

/// The pixels lie in one image, where the program writes them and drawing reads them: nobody else
/// keeps a copy of it, which would make the place of the pixels change.
struct BitmapData
{
    BitmapData() = default;
    BitmapData(BRect bounds, color_space space);
    /// Takes over an image of a bitmap's own format. Without memory for it: no valid bitmap.
    explicit BitmapData(QImage&& picture);
    BitmapData(const BitmapData& other);
    BitmapData& operator=(const BitmapData&) = delete;

    size_t Length() const { return static_cast<size_t>(image.sizeInBytes()); }

    BRect bounds;
    color_space space = B_NO_COLOR_SPACE;
    int32 width = 0;
    int32 height = 0;
    int32 bytesPerRow = 0;
    QImage image;          // with what is transparent in it
    QImage covering;       // the same pixels, each of them covering
    uint8* bits = nullptr; // of both
    QImage doubled;        // the picture for scale 2; null when there is none
    PictureSource source;  // pictures for any size; empty when there is none
    QImage drawn;          // what `source` gave last
    bool isOpaque = false; // all of it, as long as nobody writes: drawing need not look

private:
    void MakeImages();
};

/// What of an image is drawn.
struct BitmapPart
{
    QImage image;
    QRectF pixels;
};

/// What draws bitmaps and what fills them with pictures. Thread: the bitmap's.
class BitmapAccess
{
public:
    /// A bitmap of an image of Format_RGB32 or Format_ARGB32, whose pixels are not copied unless
    /// somebody else holds it, too; null for any other image. Returned to the caller.
    static std::unique_ptr<BBitmap> Adopt(QImage&& picture);
    /// Fills the bitmap with a picture and keeps where it came from, so that it is drawn sharp at
    /// every density. False when the bitmap is not valid or `source` gives nothing; nothing changes
    /// then.
    static bool SetPicture(BBitmap& bitmap, const PictureSource& source);
    /// The picture of `part`, which is in the bitmap's pixels, for a screen of that density:
    /// B_CMAP8's transparent entry and the alpha of B_RGBA32 are honoured when `hasAlpha`; else
    /// every pixel covers. The pixels themselves are lent, until they are written again, but for
    /// parts whose bytes cannot be drawn as they are.
    static BitmapPart Picture(const BBitmap& bitmap, const QRectF& part, double scale,
                              bool hasAlpha);

private:
    static BitmapPart Plain(const BitmapData& data, const QRectF& part, bool hasAlpha);
};

} // namespace kits
