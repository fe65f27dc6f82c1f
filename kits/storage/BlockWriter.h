#pragma once

#include "BlockPool.h"

#include <SupportDefs.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace kits {

/// Writes blocks on a thread of its own, in order, while the next ones are filled.
///
/// After an error nothing more is written; the blocks that follow are dropped.
class BlockWriter
{
public:
    /// `file` is borrowed until this object is gone.
    explicit BlockWriter(int file);
    /// Writes what is queued first.
    ~BlockWriter();
    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;

    /// Adopts a block; waits while too many are queued.
    void Queue(Block block, size_t size, off_t position);
    /// Waits until nothing is queued or being written, and tells the first error.
    status_t Wait();
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
    std::mutex fMutex; // guards the queue and the two flags
    std::condition_variable fChange;
    std::deque<Job> fJobs;
    bool fIsWriting = false;
    bool fIsEnding = false;
    std::thread fThread; // last: it uses all the others
};

/// Writes all of it, going on after short writes: so a full disk takes every byte that fits.
status_t WriteWhole(int file, const char* bytes, size_t size, off_t position);

} // namespace kits
