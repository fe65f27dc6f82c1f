#pragma once

#include <Entry.h>
#include <NodeRef.h>

namespace norvane {

class NodeSet;

/// Finds whether `entry` is the node, or lies below it at any depth. Errors: those of looking on
/// the way up, which leave it open.
[[nodiscard]] status_t LiesIn(const BEntry& entry, const node_ref& node, bool* lies);
/// The same for any of several nodes.
[[nodiscard]] status_t LiesIn(BEntry entry, const NodeSet& nodes, bool* lies);

} // namespace norvane
