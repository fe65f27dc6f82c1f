#pragma once

#include <SupportDefs.h>

#include "kernel/Stack.h"

#include <memory>

class BLooper;

// Checks of development and test builds (KITS_GUARDS); each ends the program with the stack of the
// culprit on stderr. They are empty otherwise.
//
// - The window server's thread takes no looper's lock, waits for no answer to a message and calls
//   nothing on itself: windows wait for it, so the wait would run in a circle.
// - No thread holds two loopers' locks: two threads that do it the other way round wait for ever.
// Allowed
//   are a declared pair, a looper that was never run, and one that a long running looper
//   (SetLongRunning) made while it was working.
// - A message to a window that waits two seconds while nothing is taken from its queue: printed are
// the
//   stacks of all threads. KITS_WATCHDOG=abort in the environment ends the program then. A window
//   whose thread said that it is at work for long (LongWork, SetLongRunning) is left in peace.

namespace kits {

class LooperCore;

#ifdef KITS_GUARDS

/// Allows the calling thread to hold these two loopers' locks together while the object lives.
class AllowLockPair
{
public:
    AllowLockPair(const BLooper* one, const BLooper* other);
    ~AllowLockPair();
    AllowLockPair(const AllowLockPair&) = delete;
    AllowLockPair& operator=(const AllowLockPair&) = delete;
};

/// Says that the calling thread, a looper's, knowingly takes no messages while the object lives.
class LongWork
{
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

private:
    const std::shared_ptr<LooperCore> fCore; // null on a thread that is no looper's
};

/// Watches the windows from a thread of its own for as long as it lives.
class Watchdog
{
public:
    /// Units: `limit` in microseconds of silence.
    explicit Watchdog(bigtime_t limit = 2000000);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    class Watch;
    std::unique_ptr<Watch> fWatch;
};

/// Prints the stack of every thread to stderr, one after the other.
/// Thread: any, one at a time.
void PrintAllStacks();

// What LooperCore calls around a lock that the calling thread did not hold before.
void GuardBeforeLock(const LooperCore& core);
void GuardAfterLock(const LooperCore& core);
void GuardAfterUnlock(const LooperCore& core);
/// Ends the program with `complaint` when the window server's thread calls it.
void GuardNotServer(const char* complaint);
/// The token of the looper whose lock the calling thread took last, 0 when it holds none.
int32 InnermostLockedLooper();

#else

class AllowLockPair
{
public:
    AllowLockPair(const BLooper*, const BLooper*) {}
    ~AllowLockPair() {} // not trivial, or its objects would count as unused
};

class LongWork
{
public:
    LongWork() {}
    ~LongWork() {}
};

class Watchdog
{
};

inline void GuardBeforeLock(const LooperCore&) {}
inline void GuardAfterLock(const LooperCore&) {}
inline void GuardAfterUnlock(const LooperCore&) {}
inline void GuardNotServer(const char*) {}
inline int32 InnermostLockedLooper()
{
    return 0;
}

#endif

} // namespace kits
