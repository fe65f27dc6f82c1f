#include "TabWidths.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace kits {

namespace {

float Sum(const std::vector<float>& widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0.0f);
}

// The greatest limit that, put on all of them, makes them fit into `room`.
float FindLimit(std::vector<float> widths, float room)
{
    std::sort(widths.begin(), widths.end());
    float left = room;
    for (size_t i = 0; i < widths.size(); i++) {
        const float share = left / static_cast<float>(widths.size() - i);
        if (widths[i] > share) {
            return share;
        }
        left -= widths[i];
    }
    return room;
}

} // namespace

std::vector<float> ShareTabWidths(const std::vector<float>& liked, const std::vector<float>& needed,
                                  float room)
{
    if (Sum(liked) <= room) {
        return liked;
    }
    std::vector<float> widths = needed;
    if (Sum(widths) > room) {
        const float limit = std::max(1.0f, std::floor(FindLimit(widths, room)));
        for (float& width : widths) {
            width = std::min(width, limit);
        }
    }
    return widths;
}

} // namespace kits
