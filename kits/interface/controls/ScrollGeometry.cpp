#include "ScrollGeometry.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

constexpr float kShortestThumb = 12;
constexpr float kUsualThumb = 30; // of a bar that was told no proportion

} // namespace

ScrollGeometry::ScrollGeometry(float length, float breadth, const Values& values)
    : fValues(values), fLength(length),
      // A bar too short for two square arrows shares its length between them.
      fArrowLength(std::max(0.0f, std::min(breadth, std::floor(length / 2))))
{
    const float trough = TroughLength();
    if (values.max <= values.min || trough < kShortestThumb || values.proportion >= 1) {
        return;
    }
    const float wanted =
        values.proportion > 0 ? std::round(trough * values.proportion) : kUsualThumb;
    fThumbLength = std::clamp(wanted, kShortestThumb, trough);
    const double share = (static_cast<double>(values.value) - values.min) /
                         (static_cast<double>(values.max) - values.min);
    const double travel = trough - fThumbLength;
    fThumbStart = TroughStart() + static_cast<float>(std::round(travel * share));
}

float ScrollGeometry::TroughLength() const
{
    return std::max(0.0f, fLength - 2 * fArrowLength);
}

ScrollGeometry::Part ScrollGeometry::PartAt(float position) const
{
    if (position < 0 || position >= fLength) {
        return Part::kNone;
    }
    if (position < fArrowLength) {
        return Part::kLessArrow;
    }
    if (position >= fLength - fArrowLength) {
        return Part::kMoreArrow;
    }
    if (!HasThumb()) {
        return Part::kNone;
    }
    if (position < fThumbStart) {
        return Part::kLessPage;
    }
    return position < fThumbStart + fThumbLength ? Part::kThumb : Part::kMorePage;
}

float ScrollGeometry::ValueOfThumbAt(float start) const
{
    const double travel = TroughLength() - fThumbLength;
    if (!HasThumb() || travel <= 0) {
        return fValues.value;
    }
    const double share = std::clamp((start - TroughStart()) / travel, 0.0, 1.0);
    const double range = static_cast<double>(fValues.max) - fValues.min;
    // The end of the range counts even when it is not a whole number: the last row must be
    // reachable.
    const double value = share >= 1 ? range : std::round(range * share);
    return static_cast<float>(fValues.min + std::min(value, range));
}

} // namespace kits
