#include <Looper.h>

#include <Message.h>

#include "app/HandlerAccess.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageDelivery.h"

// The calls that any thread may make on a looper that may be gone. They ask the table of loopers by
// the pointer's value alone and use no member.

using kits::HandlerAccess;
using kits::LooperCore;
using kits::LooperRegistry;

namespace {

status_t Post(const std::shared_ptr<LooperCore>& core, std::unique_ptr<BMessage> message,
              int32 target, BHandler* replyTo)
{
    kits::MessageDelivery& delivery = kits::NewDelivery(*message);
    delivery.target = target;
    if (replyTo != nullptr) {
        delivery.replyTo = {HandlerAccess::Token(replyTo), false};
    }
    if (!core->Post(std::move(message))) {
        return B_BAD_PORT_ID;
    }
    return B_OK;
}

status_t PostTo(const BLooper* looper, std::unique_ptr<BMessage> message)
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(looper);
    return core != nullptr ? Post(core, std::move(message), 0, nullptr) : B_BAD_PORT_ID;
}

status_t PostTo(const BLooper* looper, std::unique_ptr<BMessage> message, BHandler* handler,
                BHandler* replyTo)
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(looper);
    if (core == nullptr) {
        return B_BAD_PORT_ID;
    }
    int32 target = kits::kPreferredTarget;
    if (handler != nullptr) {
        target = HandlerAccess::Token(handler);
        if (LooperRegistry::FindHandler(target).core != core) {
            return B_MISMATCHED_VALUES;
        }
    }
    return Post(core, std::move(message), target, replyTo);
}

} // namespace

status_t BLooper::PostMessage(uint32 what)
{
    return PostTo(this, std::make_unique<BMessage>(what));
}

status_t BLooper::PostMessage(uint32 what, BHandler* handler, BHandler* replyTo)
{
    return PostTo(this, std::make_unique<BMessage>(what), handler, replyTo);
}

status_t BLooper::PostMessage(BMessage* message)
{
    return message != nullptr ? PostTo(this, std::make_unique<BMessage>(*message)) : B_BAD_VALUE;
}

status_t BLooper::PostMessage(BMessage* message, BHandler* handler, BHandler* replyTo)
{
    return message != nullptr ? PostTo(this, std::make_unique<BMessage>(*message), handler, replyTo)
                              : B_BAD_VALUE;
}

bool BLooper::Lock()
{
    return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BLooper::LockWithTimeout(bigtime_t timeout)
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this);
    return core != nullptr ? core->Lock(timeout) : B_BAD_VALUE;
}

void BLooper::Unlock()
{
    if (const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this)) {
        core->Unlock();
    }
}

bool BLooper::IsLocked() const
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this);
    return core != nullptr && core->GetLock().IsHeld();
}
