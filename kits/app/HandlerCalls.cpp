#include "app/HandlerCalls.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageAccess.h"
#include "app/MessageDelivery.h"

namespace kits {

status_t LockHandler(int32 token, bigtime_t deadline)
{
    while (const std::shared_ptr<LooperCore> core = LooperRegistry::FindHandler(token).core) {
        const status_t status = core->LockUntil(deadline);
        if (status == B_TIMED_OUT) {
            return status;
        }
        if (status == B_OK) {
            if (LooperRegistry::FindHandler(token).core == core) {
                return B_OK;
            }
            core->Unlock(); // it went to another looper, or away, while this thread waited
        }
    }
    return B_BAD_VALUE;
}

void UnlockHandler(int32 token)
{
    if (const std::shared_ptr<LooperCore> core = LooperRegistry::FindHandler(token).core) {
        core->Unlock();
    }
}

status_t PostTo(const HandlerAddress& address, std::unique_ptr<BMessage> message)
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindHandler(address.token).core;
    MessageAccess::Delivery(*message)->target =
        address.isPreferred ? kPreferredTarget : address.token;
    if (core == nullptr || !core->Post(std::move(message))) {
        return B_BAD_PORT_ID;
    }
    return B_OK;
}

} // namespace kits
