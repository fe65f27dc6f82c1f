#include <Bitmap.h>

#include "BitmapAccess.h"
#include "PixelConversion.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

using kits::BitmapData;

namespace {

constexpr int32 kLargestSide = 16384;

int32 SideOf(float from, float to)
{
    const double side = std::floor(static_cast<double>(to) - static_cast<double>(from)) + 1;
    return side >= 1 && side <= kLargestSide ? static_cast<int32>(side) : 0;
}

BitmapData MakeData(BRect bounds, color_space space)
{
    BitmapData data;
    data.bounds = bounds;
    const int32 bytesPerPixel = kits::BytesPerPixel(space);
    const int32 width = SideOf(bounds.left, bounds.right);
    const int32 height = SideOf(bounds.top, bounds.bottom);
    if (bytesPerPixel == 0 || width == 0 || height == 0) {
        return data;
    }
    data.space = space;
    data.width = width;
    data.height = height;
    data.bytesPerRow = (width * bytesPerPixel + 3) / 4 * 4;
    const uint8 blank =
        space == B_RGBA32 ? 0 : 255; // 255 is transparent in B_CMAP8, white in B_RGB32
    data.bits.assign(static_cast<size_t>(data.bytesPerRow) * static_cast<size_t>(height), blank);
    return data;
}

// The pictures for other densities no longer show what the pixels do.
void ForgetPictures(BitmapData& data)
{
    data.doubled = QImage();
    data.drawn = QImage();
    data.source = nullptr;
}

} // namespace

BBitmap::BBitmap(BRect bounds, color_space space, bool /*acceptsViews*/, bool /*needsContiguous*/)
    : fData(std::make_unique<BitmapData>(MakeData(bounds, space)))
{
}

BBitmap::BBitmap(const BBitmap* source, bool /*acceptsViews*/, bool /*needsContiguous*/)
    : fData(source != nullptr ? std::make_unique<BitmapData>(*source->fData)
                              : std::make_unique<BitmapData>())
{
}

BBitmap::~BBitmap() = default;

status_t BBitmap::InitCheck() const
{
    return fData->space != B_NO_COLOR_SPACE ? B_OK : B_BAD_VALUE;
}

bool BBitmap::IsValid() const
{
    return InitCheck() == B_OK;
}

BRect BBitmap::Bounds() const
{
    return fData->bounds;
}

color_space BBitmap::ColorSpace() const
{
    return fData->space;
}

void* BBitmap::Bits()
{
    ForgetPictures(*fData);
    return IsValid() ? fData->bits.data() : nullptr;
}

const void* BBitmap::Bits() const
{
    return IsValid() ? fData->bits.data() : nullptr;
}

int32 BBitmap::BitsLength() const
{
    return static_cast<int32>(fData->bits.size());
}

int32 BBitmap::BytesPerRow() const
{
    return fData->bytesPerRow;
}

void BBitmap::SetBits(const void* data, int32 length, int32 offset, color_space space)
{
    if (data == nullptr || length <= 0 || offset < 0 || !IsValid()) {
        return;
    }
    if (space == fData->space) {
        ForgetPictures(*fData);
        const int32 room = std::max(0, BitsLength() - offset);
        std::memcpy(fData->bits.data() + std::min(offset, BitsLength()), data,
                    static_cast<size_t>(std::min(length, room)));
        return;
    }
    ImportBits(data, length, fData->width * kits::BytesPerPixel(space), offset, space);
}

status_t BBitmap::ImportBits(const void* data, int32 length, int32 bytesPerRow, int32 offset,
                             color_space space)
{
    const int32 sourcePixel = kits::BytesPerPixel(space);
    if (data == nullptr || !IsValid() || sourcePixel == 0 || offset < 0 || offset >= BitsLength() ||
        bytesPerRow < sourcePixel || length < 0) {
        return B_BAD_VALUE;
    }
    const int32 firstRow = offset / fData->bytesPerRow;
    const int32 firstColumn = offset % fData->bytesPerRow / kits::BytesPerPixel(fData->space);
    const int32 columns = std::min(bytesPerRow / sourcePixel, fData->width - firstColumn);
    const int32 rows = (length + bytesPerRow - 1) / bytesPerRow;
    if (columns <= 0 || firstRow + rows > fData->height) {
        return B_BAD_VALUE;
    }
    ForgetPictures(*fData);
    const auto* from = static_cast<const uint8*>(data);
    for (int32 row = 0; row < rows; ++row) {
        const int32 given = std::min(columns, (length - row * bytesPerRow) / sourcePixel);
        uint8* to = fData->bits.data() +
                    static_cast<ptrdiff_t>(firstRow + row) * fData->bytesPerRow +
                    static_cast<ptrdiff_t>(firstColumn) * kits::BytesPerPixel(fData->space);
        kits::ConvertPixels(from + static_cast<ptrdiff_t>(row) * bytesPerRow, space, to,
                            fData->space, given);
    }
    return B_OK;
}

status_t BBitmap::SetDoubleBits(const void* data, int32 length, color_space space)
{
    const int32 width = fData->width * 2;
    const int32 height = fData->height * 2;
    const int32 bytesPerRow = width * kits::BytesPerPixel(space);
    if (data == nullptr || !IsValid() || bytesPerRow == 0 || length != bytesPerRow * height) {
        return B_BAD_VALUE;
    }
    QImage doubled(width, height, QImage::Format_ARGB32);
    const auto* from = static_cast<const uint8*>(data);
    for (int32 row = 0; row < height; ++row) {
        kits::ConvertPixels(from + static_cast<ptrdiff_t>(row) * bytesPerRow, space,
                            doubled.scanLine(row), B_RGBA32, width);
    }
    fData->doubled = std::move(doubled);
    return B_OK;
}

namespace kits {

bool BitmapAccess::SetPicture(BBitmap& bitmap, const PictureSource& source)
{
    if (!bitmap.IsValid()) {
        return false;
    }
    BitmapData& data = *bitmap.fData;
    const QImage picture = source(data.width, data.height).convertToFormat(QImage::Format_ARGB32);
    if (picture.width() != data.width || picture.height() != data.height) {
        return false;
    }
    for (int32 row = 0; row < data.height; ++row) {
        ConvertPixels(picture.constScanLine(row), B_RGBA32,
                      data.bits.data() + static_cast<ptrdiff_t>(row) * data.bytesPerRow, data.space,
                      data.width);
    }
    ForgetPictures(data);
    data.source = source;
    data.drawn = picture;
    return true;
}

QImage BitmapAccess::Picture(const BBitmap& bitmap, double scale, bool hasAlpha,
                             double* pictureScale)
{
    BitmapData& data = *bitmap.fData;
    *pictureScale = 1;
    if (data.source) {
        const QSize size(static_cast<int>(std::lround(data.width * scale)),
                         static_cast<int>(std::lround(data.height * scale)));
        if (data.drawn.size() != size) {
            const QImage fresh = data.source(size.width(), size.height());
            data.drawn = fresh.size() == size ? fresh : data.drawn;
        }
        *pictureScale = static_cast<double>(data.drawn.width()) / data.width;
        return data.drawn;
    }
    if (scale > 1 && !data.doubled.isNull()) {
        *pictureScale = 2;
        return data.doubled;
    }
    return Plain(data, hasAlpha);
}

QImage BitmapAccess::Plain(const BitmapData& data, bool hasAlpha)
{
    QImage picture(data.width, data.height,
                   hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int32 row = 0; row < data.height; ++row) {
        ConvertPixels(data.bits.data() + static_cast<ptrdiff_t>(row) * data.bytesPerRow, data.space,
                      picture.scanLine(row), B_RGBA32, data.width);
    }
    return picture;
}

} // namespace kits
