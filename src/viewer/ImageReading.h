#pragma once

#include <Bitmap.h>

#include <memory>
#include <string>

namespace norvane {

/// Loads the picture in a file; null, and in `trouble` why, when there is none to be had.
///
/// Thread: any; it waits for the disk.
std::unique_ptr<BBitmap> ReadImage(const std::string& path, std::string* trouble);

} // namespace norvane
