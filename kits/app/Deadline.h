#pragma once

#include <OS.h>
#include <SupportDefs.h>

namespace kits {

/// The point of system_time() at which a wait of `timeout` from now ends.
inline bigtime_t DeadlineAfter(bigtime_t timeout)
{
    const bigtime_t now = system_time();
    return timeout >= B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + timeout;
}

} // namespace kits
