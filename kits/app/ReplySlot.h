#pragma once

#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <functional>
#include <memory>

class BMessage;

namespace kits {

/// Where the answer to a message is waited for: by a thread, or by a looper that looks when it is
/// woken.
///
/// Thread: any thread.
class ReplySlot
{
public:
    /// Calls `whenSettled` on the thread that settles the slot, with nothing locked.
    explicit ReplySlot(std::function<void()> whenSettled = nullptr);
    ~ReplySlot();
    ReplySlot(const ReplySlot&) = delete;
    ReplySlot& operator=(const ReplySlot&) = delete;

    /// Hands over the answer; only what settles the slot first counts.
    void Answer(std::unique_ptr<BMessage> reply);
    /// Ends the waiting without an answer.
    void Fail(status_t status);
    /// Waits; on B_OK `*reply` is the answer. Thread: any but the window server's.
    /// Errors: B_TIMED_OUT, or what Fail() said.
    [[nodiscard]] status_t Wait(BMessage* reply, bigtime_t deadline);

private:
    void Settle(status_t status, std::unique_ptr<BMessage> reply);

    const std::function<void()> fWhenSettled; // may be empty
    Mutex fMutex;
    Condition fArrival;
    bool fIsSettled GUARDED_BY(fMutex) = false;
    status_t fStatus GUARDED_BY(fMutex) = B_OK;
    std::unique_ptr<BMessage> fReply GUARDED_BY(fMutex);
};

} // namespace kits
