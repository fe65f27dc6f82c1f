#pragma once

#include "app/HandlerAddress.h"

#include <SupportDefs.h>

#include <memory>

class BMessage;

namespace kits {

class ReplySlot;

/// The target token of what is posted to the preferred handler; real tokens are positive.
constexpr int32 kPreferredTarget = -1;

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

    int32 target = 0;       // the handler's token, kPreferredTarget, or 0 for the looper itself
    HandlerAddress replyTo; // where answers go; names nobody when the sender did not say
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

} // namespace kits
