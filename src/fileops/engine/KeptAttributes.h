#pragma once

#include <SupportDefs.h>

class BNode;

namespace norvane {

/// Gives `target`, which is new and its owner's alone, the attributes of `source`, and finds
/// whether its access list can be kept, too. Errors: B_UNSUPPORTED when the target's volume cannot
/// hold some of them; others mean that reading or writing failed.
[[nodiscard]] status_t KeepAttributes(const BNode& source, BNode* target);

} // namespace norvane
