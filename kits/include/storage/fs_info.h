#pragma once

#include <StorageDefs.h>

class BDirectory;

/// What fs_stat_dev() tells of a mounted volume; of the platform's record what somebody needs.
struct fs_info
{
    dev_t dev = 0;                             // the volume's number
    off_t block_size = 0;                      // bytes
    off_t total_blocks = 0;                    // of block_size
    off_t free_blocks = 0;                     // that this user may still write
    char device_name[128] = "";                // what it is made of
    char volume_name[B_FILE_NAME_LENGTH] = ""; // as BVolume::GetName() says
    char fsh_name[32] = "";                    // the kind of file system
};

/// Tells of the volume with that number; may wait for its disk. Errors: B_BAD_VALUE for null and
/// when nothing with that number is mounted, those of asking; `info` is untouched then.
status_t fs_stat_dev(dev_t device, fs_info* info);

/// The device that holds the entry at `path`, links followed; a negative value is a status.
int32 dev_for_path(const char* path);

/// Whether the folder belongs to a file system that the kernel itself fills (processes, devices and
/// their like): nothing there is stored, and some of it never ends. False when it cannot be told.
/// An extension of the platform.
bool is_kernel_volume(const BDirectory& folder);

/// Whether something is mounted at the entry `name` of `folder`, also a part of the same volume,
/// which device numbers do not show. An extension of the platform. Errors: B_NO_INIT, B_BAD_VALUE
/// for a name that is none, those of looking; `is` is untouched then.
[[nodiscard]] status_t is_mount_point(const BDirectory& folder, const char* name, bool* is);

/// Whether an entry of the folder's volume keeps its node number as long as it exists, so that
/// another number means another entry. False for file systems that store none: FAT, exFAT, those of
/// programs (FUSE), of hosts of virtual machines, and of Windows servers. True when it cannot be
/// told. An extension of the platform.
bool has_stable_nodes(const BDirectory& folder);
