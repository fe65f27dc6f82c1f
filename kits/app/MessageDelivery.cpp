#include "app/MessageDelivery.h"

#include <AppDefs.h>

#include "app/MessageAccess.h"
#include "app/ReplySlot.h"

namespace kits {

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
    return slot != nullptr || replyTo.token != 0;
}

MessageDelivery& NewDelivery(BMessage& message)
{
    std::shared_ptr<MessageDelivery>& delivery = MessageAccess::Delivery(message);
    delivery = std::make_shared<MessageDelivery>();
    return *delivery;
}

} // namespace kits
