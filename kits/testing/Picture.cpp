#include "Driver.h"
#include "Native.h"

#include "server/FrontImage.h"
#include "server/NativeWindow.h"
#include "server/Surface.h"

#include <View.h>
#include <Window.h>

#include <QImage>
#include <QString>

#include <algorithm>

namespace kits::testing {

rgb_color Picture::At(int32 x, int32 y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return rgb_color{255, 255, 255, 255};
    }
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
}

int32 Picture::Count(rgb_color color, int32 left, int32 top, int32 right, int32 bottom) const
{
    int32 count = 0;
    for (int32 y = std::max(top, 0); y < std::min(bottom, height); ++y) {
        for (int32 x = std::max(left, 0); x < std::min(right, width); ++x) {
            const rgb_color pixel = At(x, y);
            const bool isSame =
                pixel.red == color.red && pixel.green == color.green && pixel.blue == color.blue;
            count += isSame ? 1 : 0;
        }
    }
    return count;
}

bool Picture::Save(const char* path) const
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int32 y = 0; y < height; ++y) {
        for (int32 x = 0; x < width; ++x) {
            const rgb_color color = At(x, y);
            image.setPixel(x, y, qRgb(color.red, color.green, color.blue));
        }
    }
    return image.save(QString::fromUtf8(path), "PNG");
}

Picture TakePicture(BWindow* window)
{
    Picture picture;
    // The answer comes after the drawing that was asked for before; what is still invalid is
    // painted now.
    Sync(window);
    if (window->Lock()) {
        window->Sync();
        window->Unlock();
    }
    QImage image;
    OnServer([&] {
        if (auto* surface = static_cast<Surface*>(NativeOf(window))) {
            image = surface->Owner().Front().Copy();
        }
    });
    picture.width = image.width();
    picture.height = image.height();
    picture.scale = static_cast<float>(image.devicePixelRatio());
    picture.pixels.reserve(static_cast<size_t>(image.width()) *
                           static_cast<size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            picture.pixels.push_back(rgb_color{static_cast<uint8>(qRed(pixel)),
                                               static_cast<uint8>(qGreen(pixel)),
                                               static_cast<uint8>(qBlue(pixel)), 255});
        }
    }
    return picture;
}

} // namespace kits::testing
