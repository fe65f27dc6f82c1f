#include "app/DisplayHooks.h"

namespace kits {

namespace {

DisplayHooks& Hooks()
{
    static DisplayHooks hooks; // made when first asked for: registrars run before main()
    return hooks;
}

} // namespace

void SetDisplayHooks(const DisplayHooks& hooks)
{
    Hooks() = hooks;
}

const DisplayHooks& GetDisplayHooks()
{
    return Hooks();
}

} // namespace kits
