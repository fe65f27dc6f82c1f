#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// A number of bytes in the largest unit of which there is at least one, as in "1.5 GB".
std::string RoughSize(int64 bytes);

} // namespace norvane
