#include "PixelConversion.h"

#include "ColorMap.h"

#include <Screen.h>

#include <atomic>
#include <cstring>

namespace kits {

namespace {

std::atomic<int64> gConvertedPixels = 0;

rgb_color Read(const uint8* pixel, color_space space, const color_map& map)
{
    if (space == B_CMAP8) {
        return map.color_list[*pixel];
    }
    rgb_color color = {pixel[2], pixel[1], pixel[0], space == B_RGBA32 ? pixel[3] : uint8{255}};
    const rgb_color transparent = {B_TRANSPARENT_COLOR.red, B_TRANSPARENT_COLOR.green,
                                   B_TRANSPARENT_COLOR.blue, 255};
    if (space == B_RGB32 && color == transparent) {
        color.alpha = 0;
    }
    return color;
}

void Write(uint8* pixel, color_space space, const rgb_color& color)
{
    if (space == B_CMAP8) {
        *pixel = color.alpha < 128 ? B_TRANSPARENT_8_BIT
                                   : NearestIndex(color.red, color.green, color.blue);
        return;
    }
    pixel[0] = color.blue;
    pixel[1] = color.green;
    pixel[2] = color.red;
    pixel[3] = space == B_RGBA32 ? color.alpha : uint8{255};
}

} // namespace

int32 BytesPerPixel(color_space space)
{
    switch (space) {
    case B_CMAP8:
        return 1;
    case B_RGB32:
    case B_RGBA32:
        return 4;
    default:
        return 0;
    }
}

void ConvertPixels(const void* from, color_space fromSpace, void* to, color_space toSpace,
                   int32 count)
{
    const int32 fromStep = BytesPerPixel(fromSpace);
    const int32 toStep = BytesPerPixel(toSpace);
    if (count <= 0) {
        return;
    }
    gConvertedPixels.fetch_add(count, std::memory_order_relaxed);
    if (fromSpace == toSpace) {
        std::memcpy(to, from, static_cast<size_t>(count) * static_cast<size_t>(fromStep));
        return;
    }
    const color_map& map = *system_colors();
    const auto* source = static_cast<const uint8*>(from);
    auto* target = static_cast<uint8*>(to);
    for (int32 i = 0; i < count; ++i) {
        Write(target, toSpace, Read(source, fromSpace, map));
        source += fromStep;
        target += toStep;
    }
}

bool CoverAll(const void* pixels, int32 count, bool isKeyed)
{
    constexpr uint32 kFull = 0xff000000;
    constexpr uint32 kKey = kFull | uint32{B_TRANSPARENT_COLOR.red} << 16 |
                            uint32{B_TRANSPARENT_COLOR.green} << 8 | B_TRANSPARENT_COLOR.blue;
    const auto* bytes = static_cast<const uint8*>(pixels);
    uint32 all = kFull;
    bool hasKey = false;
    for (int32 i = 0; i < count; ++i) {
        uint32 pixel = 0;
        std::memcpy(&pixel, bytes + static_cast<ptrdiff_t>(i) * 4, sizeof(pixel));
        all &= pixel;
        hasKey |= pixel == kKey;
    }
    return all == kFull && !(isKeyed && hasKey);
}

int64 CountConvertedPixels()
{
    return gConvertedPixels.load(std::memory_order_relaxed);
}

} // namespace kits
