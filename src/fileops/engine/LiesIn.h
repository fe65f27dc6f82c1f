#pragma once

#include <Entry.h>
#include <NodeRef.h>

namespace norvane {

/// Finds whether `entry` is the node, or lies below it at any depth. Errors: those of looking on
/// the way up, which leave it open.
[[nodiscard]] status_t LiesIn(BEntry entry, const node_ref& node, bool* lies);

} // namespace norvane
