#pragma once

#include <OS.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace norvane {

/// Threads that share work with the one that made them: each does the next step until none is
/// left. The end of this object waits for them. Fewer than wanted, or none, when there are none to
/// be had.
class HelperThreads
{
public:
    /// `step` returns false when nothing is left to be done; many threads call it at once.
    HelperThreads(const char* name, size_t count, std::function<bool()> step);
    ~HelperThreads();
    HelperThreads(const HelperThreads&) = delete;
    HelperThreads& operator=(const HelperThreads&) = delete;

    /// How many are of use for so many steps beside the caller's own thread.
    static size_t CountFor(size_t steps);

private:
    static status_t Help(void* helpers);

    const std::function<bool()> fStep;
    std::vector<thread_id> fThreads;
};

} // namespace norvane
