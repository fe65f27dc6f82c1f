#include <OS.h>

#include <cerrno>
#include <ctime>

namespace {

constexpr bigtime_t kMicrosecondsPerSecond = 1000000;

bigtime_t ClockMicroseconds(clockid_t clock)
{
    timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<bigtime_t>(now.tv_sec) * kMicrosecondsPerSecond + now.tv_nsec / 1000;
}

} // namespace

bigtime_t system_time()
{
    return ClockMicroseconds(CLOCK_MONOTONIC);
}

uint32 real_time_clock()
{
    return static_cast<uint32>(real_time_clock_usecs() / kMicrosecondsPerSecond);
}

bigtime_t real_time_clock_usecs()
{
    return ClockMicroseconds(CLOCK_REALTIME);
}

status_t snooze(bigtime_t microseconds)
{
    if (microseconds <= 0) {
        return B_OK;
    }
    const bigtime_t now = system_time();
    const bigtime_t end =
        microseconds > B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + microseconds;
    return snooze_until(end, B_SYSTEM_TIMEBASE);
}

status_t snooze_until(bigtime_t time, int timeBase)
{
    if (timeBase != B_SYSTEM_TIMEBASE) {
        return B_BAD_VALUE;
    }
    if (time <= 0) {
        return B_OK;
    }
    timespec end{};
    end.tv_sec = static_cast<time_t>(time / kMicrosecondsPerSecond);
    end.tv_nsec = static_cast<long>(time % kMicrosecondsPerSecond) * 1000;
    // An absolute end: a signal in between does not lengthen the sleep.
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
    }
    return B_OK;
}
