#pragma once

#include "app/FilterList.h"

#include <Handler.h>

namespace kits {

/// What the application kit's own classes need of handlers beyond their public face.
class HandlerAccess
{
public:
    static int32 Token(const BHandler* handler) { return handler->fToken; }
    /// Takes the handler and its filters to `looper`, null for none.
    static void SetLooper(BHandler* handler, BLooper* looper)
    {
        handler->fLooper.store(looper, std::memory_order_release);
        SetFiltersLooper(handler->fFilters, looper);
    }
    static void SetNext(BHandler* handler, BHandler* next) { handler->fNextHandler = next; }
};

} // namespace kits
