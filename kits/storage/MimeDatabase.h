#pragma once

#include <string>

namespace kits {

/// The type that the shared MIME database has for a file name; "application/octet-stream" when it
/// knows none. Thread: any. Costs some microseconds: callers that ask for rows keep the answers by
/// suffix.
std::string MimeTypeOfName(const char* name);

} // namespace kits
