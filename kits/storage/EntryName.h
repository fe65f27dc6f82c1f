#pragma once

#include <cstring>
#include <fcntl.h>

namespace kits {

/// How a folder is opened to be read.
constexpr int kOpenFolderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK;

/// Whether `name` is one step of a path and names an entry of the folder itself.
inline bool IsEntryName(const char* name)
{
    return name != nullptr && *name != '\0' && std::strchr(name, '/') == nullptr &&
           std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0;
}

} // namespace kits
