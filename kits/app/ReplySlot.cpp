#include "app/ReplySlot.h"

#include "app/Guards.h"
#include "app/MessageAccess.h"

#include <utility>

namespace kits {

ReplySlot::ReplySlot(std::function<void()> whenSettled) : fWhenSettled(std::move(whenSettled)) {}

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
    if (fWhenSettled != nullptr) {
        fWhenSettled();
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

} // namespace kits
