#pragma once

#include <SupportDefs.h>

#include <string>
#include <string_view>

namespace add_ons {

/// Why something could not be done, for the end of a sentence.
const char* StatusText(status_t status);

/// A name as one line of text shows it: what has no shape has a sign in its place.
std::string ShownName(std::string_view name);

/// "1 234 567".
std::string Grouped(size_t count);

} // namespace add_ons
