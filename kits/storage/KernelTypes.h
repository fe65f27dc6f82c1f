#pragma once

#include <string_view>

namespace kits {

// The types of file systems that the kernel itself fills: nothing is stored there.

/// Whether a type is one of them, by the name that the list of mounts has for it.
bool IsKernelType(std::string_view name);
/// The same by the number that statfs() tells. TMPFS_MAGIC counts, though programs store files
/// under that number too: there only the name tells.
bool IsKernelMagic(long magic);

} // namespace kits
