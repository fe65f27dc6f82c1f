#pragma once

#include <functional>
#include <string>

namespace add_ons {

/// The first of "NAME ENDING", "NAME 2 ENDING", ... that `take` takes; empty when it takes none of
/// ten thousand. The name is cut at a letter's end where both have no room in one entry's name.
std::string FindFreeName(const std::string& name, const std::string& ending,
                         const std::function<bool(const std::string&)>& take);

} // namespace add_ons
