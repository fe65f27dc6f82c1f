#include <Beep.h>

#include "app/DisplayHooks.h"

status_t beep()
{
    const kits::DisplayHooks& hooks = kits::GetDisplayHooks();
    if (hooks.beep == nullptr) {
        return B_ERROR;
    }
    hooks.beep();
    return B_OK;
}
