#include "FolderIdentity.h"

#include "NodeNumbers.h"
#include "SystemCalls.h"

#include <functional>

namespace kits {

uint32 FolderIdentity::Tag() const
{
    if (handle.empty() && birth == 0) {
        return 0;
    }
    const size_t hash =
        handle.empty() ? std::hash<uint64>()(birth) : std::hash<std::string>()(handle);
    const auto tag = static_cast<uint32>(hash ^ hash >> 32);
    return tag == 0 ? 1 : tag;
}

FolderIdentity IdentityOf(int folder)
{
    FolderIdentity identity;
    if (sys::HandleOf(folder, &identity.handle) != B_OK) {
        identity.handle.clear();
        if (sys::BirthOf(folder, &identity.birth) != B_OK) {
            identity.birth = 0;
        }
    }
    return identity;
}

Sameness Compare(const FolderIdentity& known, const FolderIdentity& now, int folder)
{
    if (!known.handle.empty() && !now.handle.empty()) {
        if (known.handle == now.handle) {
            return Sameness::kSame;
        }
        // Where numbers are made up the handles are made of them.
        return HasStableNodes(folder) ? Sameness::kOther : Sameness::kUnknown;
    }
    if (known.birth != 0 && now.birth != 0) {
        return known.birth == now.birth ? Sameness::kSame : Sameness::kOther;
    }
    return Sameness::kUnknown;
}

} // namespace kits
