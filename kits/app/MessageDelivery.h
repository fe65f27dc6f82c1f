#pragma once

#include <Message.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <memory>

namespace kits {

/// The target token of what is posted to the preferred handler; real tokens are positive.
constexpr int32 kPreferredTarget = -1;

class LooperCore;
class MessageFields;
struct MessageDelivery;

/// Gives the kits what a posted message carries along: from whom, to whom, whether a reply is
/// awaited; and what it is made of.
class MessageAccess
{
public:
    /// Null for a message that was never delivered.
    static std::shared_ptr<MessageDelivery>& Delivery(BMessage& message);
    static const std::shared_ptr<MessageDelivery>& Delivery(const BMessage& message);
    /// Null when there is no data.
    static const MessageFields* Fields(const BMessage& message);
    /// Ownership: adopts `fields`, which may be null.
    static void AdoptFields(BMessage& message, MessageFields* fields);
};

/// Where the answer to a message is waited for: by a thread, or by a looper that looks when it is
/// woken.
///
/// Thread: any thread.
class ReplySlot
{
public:
    /// Wakes `listener`'s looper when the slot is settled.
    explicit ReplySlot(std::shared_ptr<LooperCore> listener = nullptr);
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

    const std::shared_ptr<LooperCore> fListener;
    Mutex fMutex;
    Condition fArrival;
    bool fIsSettled GUARDED_BY(fMutex) = false;
    status_t fStatus GUARDED_BY(fMutex) = B_OK;
    std::unique_ptr<BMessage> fReply GUARDED_BY(fMutex);
};

/// What a posted message carries besides its contents.
///
/// Its end is the end of the message: a sender that still waits for an answer is told then.
struct MessageDelivery
{
    MessageDelivery() = default;
    MessageDelivery(const MessageDelivery&) = delete;
    MessageDelivery& operator=(const MessageDelivery&) = delete;
    ~MessageDelivery();

    /// Whether the sender said where the answer is to go.
    bool IsAnswerAsked() const;

    int32 target = 0;   // the handler's token, kPreferredTarget, or 0 for the looper itself
    BMessenger replyTo; // where answers go; names nobody when the sender did not say
    std::shared_ptr<ReplySlot> slot; // a thread waits here, instead
    bool isReplied = false;          // one answer was sent
    bool isReply = false;
    bool wasHandled = false; // a handler was given it
    bool endsLooper = false; // it is no message for a handler: the loop ends here
    bool wasDropped = false; // it came by drag and drop
    float dropX = 0;         // screen units
    float dropY = 0;
    float dropOffsetX = 0; // where in what was dragged the pointer held it
    float dropOffsetY = 0;
};

/// Gives `message` a fresh delivery and returns it.
MessageDelivery& NewDelivery(BMessage& message);

/// A messenger's inside, for those who keep or copy one.
class MessengerAccess
{
public:
    static int32 Token(const BMessenger& messenger) { return messenger.fToken; }
    static bool IsPreferred(const BMessenger& messenger) { return messenger.fIsPreferred; }
    static BMessenger Make(int32 token, bool isPreferred);
    /// Sends `message`, which has its delivery but for the target.
    /// Errors: B_BAD_PORT_ID when the handler is gone; the message is deleted then.
    [[nodiscard]] static status_t Post(const BMessenger& target, std::unique_ptr<BMessage> message);
};

} // namespace kits
