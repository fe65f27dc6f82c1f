#pragma once

#include <SupportDefs.h>

#include <functional>

namespace norvane {

/// Runs `work` on a new thread that nobody waits for; it keeps what it needs. False when there is
/// no thread to be had: nothing runs then.
bool StartDetached(const char* name, int32 priority, std::function<void()> work);

} // namespace norvane
