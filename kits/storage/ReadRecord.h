#pragma once

#include <EntryRecord.h>

namespace kits {

/// Looks at what has that name in an open folder.
BEntryRecord ReadRecord(int folder, const char* name);

} // namespace kits
