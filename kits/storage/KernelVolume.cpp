#include <Directory.h>
#include <fs_info.h>

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>

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

bool is_kernel_volume(const BDirectory& folder)
{
    const int descriptor = folder.Dup();
    if (descriptor < 0) {
        return false;
    }
    struct statfs volume;
    const bool isKnown = fstatfs(descriptor, &volume) == 0;
    close(descriptor);
    return isKnown && std::find(std::begin(kKernelVolumes), std::end(kKernelVolumes),
                                static_cast<long>(volume.f_type)) != std::end(kKernelVolumes);
}
