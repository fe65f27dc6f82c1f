#pragma once

#include "Faults.h"

// What the preloaded library of watched calls offers; found by dlsym(), so that who watches is
// linked without it.

/// A system call on something below the watched folder.
struct WatchedCall
{
    int number; // from 1, in the order in which the calls are made
    FaultKind kind;
    int descriptor;   // that it is made on, or relative to
    const char* path; // of what it is about, as far as its first name goes; lent for the call
};

/// Called before or after such a call. No other one is made meanwhile, by whatever thread, and the
/// calls of the hook itself are not watched.
using WatchHook = void (*)(const WatchedCall& call);
/// Counts from now on the calls on something at or below `folder` (links resolved). A hook may be
/// null.
using WatchArm = void (*)(const char* folder, WatchHook before, WatchHook after);
/// How many there were since then.
using WatchCount = int (*)();
