#pragma once

#include <OS.h>
#include <ThreadAnnotations.h>

#include <memory>

class BLocker;

namespace kits {
class Condition;
}

/// What a thread waits for under a BLocker: that another thread changes what the locker guards. An
/// extension of the platform.
///
/// A wait may end without a signal, so wait in a loop that looks whether what is waited for is
/// there. Thread: any thread. Ownership: outlives every wait.
class BCondition
{
public:
    /// Nobody waits at first.
    BCondition();
    ~BCondition();
    BCondition(const BCondition&) = delete;
    BCondition& operator=(const BCondition&) = delete;

    /// Gives `locker` back, however often it is taken, waits, and takes it again as often. Without
    /// the lock it returns at once.
    void Wait(BLocker& locker) REQUIRES(locker);
    /// The same, until `time` at most. False when that has come.
    /// Units: microseconds of system_time(); B_INFINITE_TIMEOUT waits for ever.
    bool WaitUntil(BLocker& locker, bigtime_t time) REQUIRES(locker);

    /// Wakes one thread that waits.
    void Signal();
    /// Wakes all threads that wait.
    void Broadcast();

private:
    const std::unique_ptr<kits::Condition> fCondition; // never null
};
