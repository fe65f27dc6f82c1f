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
    /// Has neither message nor target.
    BInvoker();
    /// Sends `message` to `handler`, as SetTarget() says. Ownership: adopts `message`.
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
    /// Sends to `target`, valid or not; never fails.
    virtual status_t SetTarget(BMessenger target);
    /// Whether the target is in this program and still there.
    bool IsTargetLocal() const;
    /// Lends the target, as BMessenger::Target() does.
    BHandler* Target(BLooper** looper = nullptr) const;
    /// The target as a messenger.
    BMessenger Messenger() const { return fTarget; }

    /// Makes answers go to `handler` (null: to the application).
    virtual status_t SetHandlerForReply(BHandler* handler);
    /// Lends that handler; null when it is the application, or gone.
    BHandler* HandlerForReply() const;

    /// Sends a copy of `message`, of the invoker's own when it is null.
    /// Errors: B_BAD_VALUE without a message; those of BMessenger::SendMessage().
    virtual status_t Invoke(BMessage* message = nullptr);
    /// Invokes with a kind that InvokeKind() answers meanwhile.
    status_t InvokeNotify(BMessage* message, uint32 kind = B_CONTROL_INVOKED);

    /// The kind of the invocation that is running, B_CONTROL_INVOKED outside InvokeNotify().
    /// `*notify` tells whether InvokeNotify() runs.
    uint32 InvokeKind(bool* notify = nullptr);

protected:
    /// Begins and ends what InvokeKind() tells, for derived classes that send in their own way.
    void BeginInvokeNotify(uint32 kind = B_CONTROL_INVOKED);
    void EndInvokeNotify();

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fTarget;
    BMessenger fReplyTo;
    std::vector<uint32> fKinds; // of the InvokeNotify() calls that are running, innermost last
};
