#pragma once

#include "UniqueFd.h"

#include <SupportDefs.h>

#include <functional>
#include <string>
#include <sys/types.h>

namespace kits {

/// Opens what `path` leads to from the folder `base`, a path of any length; the last step as
/// `flags` say. Returns the descriptor or a status.
int OpenPath(int base, const std::string& path, int flags, mode_t mode = 0);

/// Opens the folder that an open one lies in, and finds its name there by looking through it.
/// Errors: B_ENTRY_NOT_FOUND when it is not there, those of opening and reading.
[[nodiscard]] status_t FindInParent(int folder, UniqueFd* parent, std::string* name);

/// Gives the path of an open folder that is known from elsewhere; false for none. It is checked.
using KnownPath = std::function<bool(int folder, std::string* path)>;

/// The path by which an open folder is reached now, of any length: what the system does not tell is
/// looked for on the way up, until `known` tells. Errors: B_ENTRY_NOT_FOUND when it was removed or
/// is out of reach; others of looking.
[[nodiscard]] status_t WholePathOf(int folder, const KnownPath& known, std::string* path);

} // namespace kits
