#pragma once

#include <string>
#include <string_view>

namespace kits {

/// Makes a text what the middle button pastes, on desktops that have that. Any thread.
void OfferPrimary(std::string_view text);
/// What was selected last, in whatever program; empty when there is nothing, or its owner does not
/// answer. Any thread but the server's.
std::string FetchPrimary();

} // namespace kits
