#pragma once

#include <SupportDefs.h>

/// The device that holds the entry at `path`, links followed; a negative value is a status.
int32 dev_for_path(const char* path);
