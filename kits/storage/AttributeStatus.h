#pragma once

#include <SupportDefs.h>

namespace kits {

/// Tells what a file system cannot keep from what went wrong: B_UNSUPPORTED for every status by
/// which an attribute is refused though reading and writing work (`node`: an open one of that
/// volume), else `status` itself.
status_t KeepingStatus(status_t status, int node);

} // namespace kits
