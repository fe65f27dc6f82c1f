#pragma once

#include <SupportDefs.h>

namespace kits {

/// Where a message goes: what a BMessenger is made of, as plain values. Token 0 names nobody.
struct HandlerAddress
{
    int32 token = 0; // of the handler; of the looper when its preferred handler is meant
    bool isPreferred = false;
};

} // namespace kits
