#include <Locker.h>

#include "kernel/Mutex.h"

#include <atomic>
#include <string>
#include <utility>

struct BLocker::State
{
    explicit State(const char* lockerName) : name(lockerName == nullptr ? "" : lockerName) {}

    const std::string name;
    kits::Mutex mutex;
    kits::Condition release;
    // Written under the mutex; read without it by IsLocked(), where a thread sees its own number
    // for certain. What the lock guards is ordered by the mutex, so this needs no order.
    std::atomic<thread_id> owner{B_ERROR};
    int32 locks GUARDED_BY(mutex) = 0;
    int32 waiters GUARDED_BY(mutex) = 0;

    thread_id Owner() const { return owner.load(std::memory_order_relaxed); }
    void SetOwner(thread_id thread) { owner.store(thread, std::memory_order_relaxed); }
    // Tells that nobody holds the lock any more. Under the mutex: the one that is woken may delete
    // the locker at once.
    void Release() REQUIRES(mutex)
    {
        SetOwner(B_ERROR);
        if (waiters > 0) {
            release.Signal();
        }
    }
    // False when the lock is not free at `end`.
    bool AwaitRelease(bigtime_t end) REQUIRES(mutex)
    {
        waiters++;
        bool isInTime = true;
        while (locks > 0 && isInTime) {
            isInTime = release.WaitUntil(mutex, end);
        }
        waiters--;
        return locks == 0;
    }
};

BLocker::BLocker() : BLocker("some locker") {}

BLocker::BLocker(const char* name) : fState(std::make_unique<State>(name)) {}

BLocker::~BLocker() = default;

bool BLocker::Lock()
{
    return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BLocker::LockWithTimeout(bigtime_t timeout)
{
    State& state = *fState;
    const thread_id self = find_thread(nullptr);
    kits::MutexLock lock(state.mutex);
    if (state.locks > 0 && state.Owner() != self) {
        if (timeout <= 0) {
            return B_WOULD_BLOCK;
        }
        const bigtime_t now = system_time();
        const bigtime_t end =
            timeout > B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + timeout;
        if (!state.AwaitRelease(end)) {
            return B_TIMED_OUT;
        }
    }
    state.SetOwner(self);
    state.locks++;
    return B_OK;
}

void BLocker::Unlock()
{
    State& state = *fState;
    if (!IsLocked()) {
        return;
    }
    kits::MutexLock lock(state.mutex);
    if (--state.locks == 0) {
        state.Release();
    }
}

bool BLocker::WaitFor(kits::Condition& condition, bigtime_t time)
{
    State& state = *fState;
    if (!IsLocked()) {
        return true;
    }
    kits::MutexLock lock(state.mutex);
    const int32 locks = std::exchange(state.locks, 0);
    state.Release();
    const bool isInTime = condition.WaitUntil(state.mutex, time);
    state.AwaitRelease(B_INFINITE_TIMEOUT);
    state.SetOwner(find_thread(nullptr));
    state.locks = locks;
    return isInTime;
}

thread_id BLocker::LockingThread() const
{
    return fState->Owner();
}

bool BLocker::IsLocked() const
{
    return fState->Owner() == find_thread(nullptr);
}

int32 BLocker::CountLocks() const
{
    kits::MutexLock lock(fState->mutex);
    return fState->locks;
}

int32 BLocker::CountLockRequests() const
{
    kits::MutexLock lock(fState->mutex);
    return fState->locks + fState->waiters;
}

const char* BLocker::Name() const
{
    return fState->name.c_str();
}
