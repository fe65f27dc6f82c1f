#include <TranslationUtils.h>

#include "ImageFile.h"
#include "interface/graphics/BitmapAccess.h"
#include "server/ToolkitUse.h"

#include <Bitmap.h>
#include <Entry.h>
#include <Path.h>
#include <TranslationErrors.h>

#include <QImage>
#include <QImageReader>

#include <memory>
#include <mutex>

namespace {

constexpr int64 kMegabyte = int64{1} << 20;
constexpr int64 kMostBytes = 512 * kMegabyte;
constexpr int64 kPixelBytes = 4; // of a bitmap's pixel

// Whatever a format announces: what is asked for beyond that is not given either.
void LimitAllocations()
{
    static std::once_flag isLimited;
    std::call_once(isLimited, [] {
        QImageReader::setAllocationLimit(static_cast<int>(kMostBytes / kMegabyte));
    });
}

bool IsTooLarge(const QSize& size)
{
    return int64{size.width()} * size.height() > kMostBytes / kPixelBytes;
}

status_t StatusOf(const QImageReader& reader)
{
    return reader.error() == QImageReader::UnsupportedFormatError ? B_NO_TRANSLATOR
                                                                  : B_ILLEGAL_DATA;
}

// Told by its contents, whatever the file's name says.
status_t ReadImage(kits::ImageFile& file, QImage* image)
{
    LimitAllocations();
    QImageReader reader(&file);
    if (!reader.canRead()) {
        return file.Status() != B_OK ? file.Status() : B_NO_TRANSLATOR;
    }
    if (IsTooLarge(reader.size())) {
        return B_NO_MEMORY;
    }
    reader.setAutoTransform(true);
    if (!reader.read(image)) {
        return file.Status() != B_OK ? file.Status() : StatusOf(reader);
    }
    return file.Status();
}

// In place wherever a pixel has its four bytes already.
void MakeBitmapPixels(QImage& image)
{
    const bool hasAlpha = image.hasAlphaChannel();
    image =
        std::move(image).convertToFormat(hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
}

} // namespace

BBitmap* BTranslationUtils::GetBitmap(const char* path)
{
    status_t status = B_OK;
    return GetBitmap(path, &status);
}

BBitmap* BTranslationUtils::GetBitmap(const entry_ref* ref)
{
    const BPath path(ref);
    return GetBitmap(path.Path());
}

BBitmap* BTranslationUtils::GetBitmap(const char* path, status_t* status)
{
    const kits::ToolkitUse use;
    if (!use) {
        *status = B_NO_INIT;
        return nullptr;
    }
    kits::ImageFile file(path);
    QImage image;
    *status = file.Status();
    if (*status == B_OK) {
        *status = ReadImage(file, &image);
    }
    if (*status != B_OK) {
        return nullptr;
    }
    if (IsTooLarge(image.size())) {
        *status = B_NO_MEMORY; // its format does not announce a size
        return nullptr;
    }
    MakeBitmapPixels(image);
    std::unique_ptr<BBitmap> bitmap = kits::BitmapAccess::Adopt(std::move(image));
    *status = bitmap != nullptr ? B_OK : B_NO_MEMORY;
    return bitmap.release();
}
