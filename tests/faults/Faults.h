#pragma once

// What the preloaded library offers to the harness; found by dlsym(), so that the harness is linked
// without it.

/// The kinds of calls that can fail. The names of the table are in kFaultKinds.
enum FaultKind {
    kFaultOpen,
    kFaultRead,
    kFaultWrite,
    kFaultClose,
    kFaultSync,
    kFaultSyncVolume,
    kFaultRename,
    kFaultLink,
    kFaultUnlink,
    kFaultMakeFolder,
    kFaultStat,
    kFaultList,
    kFaultControl,
    kFaultCopyRange,
    kFaultSetSize,
    kFaultSetMode,
    kFaultAttributes,
    kFaultKinds,
};

inline constexpr const char* kFaultNames[kFaultKinds] = {
    "open",      "read",   "write", "close", "fsync",    "syncfs", "rename",
    "link",      "unlink", "mkdir", "statx", "getdents", "ioctl",  "copy_file_range",
    "ftruncate", "chmod",  "xattr",
};

/// What happens at the call that was chosen, besides an errno (a positive value).
enum FaultAction {
    kFaultNone = 0,
    kFaultShort = -1,      // half of what was asked is read or written
    kFaultKillBefore = -2, // the process is killed before the call
    kFaultKillAfter = -3,  // and after it, with its effect on the disk
    kFaultKillWithin = -4, // and after half of a write
};

/// Arms the library: the n-th call (from 1) of a kind, on something below `folder`, fails. With
/// `isLasting` all later ones of the kind fail too. Counting starts anew.
struct FaultPlan
{
    const char* folder = nullptr; // with links resolved; null: everywhere
    FaultKind kind = kFaultOpen;
    int action = kFaultNone;
    int nth = 0;
    bool isLasting = false;
};

using FaultsArm = void (*)(const FaultPlan* plan);
/// How many calls of a kind there were since then.
using FaultsCount = int (*)(FaultKind kind);
/// How often something was made to fail since then.
using FaultsFired = int (*)();
