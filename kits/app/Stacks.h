#pragma once

namespace kits {

#ifdef KITS_GUARDS

/// Prints the stack of every thread to stderr, one after the other.
/// Thread: any, one at a time.
void PrintAllStacks();

#endif

} // namespace kits
