#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <atomic>
#include <list>

namespace kits {

/// A recursive lock that is handed to those who wait in the order of their coming.
///
/// A looper takes its lock again for each message; were the lock free in between, a busy looper
/// would keep everybody else waiting. Thread: any thread.
class LooperLock
{
public:
    LooperLock() = default;
    LooperLock(const LooperLock&) = delete;
    LooperLock& operator=(const LooperLock&) = delete;

    /// Waits until `deadline` (of system_time()); false when it has passed, with nothing locked.
    bool Lock(bigtime_t deadline);
    /// Gives back one of the calling thread's locks.
    void Unlock();
    /// Gives back all of them and returns how many there were.
    int32 UnlockAll();

    bool IsHeld() const; // by the calling thread
    /// The thread that holds the lock, B_ERROR when none does.
    thread_id Holder() const;
    /// How often the holder has locked.
    int32 CountLocks() const;
    /// The same and how many threads wait.
    int32 CountRequests() const;

private:
    struct Waiter;
    void Release();

    mutable Mutex fMutex; // guards also the change of fHolder from and to nobody
    std::list<Waiter*> fWaiters GUARDED_BY(fMutex);
    std::atomic<thread_id> fHolder{kNobody};
    std::atomic<int32> fCount{0}; // changed by the holder alone

    static constexpr thread_id kNobody = 0;
};

/// find_thread(nullptr), remembered by each thread.
thread_id ThisThread();

} // namespace kits
