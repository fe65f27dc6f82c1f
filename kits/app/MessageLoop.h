#pragma once

#include <OS.h>

#include <memory>

class BMessage;

namespace kits {

class LooperCore;

/// What the thread of a looper does: takes the messages from its core and hands them to the looper,
/// one at a time and under the lock, and calls it when there are none.
///
/// Thread: the looper's own, unless a function says otherwise.
class MessageLoop
{
public:
    /// Runs the loop on a new thread, which deletes the looper at its end. Thread: any thread.
    /// Errors: those of spawn_thread(); nothing runs then.
    static thread_id Start(const std::shared_ptr<LooperCore>& core, const char* name,
                           int32 priority);
    /// Handles messages until the looper is to end.
    static void Run(LooperCore& core);
    /// Handles `message` as the loop does: under the lock, filters first. Loops inside hooks call
    /// it too. Returns false when the looper is about to end.
    static bool Dispatch(LooperCore& core, std::unique_ptr<BMessage> message);

private:
    static status_t ThreadEntry(void* data);
    static bigtime_t Idle(LooperCore& core);
};

} // namespace kits
