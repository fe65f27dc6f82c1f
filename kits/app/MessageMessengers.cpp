#include <Message.h>

#include "app/MessageScalar.h"
#include "app/MessengerAccess.h"

// Messengers, held as the token of their handler: tokens are never used again, so that an old one
// names nobody.

namespace {

struct HeldMessenger
{
    int32 token = 0;
    int32 isPreferred = 0;
};

HeldMessenger Hold(const BMessenger& messenger)
{
    const kits::HandlerAddress address = kits::MessengerAccess::Address(messenger);
    return {address.token, address.isPreferred ? 1 : 0};
}

} // namespace

status_t BMessage::AddMessenger(const char* name, const BMessenger& value)
{
    return kits::AddScalar(*this, name, B_MESSENGER_TYPE, Hold(value));
}

status_t BMessage::FindMessenger(const char* name, BMessenger* value) const
{
    return FindMessenger(name, 0, value);
}

status_t BMessage::FindMessenger(const char* name, int32 index, BMessenger* value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    HeldMessenger held;
    const status_t status = kits::FindScalar(*this, name, B_MESSENGER_TYPE, index, &held);
    *value = status == B_OK ? kits::MessengerAccess::Make({held.token, held.isPreferred != 0})
                            : BMessenger();
    return status;
}

status_t BMessage::ReplaceMessenger(const char* name, const BMessenger& value)
{
    return ReplaceMessenger(name, 0, value);
}

status_t BMessage::ReplaceMessenger(const char* name, int32 index, const BMessenger& value)
{
    return kits::ReplaceScalar(*this, name, B_MESSENGER_TYPE, index, Hold(value));
}
