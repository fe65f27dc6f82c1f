#pragma once

#include <SupportDefs.h>

#include <app/ClipboardHooks.h>

namespace kits {

/// What the program says that has the clipboard's data.
enum class OwnerState : uint8 {
    kAbsent, // there is none
    kAnswers,
    kSilent, // it did not answer in time
};

/// Asks the owner for something small, over a connection of its own: the toolkit would wait five
/// seconds for each format of one that hangs. For X11. Thread: any; waits up to `limit`.
OwnerState AskOwner(ClipboardKind kind, bigtime_t limit);

} // namespace kits
