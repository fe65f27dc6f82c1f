#include "AttributeStatus.h"

#include "SystemCalls.h"

#include <sys/vfs.h>

status_t kits::KeepingStatus(status_t status, int node)
{
    switch (status) {
    case B_UNSUPPORTED:
    case B_NOT_ALLOWED: // such a name, or none on such a node
    case B_BAD_VALUE:   // too long, or people whom the volume cannot name
        return B_UNSUPPORTED;
    case B_DEVICE_FULL: {
        // Said, too, when the little room that a node has for attributes is used up.
        struct statfs volume;
        constexpr uint64 kSomeBytes = uint64{1} << 20;
        const bool hasRoom =
            sys::VolumeRecord(node, &volume) == B_OK &&
            static_cast<uint64>(volume.f_bavail) * static_cast<uint64>(volume.f_bsize) > kSomeBytes;
        return hasRoom ? B_UNSUPPORTED : status;
    }
    default:
        return status;
    }
}
