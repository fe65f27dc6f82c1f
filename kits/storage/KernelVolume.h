#pragma once

namespace kits {

/// Whether an open folder belongs to a file system that the kernel itself fills; false when it
/// cannot be told.
bool IsKernelVolume(int folder);

} // namespace kits
