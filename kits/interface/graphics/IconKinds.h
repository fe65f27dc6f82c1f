#pragma once

#include "IconDrawings.h"

#include <string_view>

#include <sys/stat.h>

namespace kits {

/// The icon for a MIME type.
IconKind IconKindOfType(std::string_view type);

/// The icon for an entry's name and mode. The types of names are kept by suffix: asking again costs
/// a look-up. Thread: any.
IconKind IconKindOfEntry(const char* name, mode_t mode);

} // namespace kits
