#pragma once

#include <Message.h>

#include <memory>

namespace kits {

/// Gives the kits what a posted message carries along: from whom, to whom, whether a reply is
/// awaited; and what it is made of.
class MessageAccess
{
public:
    /// Null for a message that was never delivered.
    static std::shared_ptr<MessageDelivery>& Delivery(BMessage& message)
    {
        return message.fDelivery;
    }
    static const std::shared_ptr<MessageDelivery>& Delivery(const BMessage& message)
    {
        return message.fDelivery;
    }
    /// Null when there is no data.
    static const MessageFields* Fields(const BMessage& message) { return message.fFields; }
    /// Ownership: adopts `fields`, which may be null.
    static void AdoptFields(BMessage& message, MessageFields* fields)
    {
        message.DropFields();
        message.fFields = fields;
    }
};

} // namespace kits
