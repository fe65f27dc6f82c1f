// A library to be preloaded: lets its harness look at the disk, and do something to it, between two
// system calls of the process.

#include "Watch.h"

#include "FaultPoint.h"

#include <atomic>
#include <climits>
#include <cstdio>
#include <mutex>

namespace {

struct State
{
    std::atomic<bool> isArmed{false};
    char folder[PATH_MAX] = "";
    WatchHook before = nullptr;
    WatchHook after = nullptr;
    std::mutex oneAtATime; // held from before a watched call until after it
    int count = 0;
};

State sState;
thread_local bool tIsOurs = false;    // a hook runs
thread_local bool tIsWatched = false; // the call that is being made
thread_local WatchedCall tCall;
thread_local char tPath[PATH_MAX];

void Tell(WatchHook hook)
{
    if (hook != nullptr) {
        tIsOurs = true;
        hook(tCall);
        tIsOurs = false;
    }
}

} // namespace

int Decide(FaultKind kind, int folder, const char* name)
{
    if (tIsOurs || !sState.isArmed.load(std::memory_order_acquire)) {
        return kFaultNone;
    }
    const int error = errno;
    if (PathOfCall(folder, name, tPath) && IsAtOrBelow(tPath, sState.folder)) {
        sState.oneAtATime.lock();
        tIsWatched = true;
        tCall = {++sState.count, kind, folder, tPath};
        Tell(sState.before);
    }
    errno = error;
    return kFaultNone;
}

void Done(FaultKind, int, const char*)
{
    if (tIsOurs || !tIsWatched) {
        return;
    }
    Tell(sState.after);
    tIsWatched = false;
    sState.oneAtATime.unlock();
}

EXPORTED void watch_arm(const char* folder, WatchHook before, WatchHook after)
{
    // A call that another thread is making comes to its end first, hooks included.
    const std::lock_guard<std::mutex> hold(sState.oneAtATime);
    std::snprintf(sState.folder, sizeof(sState.folder), "%s", folder);
    sState.before = before;
    sState.after = after;
    sState.count = 0;
    sState.isArmed = true;
}

EXPORTED int watch_count()
{
    return sState.count;
}
