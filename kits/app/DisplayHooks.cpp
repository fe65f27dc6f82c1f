#include "app/DisplayHooks.h"

#include "app/HookSlot.h"

namespace kits {

namespace {

HookSlot<DisplayHooks>& Slot()
{
    static HookSlot<DisplayHooks> slot; // made when first asked for: registrars run before main()
    return slot;
}

} // namespace

void SetDisplayHooks(const DisplayHooks& hooks)
{
    Slot().Set(hooks);
}

const DisplayHooks& GetDisplayHooks()
{
    return Slot().Get();
}

} // namespace kits
