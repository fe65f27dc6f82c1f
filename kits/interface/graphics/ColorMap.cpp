#include "ColorMap.h"

#include <Screen.h>

#include <algorithm>
#include <array>

namespace kits {

namespace {

constexpr int kGreys = 32;
constexpr int kCubeSide = 6;
constexpr int kLevelStep = 51; // 255 / 5
constexpr int kTransparent = B_TRANSPARENT_8_BIT;

// A ramp of 32 greys from black to white, a cube of six levels to a side; what is left up to the
// transparent entry repeats white.
std::array<rgb_color, 256> MakeColors()
{
    std::array<rgb_color, 256> colors;
    colors.fill(rgb_color{255, 255, 255, 255});
    for (int i = 0; i < kGreys; ++i) {
        const auto level = static_cast<uint8>(i * 255 / (kGreys - 1));
        colors[static_cast<size_t>(i)] = {level, level, level, 255};
    }
    for (int i = 0; i < kCubeSide * kCubeSide * kCubeSide; ++i) {
        const auto red = static_cast<uint8>(i / (kCubeSide * kCubeSide) * kLevelStep);
        const auto green = static_cast<uint8>(i / kCubeSide % kCubeSide * kLevelStep);
        const auto blue = static_cast<uint8>(i % kCubeSide * kLevelStep);
        colors[static_cast<size_t>(kGreys) + static_cast<size_t>(i)] = {red, green, blue, 255};
    }
    colors[kTransparent] = B_TRANSPARENT_COLOR;
    return colors;
}

int Distance(const rgb_color& color, int red, int green, int blue)
{
    const int dr = color.red - red;
    const int dg = color.green - green;
    const int db = color.blue - blue;
    return dr * dr + dg * dg + db * db;
}

// The level of the cube's side that is nearest, the lower one of two.
int Level(int channel)
{
    return (channel + (kLevelStep - 1) / 2) / kLevelStep;
}

/// The first of the nearest colours. Greys come before the cube.
uint8 Search(const rgb_color* colors, int red, int green, int blue)
{
    // The nearest grey is next to the channels' mean.
    const int guess = (red + green + blue) * (kGreys - 1) / (3 * 255);
    int best = std::max(guess - 1, 0);
    for (int i = best + 1; i <= std::min(guess + 2, kGreys - 1); ++i) {
        if (Distance(colors[i], red, green, blue) < Distance(colors[best], red, green, blue)) {
            best = i;
        }
    }
    const int cube = kGreys + (Level(red) * kCubeSide + Level(green)) * kCubeSide + Level(blue);
    const bool isGrey =
        Distance(colors[best], red, green, blue) <= Distance(colors[cube], red, green, blue);
    return static_cast<uint8>(isGrey ? best : cube);
}

color_map MakeMap()
{
    color_map map{};
    const std::array<rgb_color, 256> colors = MakeColors();
    for (size_t i = 0; i < colors.size(); ++i) {
        map.color_list[i] = colors[i];
    }
    for (int i = 0; i < 32768; ++i) {
        // Five bits are stretched so that 31 becomes 255.
        const auto wide = [](int five) {
            return (five << 3) | (five >> 2);
        };
        map.index_map[i] = Search(map.color_list, wide(i >> 10), wide((i >> 5) & 31), wide(i & 31));
    }
    for (size_t i = 0; i < colors.size(); ++i) {
        map.inversion_map[i] = Search(map.color_list, 255 - colors[i].red, 255 - colors[i].green,
                                      255 - colors[i].blue);
    }
    map.inversion_map[kTransparent] = kTransparent;
    return map;
}

} // namespace

uint8 NearestIndex(uint8 red, uint8 green, uint8 blue)
{
    return Search(system_colors()->color_list, red, green, blue);
}

} // namespace kits

const color_map* system_colors()
{
    static const color_map map = kits::MakeMap();
    return &map;
}
