#pragma once

#include <string>

namespace norvane {

/// The folder shown when no other can be: the user's own.
const std::string& HomeFolder();

} // namespace norvane
