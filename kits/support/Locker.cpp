#include <Locker.h>

#include "kernel/Mutex.h"

#include <atomic>
#include <string>

struct BLocker::State
{
    explicit State(const char* lockerName) : name(lockerName == nullptr ? "" : lockerName) {}

    const std::string name;
    kits::Mutex mutex;
    kits::Condition release;
    // Written under the mutex; read without it by IsLocked(), where a thread sees its own number
    // for certain.
    std::atomic<thread_id> owner{B_ERROR};
    int32 locks GUARDED_BY(mutex) = 0;
    int32 waiters GUARDED_BY(mutex) = 0;
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
    if (state.locks > 0 && state.owner != self) {
        if (timeout <= 0) {
            return B_WOULD_BLOCK;
        }
        const bigtime_t now = system_time();
        const bigtime_t end =
            timeout > B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + timeout;
        state.waiters++;
        bool isInTime = true;
        while (state.locks > 0 && isInTime) {
            isInTime = state.release.WaitUntil(state.mutex, end);
        }
        state.waiters--;
        if (state.locks > 0) {
            return B_TIMED_OUT;
        }
    }
    state.owner = self;
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
    if (--state.locks > 0) {
        return;
    }
    state.owner = B_ERROR;
    // Signalled under the mutex: the one that is woken may delete the locker at once.
    if (state.waiters > 0) {
        state.release.Signal();
    }
}

thread_id BLocker::LockingThread() const
{
    return fState->owner;
}

bool BLocker::IsLocked() const
{
    return fState->owner == find_thread(nullptr);
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
