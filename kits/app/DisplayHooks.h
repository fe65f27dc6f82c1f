#pragma once

#include <SupportDefs.h>

namespace kits {

/// How the application starts and stops the window server, which lies above this layer.
struct DisplayHooks
{
    /// Called by the application's constructor; returns when windows can be made.
    status_t (*start)() = nullptr;
    /// Called once every window is gone and all their threads have ended.
    void (*stop)() = nullptr;
    bool (*isServerThread)() = nullptr;
    /// Makes the desktop's sound; returns at once.
    void (*beep)() = nullptr;
};

/// Registers the window server; a program without it has no display.
/// Thread: any; who asked before still uses those from before.
void SetDisplayHooks(const DisplayHooks& hooks);
const DisplayHooks& GetDisplayHooks();

} // namespace kits
