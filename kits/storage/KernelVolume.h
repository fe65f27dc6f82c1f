#pragma once

namespace kits {

/// Whether the file system that an open folder belongs to is filled by the kernel itself; false
/// when it cannot be told.
bool IsKernelVolume(int folder);

} // namespace kits
