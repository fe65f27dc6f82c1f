#pragma once

#include "app/HandlerAddress.h"

#include <Messenger.h>

namespace kits {

/// A messenger's inside, for those who keep or copy one.
class MessengerAccess
{
public:
    static HandlerAddress Address(const BMessenger& messenger)
    {
        return {messenger.fToken, messenger.fIsPreferred};
    }
    static BMessenger Make(const HandlerAddress& address)
    {
        BMessenger messenger;
        messenger.fToken = address.token;
        messenger.fIsPreferred = address.isPreferred;
        return messenger;
    }
};

} // namespace kits
