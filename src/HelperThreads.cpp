#include "HelperThreads.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace norvane {

HelperThreads::HelperThreads(const char* name, size_t count, std::function<bool()> step)
    : fStep(std::move(step))
{
    for (size_t i = 0; i < count; ++i) {
        const thread_id thread = spawn_thread(&Help, name, B_NORMAL_PRIORITY, this);
        if (thread >= B_OK && resume_thread(thread) == B_OK) {
            fThreads.push_back(thread);
        }
    }
}

HelperThreads::~HelperThreads()
{
    for (const thread_id thread : fThreads) {
        status_t result = B_OK;
        wait_for_thread(thread, &result);
    }
}

size_t HelperThreads::CountFor(size_t steps)
{
    constexpr size_t kMost = 8;
    const size_t cores = std::max(1U, std::thread::hardware_concurrency());
    return std::max<size_t>(1, std::min({kMost, cores, steps})) - 1;
}

status_t HelperThreads::Help(void* helpers)
{
    const std::function<bool()>& step = static_cast<HelperThreads*>(helpers)->fStep;
    while (step()) {
    }
    return B_OK;
}

} // namespace norvane
