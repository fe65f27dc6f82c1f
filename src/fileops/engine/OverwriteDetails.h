#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <string>

namespace norvane {

/// A size as such lines show it: "17 K", "17 Bytes".
std::string SizeDetails(int64 sizeBytes);
/// A file's line in the overwrite question: "17 K  Wed Jun 30 21:49:08 1993". Local time.
std::string OverwriteDetails(int64 sizeBytes, std::time_t modified);

} // namespace norvane
