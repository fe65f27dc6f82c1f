#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

class BMessage;

/// Sends a message again and again, or a number of times, while it lives.
///
/// The first message goes out one interval after the runner was made. When the machine is late,
/// messages are left out rather than sent in a burst. A runner whose target is gone ends.
/// Thread: any thread. One thread of the program serves all runners; it sleeps while none runs.
/// Units: intervals in microseconds; there is no least one.
class BMessageRunner
{
public:
    /// Sends copies of `message` to `target`, `count` of them, without end when that is negative.
    /// Ownership: `message` is copied. Answers go to the application.
    BMessageRunner(BMessenger target, const BMessage* message, bigtime_t interval,
                   int32 count = -1);
    BMessageRunner(BMessenger target, const BMessage& message, bigtime_t interval,
                   int32 count = -1);
    /// The same, with answers going to `replyTo`.
    BMessageRunner(BMessenger target, const BMessage* message, bigtime_t interval, int32 count,
                   BMessenger replyTo);
    BMessageRunner(BMessenger target, const BMessage& message, bigtime_t interval, int32 count,
                   BMessenger replyTo);
    BMessageRunner(const BMessageRunner&) = delete;
    BMessageRunner& operator=(const BMessageRunner&) = delete;
    /// Ends the sending. What was sent already stays in its target's queue.
    virtual ~BMessageRunner();

    /// Errors: B_BAD_VALUE without a message, with an interval below 1 or a count of 0;
    /// B_BAD_PORT_ID when the target is gone; B_NO_MORE_THREADS. Nothing is ever sent then.
    status_t InitCheck() const { return fNumber > 0 ? B_OK : fNumber; }

    /// The next message goes out one new interval from now.
    /// Errors: B_BAD_VALUE below 1, or when the runner has ended.
    status_t SetInterval(bigtime_t interval);
    /// Sets how many messages are still to be sent: none with 0, which ends the runner; without end
    /// when it is negative. Errors: B_BAD_VALUE when the runner has ended.
    status_t SetCount(int32 count);
    /// Tells the interval, and how many are still to be sent (negative: without end). Either may be
    /// null. Errors: B_BAD_VALUE when the runner has ended; nothing is told then.
    status_t GetInfo(bigtime_t* interval, int32* count) const;

    /// Sends as a runner does that lives until the last message was sent, or the target is gone.
    /// Errors: those of InitCheck().
    static status_t StartSending(BMessenger target, const BMessage* message, bigtime_t interval,
                                 int32 count);
    static status_t StartSending(BMessenger target, const BMessage* message, bigtime_t interval,
                                 int32 count, BMessenger replyTo);

private:
    int32 fNumber; // among all runners; negative: why there is none
};
