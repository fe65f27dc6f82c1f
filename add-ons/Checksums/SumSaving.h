#pragma once

#include <EntryRef.h>
#include <SupportDefs.h>

#include <string>

namespace checksums {

/// Writes the lines into a new file beside `neighbour` that is called "SHA256SUMS", or, when there
/// is one, "SHA256SUMS 2" and so on. It has its name once it is whole; nothing is replaced.
/// `*name` tells the name. Errors: B_DEVICE_FULL ... Nothing is left behind then.
status_t SaveSums(const entry_ref& neighbour, const std::string& lines, std::string* name);

} // namespace checksums
