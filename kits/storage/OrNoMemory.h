#pragma once

#include <Errors.h>
#include <SupportDefs.h>

#include <new>

namespace kits {

/// What `call` returns; B_NO_MEMORY when it ran out of memory.
template<typename Call>
status_t OrNoMemory(Call call)
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

} // namespace kits
