#pragma once

#include <Message.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace kits {

/// The target token of what is posted to the preferred handler; real tokens are positive.
constexpr int32 kPreferredTarget = -1;

/// Where a thread waits for the answer to a message it sent.
class ReplySlot
{
public:
    /// Hands over the answer; only the first one counts.
    void Answer(const BMessage& reply);
    /// Ends the waiting without an answer.
    void Fail(status_t status);
    /// Waits; on B_OK `*reply` is the answer.
    /// Errors: B_TIMED_OUT, or what Fail() said.
    status_t Wait(BMessage* reply, bigtime_t deadline);

private:
    std::mutex fMutex;
    std::condition_variable fArrival;
    bool fIsSettled = false;
    status_t fStatus = B_OK;
    std::unique_ptr<BMessage> fReply;
};

/// What a posted message carries besides its contents.
///
/// Its end is the end of the message: a sender that still waits for an answer is told then.
class MessageDelivery
{
public:
    MessageDelivery() = default;
    MessageDelivery(const MessageDelivery&) = delete;
    MessageDelivery& operator=(const MessageDelivery&) = delete;
    ~MessageDelivery();

    int32 target = 0;   // the handler's token, kPreferredTarget, or 0 for the looper itself
    BMessenger replyTo; // where answers go; names nobody when the sender did not say
    std::shared_ptr<ReplySlot> slot; // a thread waits here, instead
    // The answer is awaited by a messenger: when the message ends without one, B_NO_REPLY is sent.
    bool isReplyAwaited = false;
    bool isReplied = false;
    bool isReply = false;
    bool wasHandled = false; // a handler was given it
    bool wasDropped = false; // it came by drag and drop
    float dropX = 0;         // screen units
    float dropY = 0;
};

/// Gives `message` a fresh delivery and returns it.
MessageDelivery& NewDelivery(BMessage& message);

} // namespace kits
