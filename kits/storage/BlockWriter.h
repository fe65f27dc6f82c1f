#pragma once

#include "BlockPool.h"
#include "kernel/Mutex.h"
#include "kernel/WorkerThread.h"

#include <SupportDefs.h>

#include <atomic>
#include <deque>

namespace kits {

/// Writes blocks on a thread of its own, in order, while the next ones are filled.
///
/// After an error nothing more is written; the blocks that follow are dropped.
class BlockWriter
{
public:
    /// `file` is borrowed until this object is gone.
    explicit BlockWriter(int file) : fFile(file) {}
    /// Starts the thread; once, before anything is queued. Errors: B_NO_MORE_THREADS.
    [[nodiscard]] status_t Start();
    /// Writes what is queued first.
    ~BlockWriter();
    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;

    /// Adopts a block; waits while too many are queued.
    void Queue(Block block, size_t size, off_t position);
    /// Waits until nothing is queued or being written, and tells the first error.
    [[nodiscard]] status_t Wait();
    /// The first error so far; waits for nothing.
    status_t Status() const { return fStatus.load(std::memory_order_relaxed); }

private:
    struct Job
    {
        Block block;
        size_t size;
        off_t position;
    };

    void Run();

    const int fFile;
    std::atomic<status_t> fStatus{B_OK};
    Mutex fMutex;
    Condition fChange;
    std::deque<Job> fJobs GUARDED_BY(fMutex);
    bool fIsWriting GUARDED_BY(fMutex) = false;
    bool fIsEnding GUARDED_BY(fMutex) = false;
    WorkerThread fThread;
};

/// Writes all of it, going on after short writes: so a full disk takes every byte that fits.
[[nodiscard]] status_t WriteWhole(int file, const char* bytes, size_t size, off_t position);

} // namespace kits
