#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <chrono>

namespace kits {

/// The point of system_time() at which a wait of `timeout` from now ends.
inline bigtime_t DeadlineAfter(bigtime_t timeout)
{
    const bigtime_t now = system_time();
    return timeout >= B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + timeout;
}

/// Waits on `condition` until `isMet()` or the deadline; returns what `isMet()` says at the end.
template<class Condition, class Lock, class Predicate>
bool WaitUntil(Condition& condition, Lock& lock, bigtime_t deadline, Predicate isMet)
{
    // Longer than anyone waits; and the sum with the clock must not overflow.
    constexpr bigtime_t kLongestWait = 3600LL * 1000000;
    while (!isMet()) {
        if (deadline == B_INFINITE_TIMEOUT) {
            condition.wait(lock);
            continue;
        }
        const bigtime_t left = deadline - system_time();
        if (left <= 0) {
            return false;
        }
        condition.wait_for(lock,
                           std::chrono::microseconds(left < kLongestWait ? left : kLongestWait));
    }
    return true;
}

} // namespace kits
