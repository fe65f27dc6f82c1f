#include "ColorMap.h"

#include <Screen.h>

#include <array>
#include <climits>

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
        colors[static_cast<size_t>(kGreys + i)] = {red, green, blue, 255};
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

uint8 Search(const rgb_color* colors, int red, int green, int blue)
{
    int best = 0;
    int bestDistance = INT_MAX;
    for (int i = 0; i < kTransparent && bestDistance > 0; ++i) {
        const int distance = Distance(colors[i], red, green, blue);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return static_cast<uint8>(best);
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
