#include "common/DetachedThread.h"

#include <OS.h>

#include <memory>
#include <utility>

namespace add_ons {

namespace {

using Work = std::function<void()>;

status_t Run(void* data)
{
    const std::unique_ptr<Work> work(static_cast<Work*>(data));
    (*work)();
    return B_OK;
}

} // namespace

bool StartDetached(const char* name, Work work)
{
    auto order = std::make_unique<Work>(std::move(work));
    const thread_id thread = spawn_thread(&Run, name, B_NORMAL_PRIORITY, order.get());
    if (thread < B_OK || resume_thread(thread) != B_OK) {
        return false;
    }
    [[maybe_unused]] const Work* adopted = order.release(); // by the thread
    return true;
}

} // namespace add_ons
