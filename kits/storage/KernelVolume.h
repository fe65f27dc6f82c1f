#pragma once

#include <string_view>

namespace kits {

/// Whether file systems of that type, as the list of mounts names it, are filled by the kernel
/// itself: nothing is stored there.
bool IsKernelType(std::string_view type);

/// The same of the file system that an open folder belongs to; false when it cannot be told.
bool IsKernelVolume(int folder);

} // namespace kits
