#include "KernelTypes.h"

#include <algorithm>
#include <iterator>
#include <linux/magic.h>

namespace {

struct KernelType
{
    std::string_view name;
    long magic;
};

// The numbers that linux/magic.h of older systems does not name are written out.
constexpr KernelType kKernelTypes[] = {
    {"autofs", 0x0187},
    {"binder", 0x6c6f6f70},
    {"binfmt_misc", BINFMTFS_MAGIC},
    {"bpf", BPF_FS_MAGIC},
    {"cgroup", CGROUP_SUPER_MAGIC},
    {"cgroup2", CGROUP2_SUPER_MAGIC},
    {"configfs", 0x62656570},
    {"debugfs", DEBUGFS_MAGIC},
    {"devpts", DEVPTS_SUPER_MAGIC},
    {"devtmpfs", TMPFS_MAGIC}, // shared with what programs store in memory
    {"efivarfs", EFIVARFS_MAGIC},
    {"fusectl", 0x65735543},
    {"hugetlbfs", HUGETLBFS_MAGIC},
    {"mqueue", 0x19800202},
    {"nfsd", 0x6e667364},
    {"nsfs", NSFS_MAGIC},
    {"proc", PROC_SUPER_MAGIC},
    {"pstore", PSTOREFS_MAGIC},
    {"resctrl", 0x7655821},
    {"rpc_pipefs", 0x67596969},
    {"securityfs", SECURITYFS_MAGIC},
    {"selinuxfs", SELINUX_MAGIC},
    {"smackfs", 0x43415d53},
    {"sysfs", SYSFS_MAGIC},
    {"tracefs", TRACEFS_MAGIC},
};

} // namespace

bool kits::IsKernelType(std::string_view name)
{
    return std::any_of(std::begin(kKernelTypes), std::end(kKernelTypes),
                       [name](const KernelType& kernel) { return kernel.name == name; });
}

bool kits::IsKernelMagic(long magic)
{
    return std::any_of(std::begin(kKernelTypes), std::end(kKernelTypes),
                       [magic](const KernelType& kernel) { return kernel.magic == magic; });
}
