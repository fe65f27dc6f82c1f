#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// New folders are numbered up to here.
constexpr int32 kLastFolderNumber = 999'999;

/// "New Folder", "New Folder 2", "New Folder 3" ...
std::string NewFolderName(int32 number);

/// Why no entry can have this name; null when one can.
const char* ReasonAgainstName(const char* name);

} // namespace norvane
