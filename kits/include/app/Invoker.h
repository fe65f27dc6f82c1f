#pragma once

#include <AppDefs.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>
#include <vector>

class BMessage;

/// Sends a prepared message to a target whenever it is invoked; what controls and menu items are
/// made of.
///
/// Thread: that of the object it is part of.
class BInvoker
{
public:
    BInvoker();
    /// Ownership: adopts `message`.
    BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper = nullptr);
    BInvoker(BMessage* message, BMessenger target);
    BInvoker(const BInvoker&) = delete;
    BInvoker& operator=(const BInvoker&) = delete;
    virtual ~BInvoker();

    /// Replaces the message. Ownership: adopts `message`, deletes the former one; null for none.
    virtual status_t SetMessage(BMessage* message);
    /// Lends the message; null when there is none.
    BMessage* Message() const { return fMessage.get(); }
    /// The message's `what`, 0 without a message.
    uint32 Command() const;

    /// Sends to `handler`, or to the preferred handler of `looper` when `handler` is null.
    /// Errors: as BMessenger's constructor; the invoker has no target then.
    virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
    virtual status_t SetTarget(BMessenger target);
    bool IsTargetLocal() const;
    /// Lends the target, as BMessenger::Target() does.
    BHandler* Target(BLooper** looper = nullptr) const;
    BMessenger Messenger() const { return fTarget; }

    /// Makes answers go to `handler` (null: to the application).
    virtual status_t SetHandlerForReply(BHandler* handler);
    BHandler* HandlerForReply() const;

    /// Sends a copy of `message`, of the invoker's own when it is null.
    /// Errors: B_BAD_VALUE without a message; those of BMessenger::SendMessage().
    virtual status_t Invoke(BMessage* message = nullptr);
    /// Invokes with a kind that InvokeKind() answers meanwhile.
    status_t InvokeNotify(BMessage* message, uint32 kind = B_CONTROL_INVOKED);

    /// The longest time that sending may take. Queues are unbounded, so it never comes to bear.
    status_t SetTimeout(bigtime_t timeout);
    bigtime_t Timeout() const { return fTimeout; }

    /// The kind of the invocation that is running, B_CONTROL_INVOKED outside InvokeNotify().
    /// `*notify` tells whether InvokeNotify() runs.
    uint32 InvokeKind(bool* notify = nullptr);

protected:
    void BeginInvokeNotify(uint32 kind = B_CONTROL_INVOKED);
    void EndInvokeNotify();

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fTarget;
    BMessenger fReplyTo;
    bigtime_t fTimeout = B_INFINITE_TIMEOUT;
    std::vector<uint32> fKinds; // of the InvokeNotify() calls that are running, innermost last
};
