#include <Messenger.h>

#include <Message.h>

#include "app/Deadline.h"
#include "app/HandlerAccess.h"
#include "app/HandlerCalls.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageDelivery.h"
#include "app/MessengerAccess.h"
#include "app/ReplySlot.h"

using kits::HandlerAccess;
using kits::LooperCore;
using kits::LooperRegistry;
using kits::MessengerAccess;

BMessenger be_app_messenger;

BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result)
{
    status_t status = B_OK;
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(looper);
    if (core == nullptr && (looper != nullptr || handler == nullptr)) {
        status = B_BAD_VALUE;
    } else if (handler != nullptr) {
        const int32 token = HandlerAccess::Token(handler);
        if (core != nullptr && LooperRegistry::FindHandler(token).core != core) {
            status = B_MISMATCHED_VALUES;
        } else {
            fToken = token;
        }
    } else {
        fToken = core->Token();
        fIsPreferred = true;
    }
    if (result != nullptr) {
        *result = status;
    }
}

bool BMessenger::IsValid() const
{
    return LooperRegistry::FindHandler(fToken).core != nullptr;
}

bool BMessenger::IsTargetLocal() const
{
    return IsValid();
}

BHandler* BMessenger::Target(BLooper** looper) const
{
    const LooperRegistry::Place place = LooperRegistry::FindHandler(fToken);
    if (looper != nullptr) {
        *looper = place.core != nullptr ? place.core->Looper() : nullptr;
    }
    return fIsPreferred ? nullptr : place.handler;
}

bool BMessenger::LockTarget() const
{
    return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BMessenger::LockTargetWithTimeout(bigtime_t timeout) const
{
    return kits::LockHandler(fToken, kits::DeadlineAfter(timeout));
}

status_t BMessenger::SendMessage(uint32 what, BHandler* replyTo) const
{
    BMessage message(what);
    return SendMessage(&message, replyTo);
}

status_t BMessenger::SendMessage(BMessage* message, BHandler* replyTo, bigtime_t timeout) const
{
    return SendMessage(message, replyTo != nullptr ? BMessenger(replyTo) : BMessenger(), timeout);
}

status_t BMessenger::SendMessage(BMessage* message, BMessenger replyTo, bigtime_t /*timeout*/) const
{
    if (message == nullptr) {
        return B_BAD_VALUE;
    }
    auto copy = std::make_unique<BMessage>(*message);
    kits::NewDelivery(*copy).replyTo = MessengerAccess::Address(replyTo);
    return kits::PostTo(MessengerAccess::Address(*this), std::move(copy));
}

status_t BMessenger::SendMessage(uint32 what, BMessage* reply) const
{
    BMessage message(what);
    return SendMessage(&message, reply);
}

status_t BMessenger::SendMessage(BMessage* message, BMessage* reply, bigtime_t /*deliveryTimeout*/,
                                 bigtime_t replyTimeout) const
{
    if (message == nullptr || reply == nullptr) {
        return B_BAD_VALUE;
    }
    const bigtime_t deadline = kits::DeadlineAfter(replyTimeout);
    if (const auto core = LooperRegistry::FindHandler(fToken).core;
        core && core->GetLock().IsHeld()) {
        return B_MESSAGE_TO_SELF; // nobody could answer while this thread waits
    }
    auto copy = std::make_unique<BMessage>(*message);
    const auto slot = std::make_shared<kits::ReplySlot>();
    kits::NewDelivery(*copy).slot = slot;
    const status_t status = kits::PostTo(MessengerAccess::Address(*this), std::move(copy));
    return status == B_OK ? slot->Wait(reply, deadline) : status;
}

bool BMessenger::operator==(const BMessenger& other) const
{
    return fToken == other.fToken && fIsPreferred == other.fIsPreferred;
}
