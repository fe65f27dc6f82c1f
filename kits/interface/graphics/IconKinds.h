#pragma once

#include "IconDrawings.h"

#include <string>
#include <string_view>

#include <sys/stat.h>

namespace kits {

/// What an icon is found by: the names that themes have for the type, then our own drawing.
struct IconLook
{
    IconKind kind = IconKind::kGeneric;
    std::string typeName; // empty for what is no document
    std::string genericName;
};

/// The look of a MIME type. Kept for ever, the same for equal ones. Thread: any.
const IconLook* LookOfType(std::string_view type);
/// The look of what is no document of a type, as a disk.
const IconLook* LookOfKind(IconKind kind);

/// The look of an entry by its name and mode. The types of names are kept by suffix: asking again
/// costs a look-up. Thread: any.
const IconLook* LookOfEntry(const char* name, mode_t mode);

} // namespace kits
