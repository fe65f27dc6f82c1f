#pragma once

#include <ThreadAnnotations.h>

/// Holds a lock (a BLocker, a BLooper or a window) as long as it lives.
///
/// A looper may be gone: ask IsLocked() before touching what it guards.
/// Ownership: borrows the lock, which must outlive this object when it could be taken.
class SCOPED_CAPABILITY BAutolock
{
public:
    /// Locks `lockable`; null counts as a lock that cannot be taken.
    template<class Lockable>
    explicit BAutolock(Lockable* lockable) ACQUIRE(lockable)
        : fLockable(lockable), fUnlock(&UnlockAs<Lockable>),
          fIsLocked(lockable != nullptr && lockable->Lock())
    {
    }

    /// The same for a lock that is there for certain.
    template<class Lockable>
    explicit BAutolock(Lockable& lockable) ACQUIRE(lockable) : BAutolock(&lockable)
    {
    }

    /// Gives the lock back when it was taken and is still held.
    ~BAutolock() RELEASE()
    {
        if (fIsLocked) {
            fUnlock(fLockable);
        }
    }

    BAutolock(const BAutolock&) = delete;
    BAutolock& operator=(const BAutolock&) = delete;

    /// Whether the lock was taken.
    bool IsLocked() const { return fIsLocked; }

    /// Gives the lock back before the end of the scope.
    void Unlock() RELEASE()
    {
        if (fIsLocked) {
            fIsLocked = false;
            fUnlock(fLockable);
        }
    }

private:
    // Bound by type, so that this header needs none of the classes it locks. That it is held is
    // what Unlock() and the destructor are checked for.
    template<class Lockable>
    static void UnlockAs(void* lockable) NO_THREAD_SAFETY_ANALYSIS
    {
        static_cast<Lockable*>(lockable)->Unlock();
    }

    void* fLockable;
    void (*fUnlock)(void*);
    bool fIsLocked;
};
