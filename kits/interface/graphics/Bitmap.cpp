#include <Bitmap.h>
#include <Screen.h>

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

QImage::Format FormatOf(color_space space)
{
    switch (space) {
    case B_CMAP8:
        return QImage::Format_Indexed8;
    case B_RGBA32:
        return QImage::Format_ARGB32;
    default:
        return QImage::Format_RGB32;
    }
}

QRgb Rgba(rgb_color color, int alpha)
{
    return qRgba(color.red, color.green, color.blue, alpha);
}

// The table of B_CMAP8, whose last entry is transparent or covers like the others.
QList<QRgb> ColorTable(bool hasAlpha)
{
    QList<QRgb> table;
    table.reserve(256);
    for (const rgb_color& color : system_colors()->color_list) {
        table.append(Rgba(color, 255));
    }
    if (hasAlpha) {
        table[B_TRANSPARENT_8_BIT] = Rgba(B_TRANSPARENT_COLOR, 0);
    }
    return table;
}

// The pictures for other densities no longer show what the pixels do.
void ForgetPictures(BitmapData& data)
{
    data.doubled = QImage();
    data.drawn = QImage();
    data.source = nullptr;
    data.isOpaque = false;
}

} // namespace

BBitmap::BBitmap(BRect bounds, color_space space, bool /*acceptsViews*/, bool /*needsContiguous*/)
    : fData(std::make_unique<BitmapData>(bounds, space))
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
    return IsValid() ? fData->bits : nullptr;
}

const void* BBitmap::Bits() const
{
    return IsValid() ? fData->bits : nullptr;
}

int32 BBitmap::BitsLength() const
{
    return static_cast<int32>(fData->Length());
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
        std::memcpy(fData->bits + std::min(offset, BitsLength()), data,
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
        uint8* to = fData->bits + static_cast<ptrdiff_t>(firstRow + row) * fData->bytesPerRow +
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

BitmapData::BitmapData(BRect where, color_space colors) : bounds(where)
{
    width = SideOf(where.left, where.right);
    height = SideOf(where.top, where.bottom);
    if (BytesPerPixel(colors) != 0 && width != 0 && height != 0) {
        image = QImage(width, height, FormatOf(colors));
    }
    if (image.isNull()) {
        return;
    }
    space = colors;
    MakeImages();
    // 255 is transparent in B_CMAP8, white in B_RGB32.
    std::memset(bits, space == B_RGBA32 ? 0 : 255, Length());
}

BitmapData::BitmapData(QImage&& picture)
    : bounds(0, 0, static_cast<float>(picture.width()) - 1,
             static_cast<float>(picture.height()) - 1),
      space(picture.hasAlphaChannel() ? B_RGBA32 : B_RGB32), width(picture.width()),
      height(picture.height()), image(std::move(picture))
{
    image.detach();
    if (image.isNull()) {
        space = B_NO_COLOR_SPACE;
        return;
    }
    MakeImages();
    isOpaque = space == B_RGB32;
}

BitmapData::BitmapData(const BitmapData& other)
    : bounds(other.bounds), space(other.space), width(other.width), height(other.height),
      image(other.image.copy()), doubled(other.doubled), source(other.source), drawn(other.drawn)
{
    if (!image.isNull()) {
        MakeImages();
    } else {
        space = B_NO_COLOR_SPACE; // no memory for it
    }
}

void BitmapData::MakeImages()
{
    bits = image.bits();
    bytesPerRow = static_cast<int32>(image.bytesPerLine());
    covering = QImage(bits, width, height, image.bytesPerLine(),
                      space == B_CMAP8 ? QImage::Format_Indexed8 : QImage::Format_RGB32);
    if (space == B_CMAP8) {
        image.setColorTable(ColorTable(true));
        covering.setColorTable(ColorTable(false));
    }
}

std::unique_ptr<BBitmap> BitmapAccess::Adopt(QImage&& picture)
{
    if (picture.format() != QImage::Format_RGB32 && picture.format() != QImage::Format_ARGB32) {
        return nullptr;
    }
    auto bitmap = std::make_unique<BBitmap>(static_cast<const BBitmap*>(nullptr));
    bitmap->fData = std::make_unique<BitmapData>(std::move(picture));
    return bitmap->IsValid() ? std::move(bitmap) : nullptr;
}

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
                      data.bits + static_cast<ptrdiff_t>(row) * data.bytesPerRow, data.space,
                      data.width);
    }
    ForgetPictures(data);
    data.source = source;
    data.drawn = picture;
    return true;
}

BitmapPart BitmapAccess::Picture(const BBitmap& bitmap, const QRectF& part, double scale,
                                 bool hasAlpha)
{
    BitmapData& data = *bitmap.fData;
    const auto scaled = [&](const QImage& picture) {
        const double factor = static_cast<double>(picture.width()) / data.width;
        const QRectF pixels(part.topLeft() * factor, part.size() * factor);
        return BitmapPart{picture, pixels & QRectF(picture.rect())};
    };
    if (data.source) {
        const QSize size(static_cast<int>(std::lround(data.width * scale)),
                         static_cast<int>(std::lround(data.height * scale)));
        if (data.drawn.size() != size) {
            const QImage fresh = data.source(size.width(), size.height());
            data.drawn = fresh.size() == size ? fresh : data.drawn;
        }
        return scaled(data.drawn);
    }
    if (scale > 1 && !data.doubled.isNull()) {
        return scaled(data.doubled);
    }
    return Plain(data, part & QRectF(0, 0, data.width, data.height), hasAlpha);
}

BitmapPart BitmapAccess::Plain(const BitmapData& data, const QRectF& part, bool hasAlpha)
{
    if (data.space == B_CMAP8 || (data.space == B_RGBA32 && hasAlpha)) {
        return {hasAlpha ? data.image : data.covering, part};
    }
    if (data.isOpaque) {
        return {data.covering, part};
    }
    const QRect area = part.toAlignedRect();
    const auto rowOf = [&](int row) {
        return data.bits + static_cast<ptrdiff_t>(area.top() + row) * data.bytesPerRow +
               static_cast<ptrdiff_t>(area.left()) * 4;
    };
    bool isDrawable = true;
    for (int row = 0; row < area.height() && isDrawable; ++row) {
        isDrawable = CoverAll(rowOf(row), area.width(), hasAlpha);
    }
    if (isDrawable) {
        return {data.covering, part};
    }
    QImage converted(area.size(), hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int row = 0; row < area.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(converted.scanLine(row));
        ConvertPixels(rowOf(row), data.space, pixels, B_RGBA32, area.width());
        for (int i = 0; i < area.width() && !hasAlpha; ++i) {
            pixels[i] |= 0xff000000;
        }
    }
    return {converted, part.translated(-QPointF(area.topLeft()))};
}

} // namespace kits
