#include "viewer/RoughSize.h"

#include <cmath>
#include <cstdio>

namespace norvane {

std::string RoughSize(int64 bytes)
{
    constexpr const char* kUnits[] = {"bytes", "KB", "MB", "GB", "TB"};
    constexpr double kStep = 1024;
    double count = static_cast<double>(bytes);
    size_t unit = 0;
    while (count >= kStep && unit + 1 < sizeof(kUnits) / sizeof(kUnits[0])) {
        count /= kStep;
        unit++;
    }
    const bool isWhole = count == std::floor(count);
    char text[32];
    std::snprintf(text, sizeof(text), isWhole ? "%.0f %s" : "%.1f %s", count, kUnits[unit]);
    return text;
}

} // namespace norvane
