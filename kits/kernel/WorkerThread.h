#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <functional>

namespace kits {

/// A thread that does one piece of work for an object, which waits for it.
///
/// No thread of the kits is started otherwise than here and by spawn_thread(): so there is one
/// place where the system can say that it has none left, and everybody is told by a status. Thread:
/// that of the owner.
class WorkerThread
{
public:
    WorkerThread() = default;
    /// Waits for the end of the work.
    ~WorkerThread() { Join(); }
    WorkerThread(WorkerThread&& other) noexcept;
    WorkerThread& operator=(WorkerThread&&) = delete;

    /// Runs `work` on a new thread of that name; once for each Join().
    /// Errors: B_NO_MORE_THREADS, B_NO_MEMORY. Nothing runs then; it may be tried again.
    [[nodiscard]] status_t Start(const char* name, std::function<void()> work);
    /// Whether it was started and not joined yet.
    bool IsStarted() const { return fThread > 0; }
    /// Waits until the work is done; returns at once when there is none.
    void Join();

private:
    thread_id fThread = 0;
};

/// Runs `work` on a new thread that nobody waits for.
/// Errors: those of WorkerThread::Start().
[[nodiscard]] status_t StartDetached(const char* name, std::function<void()> work);

} // namespace kits
