#pragma once

#include <string>

namespace kits {

/// The type that the shared MIME database has for a file name; "application/octet-stream" when it
/// knows none. Thread: any. Costs some microseconds where the ending was asked about in the last
/// seconds, up to a fifth of a millisecond where it was not.
std::string MimeTypeOfName(const char* name);

/// The names that icon themes have for a type: its own and that of its kind. Empty when the type is
/// not known. Thread: any.
struct TypeIconNames
{
    std::string own;
    std::string generic;
};
TypeIconNames IconNamesOfType(const std::string& type);

} // namespace kits
