#pragma once

#include <OS.h>
#include <ThreadAnnotations.h>

#include <memory>

namespace kits {
class Condition;
}

/// A lock that its owner may take again; it is free when it was released as often as taken.
///
/// Thread: any thread; Unlock() by the one that holds it. Costs two uncontended mutexes, so it does
/// for a few lines of moving data, too. An extension: clang checks what is GUARDED_BY() a locker.
class CAPABILITY("locker") BLocker
{
public:
    /// Makes a free lock; the name helps in debugging and may be null.
    BLocker();
    explicit BLocker(const char* name);
    virtual ~BLocker();
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    /// Takes the lock, waiting for it as long as it takes. Always true.
    bool Lock() ACQUIRE();
    /// Takes the lock, waiting at most `timeout`.
    /// Units: microseconds; 0 tries once, B_INFINITE_TIMEOUT waits for ever.
    /// Errors: B_TIMED_OUT; B_WOULD_BLOCK when `timeout` is 0. Nothing is locked then.
    status_t LockWithTimeout(bigtime_t timeout) TRY_ACQUIRE(B_OK);
    /// Gives back one lock. Does nothing in a thread that does not hold it.
    void Unlock() RELEASE();

    /// The thread that holds the lock, or B_ERROR when it is free.
    thread_id LockingThread() const;
    /// Whether the calling thread holds the lock.
    bool IsLocked() const;
    /// How often the owner has taken the lock.
    int32 CountLocks() const;
    /// How many threads hold the lock or wait for it, nested locks of the owner included.
    int32 CountLockRequests() const;
    /// The name given, "" for null; "some locker" when none was given.
    const char* Name() const;

private:
    friend class BCondition;
    struct State;

    // Gives all locks back until `condition` is signalled or `time` has come; false for the latter.
    bool WaitFor(kits::Condition& condition, bigtime_t time) REQUIRES(this);

    std::unique_ptr<State> fState; // never null
};
