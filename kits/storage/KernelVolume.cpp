#include "KernelVolume.h"

#include "KernelTypes.h"
#include "MountTable.h"
#include "SystemCalls.h"

#include <linux/magic.h>
#include <sys/vfs.h>

bool kits::IsKernelVolume(int folder)
{
    struct statfs volume;
    if (sys::VolumeRecord(folder, &volume) != B_OK) {
        return false;
    }
    const auto magic = static_cast<long>(volume.f_type);
    if (magic == TMPFS_MAGIC) {
        Mount mount; // only its name tells
        return FindMountOf(folder, &mount) && mount.kind == MountKind::kKernel;
    }
    return IsKernelMagic(magic);
}
