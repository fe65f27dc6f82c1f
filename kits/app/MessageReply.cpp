#include <Message.h>

#include <Messenger.h>
#include <Point.h>

#include "app/HandlerCalls.h"
#include "app/MessageDelivery.h"
#include "app/MessengerAccess.h"
#include "app/ReplySlot.h"

using kits::MessageDelivery;
using kits::MessengerAccess;

bool BMessage::IsReply() const
{
    return fDelivery != nullptr && fDelivery->isReply;
}

bool BMessage::IsSourceWaiting() const
{
    return fDelivery != nullptr && fDelivery->slot != nullptr && !fDelivery->isReplied;
}

BMessenger BMessage::ReturnAddress() const
{
    if (fDelivery == nullptr) {
        return BMessenger();
    }
    return fDelivery->IsAnswerAsked() ? MessengerAccess::Make(fDelivery->replyTo)
                                      : be_app_messenger;
}

bool BMessage::WasDropped() const
{
    return fDelivery != nullptr && fDelivery->wasDropped;
}

BPoint BMessage::DropPoint(BPoint* offset) const
{
    if (offset != nullptr) {
        *offset = WasDropped() ? BPoint(fDelivery->dropOffsetX, fDelivery->dropOffsetY) : BPoint();
    }
    return WasDropped() ? BPoint(fDelivery->dropX, fDelivery->dropY) : BPoint();
}

status_t BMessage::SendReply(uint32 command, BHandler* replyTo) const
{
    BMessage reply(command);
    return SendReply(&reply, replyTo);
}

status_t BMessage::SendReply(BMessage* reply, BHandler* replyTo, bigtime_t timeout) const
{
    return SendReply(reply, replyTo != nullptr ? BMessenger(replyTo) : BMessenger(), timeout);
}

status_t BMessage::SendReply(BMessage* reply, const BMessenger& replyTo,
                             bigtime_t /*timeout*/) const
{
    if (reply == nullptr) {
        return B_BAD_VALUE;
    }
    if (fDelivery == nullptr) {
        return B_BAD_REPLY;
    }
    const bool isAwaited = fDelivery->slot != nullptr;
    if (isAwaited && fDelivery->isReplied) {
        return B_DUPLICATE_REPLY;
    }
    fDelivery->isReplied = true;
    auto copy = std::make_unique<BMessage>(*reply);
    MessageDelivery& delivery = kits::NewDelivery(*copy);
    delivery.isReply = true;
    delivery.replyTo = MessengerAccess::Address(replyTo);
    if (isAwaited) {
        delivery.wasHandled = true;
        fDelivery->slot->Answer(std::move(copy));
        return B_OK;
    }
    return kits::PostTo(MessengerAccess::Address(ReturnAddress()), std::move(copy));
}
