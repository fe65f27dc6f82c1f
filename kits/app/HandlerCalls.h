#pragma once

#include "app/HandlerAddress.h"

#include <SupportDefs.h>

#include <memory>

class BMessage;

namespace kits {

// What any thread may do to a handler that may be gone: it is named by its token, and none of its
// memory is touched.

/// Locks the looper of the handler with that token, whichever that is once it is locked.
/// Errors: B_TIMED_OUT; B_BAD_VALUE when there is none.
[[nodiscard]] status_t LockHandler(int32 token, bigtime_t deadline);
/// Gives back one lock of the looper that the handler belongs to.
void UnlockHandler(int32 token);

/// Sends `message`, which has its delivery but for the target.
/// Errors: B_BAD_PORT_ID when the handler is gone; the message is deleted then.
[[nodiscard]] status_t PostTo(const HandlerAddress& address, std::unique_ptr<BMessage> message);

} // namespace kits
