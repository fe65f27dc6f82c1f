#pragma once

/// Holds a lock (a BLocker, a BLooper or a window) as long as it lives.
///
/// A looper may be gone: ask IsLocked() before touching what it guards.
/// Ownership: borrows the lock, which must outlive this object when it could be taken.
class BAutolock
{
public:
    /// Locks `lockable`; null counts as a lock that cannot be taken.
    template<class Lockable>
    explicit BAutolock(Lockable* lockable)
        : fLockable(lockable), fUnlock(&UnlockAs<Lockable>),
          fIsLocked(lockable != nullptr && lockable->Lock())
    {
    }

    /// The same for a lock that is there for certain.
    template<class Lockable>
    explicit BAutolock(Lockable& lockable) : BAutolock(&lockable)
    {
    }

    /// Gives the lock back when it was taken and is still held.
    ~BAutolock()
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
    void Unlock()
    {
        if (fIsLocked) {
            fIsLocked = false;
            fUnlock(fLockable);
        }
    }

private:
    // Bound by type, so that this header needs none of the classes it locks.
    template<class Lockable>
    static void UnlockAs(void* lockable)
    {
        static_cast<Lockable*>(lockable)->Unlock();
    }

    void* fLockable;
    void (*fUnlock)(void*);
    bool fIsLocked;
};
