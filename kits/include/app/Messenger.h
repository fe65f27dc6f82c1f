#pragma once

#include <SupportDefs.h>

class BHandler;
class BLooper;
class BMessage;

namespace kits {
class MessengerAccess;
}

/// The address of a handler, by token: it may be copied and kept for as long as one likes, and
/// sending to a handler that is gone fails instead of doing harm.
///
/// Thread: any thread, as a value; the handler or looper named at construction must live that long.
class BMessenger
{
public:
    /// Names nobody.
    BMessenger() = default;
    /// Names `handler`, or the preferred handler of `looper` when `handler` is null.
    /// Errors: B_BAD_VALUE when both are null or the looper is gone; B_MISMATCHED_VALUES when the
    /// handler belongs to another looper than `looper`. The messenger names nobody then.
    explicit BMessenger(const BHandler* handler, const BLooper* looper = nullptr,
                        status_t* result = nullptr);

    /// Whether the handler lives and belongs to a looper.
    bool IsValid() const;
    /// Always true for a valid messenger: it names handlers of this program only.
    bool IsTargetLocal() const;
    /// Lends the handler named (null for a preferred handler) and fills in its looper. Both may be
    /// deleted at any time unless the looper is locked.
    BHandler* Target(BLooper** looper) const;
    /// Locks the looper of the handler named. False when it is gone; nothing is locked then.
    bool LockTarget() const;
    /// Errors: B_TIMED_OUT; B_BAD_VALUE when the handler is gone.
    status_t LockTargetWithTimeout(bigtime_t timeout) const;

    /// Sends a message without data; never waits. An answer goes to `replyTo`, or to the
    /// application. Errors: B_BAD_PORT_ID when the handler is gone.
    status_t SendMessage(uint32 what, BHandler* replyTo = nullptr) const;
    /// Sends a copy of `message`; never waits, as queues are unbounded.
    /// Ownership: borrows `message`.
    status_t SendMessage(BMessage* message, BHandler* replyTo = nullptr,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    status_t SendMessage(BMessage* message, BMessenger replyTo,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;

    /// Sends and waits for the answer. When the message is handled without one, `reply->what` is
    /// B_NO_REPLY.
    /// Thread: any thread that does not hold the target's lock.
    /// Errors: B_TIMED_OUT; B_BAD_PORT_ID when the target is gone or goes before it handled the
    /// message.
    status_t SendMessage(uint32 what, BMessage* reply) const;
    status_t SendMessage(BMessage* message, BMessage* reply,
                         bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT,
                         bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;

    /// Whether both name the same handler, living or not.
    bool operator==(const BMessenger& other) const;
    bool operator!=(const BMessenger& other) const { return !(*this == other); }

private:
    friend class kits::MessengerAccess;

    int32 fToken = 0; // of the handler; of the looper when the preferred handler is meant
    bool fIsPreferred = false;
};

/// Names the application; nobody while there is none.
extern BMessenger be_app_messenger;
