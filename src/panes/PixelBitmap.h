#pragma once

#include <span>

class BBitmap;

namespace norvane {

/// A bitmap of 16 x 16 units of what PixelPicture reads, and its drawing for dense screens. Kept
/// for the program's life. Thread: any.
BBitmap* MakePixelBitmap(std::span<const char* const> rows);

} // namespace norvane
