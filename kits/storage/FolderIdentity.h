#pragma once

#include <SupportDefs.h>

#include <string>

namespace kits {

/// What tells a folder from another one that got its numbers after it was removed.
///
/// File systems give numbers anew: ext4 the number of a folder to the very next one.
struct FolderIdentity
{
    std::string handle; // the file system's own name for it; "" where it gives none
    uint64 birth = 0;   // nanoseconds; 0 when it is not known. Read where there is no handle.

    /// The same for the same folder, of many; 0 when nothing is known.
    uint32 Tag() const;
};

/// Reads it, mostly by one call.
FolderIdentity IdentityOf(int folder);

enum class Sameness { kSame, kOther, kUnknown };

/// Compares what was known of a folder with that which has its numbers now, open as `folder`.
Sameness Compare(const FolderIdentity& known, const FolderIdentity& now, int folder);

} // namespace kits
