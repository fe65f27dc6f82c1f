#pragma once

#include <string>

namespace norvane {

/// The absolute path of a folder that a person named: "~", "~/x", a path relative to `current`, a
/// "file://" address. Doubled and trailing slashes, "." and ".." are resolved by text.
std::string ResolveFolder(const std::string& typed, const std::string& current,
                          const std::string& home);

/// The folder above, "/" above "/".
std::string ParentFolder(const std::string& path);
/// `folder` and `name` with one slash between them.
std::string JoinPath(const std::string& folder, const std::string& name);

} // namespace norvane
