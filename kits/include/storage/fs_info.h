#pragma once

#include <SupportDefs.h>

class BDirectory;

/// The device that holds the entry at `path`, links followed; a negative value is a status.
int32 dev_for_path(const char* path);

/// Whether the folder belongs to a file system that the kernel itself fills (processes, devices and
/// their like): nothing there is stored, and some of it never ends. False when it cannot be told.
/// An extension of the platform.
bool is_kernel_volume(const BDirectory& folder);
