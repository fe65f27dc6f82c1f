#pragma once

#include <SupportDefs.h>

class BLooper;

// Checks of development and test builds (KITS_GUARDS); each ends the program with the stack of the
// culprit on stderr. They are empty otherwise.
//
// - The window server's thread takes no looper's lock, waits for no answer to a message and calls
//   nothing on itself: windows wait for it, so the wait would run in a circle.
// - No thread holds two loopers' locks: two threads that do it the other way round wait for ever.
//   Allowed are a declared pair, a looper that was never run, and one that a long running looper
//   (SetLongRunning) made while it was working.
//
// Windows that take no messages are the Watchdog's.

namespace kits {

class LooperFacts;

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

// What a looper's core calls around a lock that the calling thread did not hold before.
void GuardBeforeLock(const LooperFacts& looper);
void GuardAfterLock(const LooperFacts& looper);
void GuardAfterUnlock(const LooperFacts& looper);
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

inline void GuardBeforeLock(const LooperFacts&) {}
inline void GuardAfterLock(const LooperFacts&) {}
inline void GuardAfterUnlock(const LooperFacts&) {}
inline void GuardNotServer(const char*) {}
inline int32 InnermostLockedLooper()
{
    return 0;
}

#endif

} // namespace kits
