#include "EventClock.h"

#include <algorithm>

namespace kits {

namespace {

// An event tells whole milliseconds, of which the last one may be nearly over.
constexpr bigtime_t kMillisecond = 1'000;

// The clocks of two machines drift apart, by some milliseconds in this time.
constexpr bigtime_t kWhile = 60'000'000;
constexpr bigtime_t kLongestMemory = 10 * kWhile;

// No event is that late: its clock began anew.
constexpr bigtime_t kLatest = 60'000'000;

} // namespace

bigtime_t EventClock::TimeOf(uint64 milliseconds, bigtime_t now)
{
    bigtime_t time = now;
    if (milliseconds != 0) {
        const bigtime_t own = static_cast<bigtime_t>(milliseconds) * kMillisecond;
        Note(now - own, now);
        time = std::min(now, own + std::min(fLeast, fLeastBefore) + kMillisecond);
    }
    fLast = std::max(fLast, time);
    return fLast;
}

void EventClock::Note(bigtime_t distance, bigtime_t now)
{
    const bool isAnew = !fIsSet || now - fSince > kLongestMemory ||
                        distance - std::min(fLeast, fLeastBefore) > kLatest;
    if (isAnew) {
        fLeastBefore = distance;
    } else if (now - fSince > kWhile) {
        fLeastBefore = fLeast;
    } else {
        fLeast = std::min(fLeast, distance);
        return;
    }
    fIsSet = true;
    fLeast = distance;
    fSince = now;
}

} // namespace kits
