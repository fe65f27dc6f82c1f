#include "NodeNumbers.h"

#include "SystemCalls.h"

#include <SupportDefs.h>

#include <algorithm>
#include <iterator>
#include <linux/magic.h>
#include <sys/vfs.h>

namespace {

// By what statfs() calls them: the values are those of linux/magic.h, and are written out where
// systems in use have headers without them.
constexpr uint32 kWithoutNumbers[] = {
    // FAT stores none; the system counts them up as it meets files, and forgets them with its
    // cache.
    MSDOS_SUPER_MAGIC,
    // The same.
    0x2011bab0, // EXFAT_SUPER_MAGIC
    // Whatever the program behind it says; many count up what they were asked for.
    0x65735546, // FUSE_SUPER_MAGIC, disks (fuseblk) included
    // What the other side calls its files; several of its volumes may be one here.
    V9FS_MAGIC,
    // The server's numbers where it has any and the mount asks for them, else counted up.
    SMB_SUPER_MAGIC,
    0xff534d42, // CIFS_SUPER_MAGIC
    0xfe534d42, // SMB2_SUPER_MAGIC
    // A host's folders in a virtual machine: counted up. The number is that of the file system's
    // own source (fs/vboxsf/super.c).
    0x786f4256, // VBOXSF_SUPER_MAGIC
};

} // namespace

bool kits::HasStableNodes(int descriptor)
{
    struct statfs volume;
    if (sys::VolumeRecord(descriptor, &volume) != B_OK) {
        return true;
    }
    const auto type = static_cast<uint32>(volume.f_type);
    return std::find(std::begin(kWithoutNumbers), std::end(kWithoutNumbers), type) ==
           std::end(kWithoutNumbers);
}
