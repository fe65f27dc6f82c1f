#pragma once

#include <SupportDefs.h>

class BDirectory;

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
