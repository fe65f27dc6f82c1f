#pragma once

#include <vector>

namespace kits {

/// Shares a row among tabs that each would like to be so wide, and need so much for their labels:
/// all they like while there is room, else what they need, at last the same upper limit for all, so
/// that short labels stay whole. Whole units; the sum is at most `room`, unless even one unit each
/// is too much. Units: view units, `room` as a number of columns.
std::vector<float> ShareTabWidths(const std::vector<float>& liked, const std::vector<float>& needed,
                                  float room);

} // namespace kits
