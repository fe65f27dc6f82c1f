#include "kernel/WorkerThread.h"

#include "kernel/ThreadEnds.h"

#include <memory>
#include <new>
#include <utility>

namespace kits {

namespace {

using Work = std::function<void()>;

status_t DoWork(void* data)
{
    const std::unique_ptr<Work> work(static_cast<Work*>(data));
    (*work)();
    return B_OK;
}

/// The thread's number, or why there is none.
thread_id StartWork(const char* name, Work work)
{
    std::unique_ptr<Work> argument(new (std::nothrow) Work(std::move(work)));
    if (argument == nullptr) {
        return B_NO_MEMORY;
    }
    const thread_id thread = spawn_thread(&DoWork, name, B_NORMAL_PRIORITY, argument.get());
    if (thread < B_OK) {
        return thread;
    }
    const status_t status = resume_thread(thread);
    if (status != B_OK) {
        ForgetThread(thread);
        return status;
    }
    [[maybe_unused]] const Work* adopted = argument.release(); // by the thread
    return thread;
}

} // namespace

WorkerThread::WorkerThread(WorkerThread&& other) noexcept : fThread(std::exchange(other.fThread, 0))
{
}

status_t WorkerThread::Start(const char* name, std::function<void()> work)
{
    const thread_id thread = StartWork(name, std::move(work));
    if (thread < B_OK) {
        return thread;
    }
    fThread = thread;
    return B_OK;
}

void WorkerThread::Join()
{
    if (!IsStarted()) {
        return;
    }
    // Fails for one whose function has returned: it may still be cleaning up.
    wait_for_thread(std::exchange(fThread, 0), nullptr);
    JoinEndedThreads();
}

status_t StartDetached(const char* name, std::function<void()> work)
{
    const thread_id thread = StartWork(name, std::move(work));
    return thread < B_OK ? thread : B_OK;
}

} // namespace kits
