#pragma once

#include <SupportDefs.h>

#include <functional>
#include <string>

namespace norvane {

/// New folders are numbered up to here.
constexpr int32 kLastFolderNumber = 999'999;

/// "New Folder", "New Folder 2", "New Folder 3" ...
std::string NewFolderName(int32 number);

/// What is said when even the last of those names is taken.
extern const char kTooManyNewFolders[];

/// Calls `make` with the name of number `first` and those after it until it answers something else
/// than B_FILE_EXISTS. Returns that answer, B_FILE_EXISTS when every name is taken; the name tried
/// last is in `name`.
[[nodiscard]] status_t MakeNewFolder(const std::function<status_t(const std::string&)>& make,
                                     int32 first, std::string* name);

/// Why no entry can have this name; null when one can.
const char* ReasonAgainstName(const char* name);

} // namespace norvane
