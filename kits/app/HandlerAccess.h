#pragma once

#include <Handler.h>
#include <MessageFilter.h>

namespace kits {

/// What the application kit's own classes need of handlers and filters beyond their public face.
class HandlerAccess
{
public:
    static int32 Token(const BHandler* handler) { return handler->fToken; }
    /// Takes the handler and its filters to `looper`, null for none.
    static void SetLooper(BHandler* handler, BLooper* looper);
    static void SetNext(BHandler* handler, BHandler* next) { handler->fNextHandler = next; }

    static void SetFilterLooper(BMessageFilter* filter, BLooper* looper)
    {
        filter->fLooper = looper;
    }
};

/// Locks the looper of the handler with that token, whichever that is once it is locked.
/// Errors: B_TIMED_OUT; B_BAD_VALUE when there is none.
[[nodiscard]] status_t LockHandler(int32 token, bigtime_t deadline);

} // namespace kits
