#pragma once

#include <SupportDefs.h>

#include <algorithm>

namespace norvane {

/// The index of a thing among `count` others, -1 when it is not there. Searches outwards from where
/// it was last: things come and go a few at a time. `at` says what lies at an index.
template<typename At>
int32 FindNear(const void* thing, int32 lastIndex, int32 count, At at)
{
    const int32 start = std::clamp(lastIndex, int32{0}, std::max(count - 1, int32{0}));
    for (int32 distance = 0; start - distance >= 0 || start + distance < count; distance++) {
        const int32 before = start - distance;
        const int32 behind = start + distance;
        if (before >= 0 && before < count && at(before) == thing) {
            return before;
        }
        if (behind < count && at(behind) == thing) {
            return behind;
        }
    }
    return -1;
}

} // namespace norvane
