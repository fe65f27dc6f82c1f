#pragma once

#include <ThreadAnnotations.h>

#include <OS.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace kits {

/// A mutex for a few lines of moving data; it does not nest.
class CAPABILITY("mutex") Mutex
{
public:
    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void Lock() ACQUIRE() { fMutex.lock(); }
    bool TryLock() TRY_ACQUIRE(true) { return fMutex.try_lock(); }
    void Unlock() RELEASE() { fMutex.unlock(); }

private:
    friend class Condition;
    std::mutex fMutex;
};

/// Holds a Mutex to the end of the scope.
class SCOPED_CAPABILITY MutexLock
{
public:
    explicit MutexLock(Mutex& mutex) ACQUIRE(mutex) : fMutex(mutex) { fMutex.Lock(); }
    ~MutexLock() RELEASE() { fMutex.Unlock(); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

private:
    Mutex& fMutex;
};

/// What a thread waits for under a Mutex. Wait in a loop that checks what is waited for.
class Condition
{
public:
    Condition() = default;
    Condition(const Condition&) = delete;
    Condition& operator=(const Condition&) = delete;

    /// Gives `mutex` back, waits, and takes it again.
    void Wait(Mutex& mutex) REQUIRES(mutex)
    {
        std::unique_lock<std::mutex> lock(mutex.fMutex, std::adopt_lock);
        fCondition.wait(lock);
        lock.release(); // the caller's lock goes on
    }

    /// The same, until `time` (of system_time()) at most. False when that has come.
    bool WaitUntil(Mutex& mutex, bigtime_t time) REQUIRES(mutex)
    {
        using Clock = std::chrono::steady_clock; // the clock of system_time()
        // It counts nanoseconds; what they cannot tell is later than anyone waits.
        constexpr auto kLatest =
            std::chrono::duration_cast<std::chrono::microseconds>(Clock::duration::max());
        if (time >= kLatest.count()) {
            Wait(mutex);
            return true;
        }
        std::unique_lock<std::mutex> lock(mutex.fMutex, std::adopt_lock);
        const Clock::time_point end{std::chrono::microseconds(time)};
        const bool isInTime = fCondition.wait_until(lock, end) == std::cv_status::no_timeout;
        lock.release();
        return isInTime;
    }

    /// Wakes one thread that waits.
    void Signal() { fCondition.notify_one(); }
    /// Wakes all threads that wait.
    void Broadcast() { fCondition.notify_all(); }

private:
    std::condition_variable fCondition;
};

} // namespace kits
