#pragma once

#include <functional>

namespace add_ons {

/// Runs `work` on a new thread that nobody waits for; it keeps what it needs. False when there is
/// no thread to be had: nothing runs then.
bool StartDetached(const char* name, std::function<void()> work);

} // namespace add_ons
