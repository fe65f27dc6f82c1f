#include "clv/PixelPicture.h"

#include <GraphicsDefs.h>
#include <Screen.h>

#include <algorithm>
#include <cstring>

namespace norvane {

namespace {

rgb_color ColorOf(char letter)
{
    switch (letter) {
    case 'k':
        return {56, 56, 64, 255};
    case 'w':
        return {255, 255, 255, 255};
    case 'g':
        return {216, 216, 216, 255};
    case 's':
        return {184, 184, 184, 255};
    case 'b':
        return {75, 96, 154, 255};
    case 'c':
        return {152, 170, 215, 255};
    case 'd':
        return {140, 98, 20, 255};
    case 'o':
        return {224, 168, 56, 255};
    case 'y':
        return {250, 208, 96, 255};
    case 'l':
        return {255, 236, 170, 255};
    default:
        return B_TRANSPARENT_COLOR;
    }
}

uint8 IndexOf(char letter)
{
    const rgb_color color = ColorOf(letter);
    if (color.alpha == 0) {
        return B_TRANSPARENT_8_BIT;
    }
    // Five bits of each channel are what the map is indexed by.
    const uint32 index = static_cast<uint32>(color.red >> 3) << 10 |
                         static_cast<uint32>(color.green >> 3) << 5 | (color.blue >> 3);
    return system_colors()->index_map[index];
}

/// Where a pixel is in a picture of that width.
std::size_t Place(int32 x, int32 y, int32 width)
{
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

} // namespace

PixelPicture::PixelPicture(std::span<const char* const> rows)
    : fWidth(static_cast<int32>(std::strlen(rows[0]))), fHeight(static_cast<int32>(rows.size()))
{
    for (const char* row : rows) {
        for (int32 x = 0; x < fWidth; x++) {
            fPixels.push_back(IndexOf(row[x]));
        }
    }
}

uint8 PixelPicture::At(int32 x, int32 y) const
{
    const int32 column = std::clamp(x, 0, fWidth - 1);
    const int32 row = std::clamp(y, 0, fHeight - 1);
    return fPixels[Place(column, row, fWidth)];
}

std::vector<uint8> PixelPicture::PaddedBits() const
{
    const int32 bytesPerRow = (fWidth + 3) / 4 * 4;
    std::vector<uint8> bits(Place(0, fHeight, bytesPerRow), B_TRANSPARENT_8_BIT);
    for (int32 y = 0; y < fHeight; y++) {
        for (int32 x = 0; x < fWidth; x++) {
            bits[Place(x, y, bytesPerRow)] = At(x, y);
        }
    }
    return bits;
}

std::vector<uint8> PixelPicture::DoubleBits() const
{
    const int32 width = fWidth * 2;
    std::vector<uint8> bits(Place(0, fHeight * 2, width));
    for (int32 y = 0; y < fHeight; y++) {
        for (int32 x = 0; x < fWidth; x++) {
            const uint8 pixel = At(x, y);
            const uint8 above = At(x, y - 1);
            const uint8 below = At(x, y + 1);
            const uint8 left = At(x - 1, y);
            const uint8 right = At(x + 1, y);
            // A quarter takes the colour of its two neighbours when these agree and stand on a
            // slanted edge.
            const bool isEdge = above != below && left != right;
            uint8* upper = &bits[Place(2 * x, 2 * y, width)];
            uint8* lower = upper + width;
            upper[0] = isEdge && left == above ? left : pixel;
            upper[1] = isEdge && above == right ? right : pixel;
            lower[0] = isEdge && left == below ? left : pixel;
            lower[1] = isEdge && below == right ? right : pixel;
        }
    }
    return bits;
}

} // namespace norvane
