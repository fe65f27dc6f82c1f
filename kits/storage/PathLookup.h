#pragma once

#include "FolderPath.h"
#include "FolderTable.h"

#include <string>

namespace kits {

/// Where a path leads: a folder and a name in it, which need not exist. "." for the root folder,
/// nowhere else.
struct Place
{
    FolderHold folder;
    std::string name;
};

enum class LastLink { kKept, kFollowed };

/// Follows `path` from `base` (null: the working directory). Links on the way are followed, the
/// last step only when asked for. Errors: B_ENTRY_NOT_FOUND when the folder is missing, B_BAD_VALUE
/// for an empty path, B_NAME_TOO_LONG, B_LINK_LIMIT ...
[[nodiscard]] status_t LookUp(const FolderHold& base, const char* path, LastLink lastLink,
                              Place* place);

/// The same from a folder that is open. Errors: B_IO_ERROR, too, when `base` is null, because the
/// system did not tell which folder it is: the working directory is no stand-in.
[[nodiscard]] status_t LookUpFrom(const FolderHold& base, const char* path, LastLink lastLink,
                                  Place* place);

/// The place of an open folder itself, in its parent.
[[nodiscard]] status_t PlaceOfFolder(int folder, Place* place);

/// $HOME, else what the system's list of users says.
std::string HomeFolder();

/// Puts this system's path in place of the few fixed ones that programs of the platform name: the
/// home folder.
std::string SystemPath(const char* path);

/// The path without doubled slashes, "." and, by text, "..". `path` is absolute.
std::string NormalizedPath(const std::string& path);

} // namespace kits
