#include "KernelVolume.h"
#include "SystemCalls.h"

#include <Directory.h>
#include <fs_info.h>

#include <algorithm>
#include <iterator>
#include <linux/magic.h>
#include <sys/vfs.h>

namespace {

// Those that linux/magic.h of older systems does not name.
constexpr long kConfigFs = 0x62656570;
constexpr long kFuseControl = 0x65735543;
constexpr long kMessageQueues = 0x19800202;
constexpr long kRpcPipes = 0x67596969;

constexpr long kKernelVolumes[] = {
    PROC_SUPER_MAGIC, SYSFS_MAGIC,     DEVPTS_SUPER_MAGIC, CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC,
    DEBUGFS_MAGIC,    TRACEFS_MAGIC,   SECURITYFS_MAGIC,   BPF_FS_MAGIC,       PSTOREFS_MAGIC,
    EFIVARFS_MAGIC,   HUGETLBFS_MAGIC, SELINUX_MAGIC,      BINFMTFS_MAGIC,     NSFS_MAGIC,
    kConfigFs,        kFuseControl,    kMessageQueues,     kRpcPipes,
};

} // namespace

bool kits::IsKernelVolume(int folder)
{
    struct statfs volume;
    return sys::VolumeRecord(folder, &volume) == B_OK &&
           std::find(std::begin(kKernelVolumes), std::end(kKernelVolumes),
                     static_cast<long>(volume.f_type)) != std::end(kKernelVolumes);
}

bool is_kernel_volume(const BDirectory& folder)
{
    const kits::UniqueFd opened(folder.Dup());
    return opened.IsOpen() && kits::IsKernelVolume(opened.Get());
}
