#pragma once

#include <string>

namespace add_ons {

/// An archive's name without the endings that say what it is; the whole name where there is none.
std::string NameWithoutEnding(const std::string& name);

} // namespace add_ons
