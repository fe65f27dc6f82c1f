#pragma once

#include "MountTable.h"
#include "NodeNotices.h"
#include "UniqueFd.h"
#include "kernel/Mutex.h"

#include <SupportDefs.h>

#include <memory>

namespace kits {

/// The thread behind B_WATCH_MOUNT: tells which volumes come and go.
///
/// It asks each new volume for its number; one that does not answer holds up the notices of others,
/// but nobody who watches. Thread: any. Lives as long as the program.
class MountWatcher
{
public:
    static MountWatcher& Get();

    /// Waits a moment for the list of what is mounted now, so that what comes after the call is
    /// told. Errors: B_NO_MORE_THREADS, B_NO_MEMORY when there are no descriptors to be had.
    [[nodiscard]] status_t Watch(const BMessenger& target);
    void StopWatching(const BMessenger& target);

private:
    MountWatcher();

    void Run();
    void Tell();

    const UniqueFd fWake;
    const std::shared_ptr<WatchTargets> fTargets = std::make_shared<WatchTargets>();
    std::unique_ptr<MountTable> fMounts; // the thread's; null while nobody asks

    Mutex fMutex;
    Condition fReading;
    bool fHasRead GUARDED_BY(fMutex) = false;
    bool fHasThread GUARDED_BY(fMutex) = false;
};

} // namespace kits
