#include "app/MessageDelivery.h"

#include <AppDefs.h>

#include "app/Guards.h"
#include "app/LooperCore.h"

#include <utility>

namespace kits {

ReplySlot::ReplySlot(std::shared_ptr<LooperCore> listener) : fListener(std::move(listener)) {}

ReplySlot::~ReplySlot() = default;

void ReplySlot::Answer(std::unique_ptr<BMessage> reply)
{
    Settle(B_OK, std::move(reply));
}

void ReplySlot::Fail(status_t status)
{
    Settle(status, nullptr);
}

void ReplySlot::Settle(status_t status, std::unique_ptr<BMessage> reply)
{
    {
        MutexLock lock(fMutex);
        if (fIsSettled) {
            return;
        }
        fIsSettled = true;
        fStatus = status;
        fReply = std::move(reply);
    }
    fArrival.Signal();
    if (fListener != nullptr) {
        fListener->Wake();
    }
}

status_t ReplySlot::Wait(BMessage* reply, bigtime_t deadline)
{
    GuardNotServer("The window server's thread waits for an answer");
    std::unique_ptr<BMessage> answer;
    {
        MutexLock lock(fMutex);
        while (!fIsSettled) {
            if (!fArrival.WaitUntil(fMutex, deadline) && !fIsSettled) {
                return B_TIMED_OUT;
            }
        }
        if (fReply == nullptr) {
            return fStatus;
        }
        answer = std::move(fReply);
    }
    *reply = *answer;
    MessageAccess::Delivery(*reply) = std::move(MessageAccess::Delivery(*answer));
    return B_OK;
}

MessageDelivery::~MessageDelivery()
{
    if (slot == nullptr || isReplied) {
        return;
    }
    if (wasHandled) {
        slot->Answer(std::make_unique<BMessage>(B_NO_REPLY));
    } else {
        slot->Fail(B_BAD_PORT_ID);
    }
}

bool MessageDelivery::IsAnswerAsked() const
{
    return slot != nullptr || MessengerAccess::Token(replyTo) != 0;
}

MessageDelivery& NewDelivery(BMessage& message)
{
    std::shared_ptr<MessageDelivery>& delivery = MessageAccess::Delivery(message);
    delivery = std::make_shared<MessageDelivery>();
    return *delivery;
}

} // namespace kits
