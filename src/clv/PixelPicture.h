#pragma once

#include <SupportDefs.h>

#include <span>
#include <vector>

namespace norvane {

/// A small picture written down as text, one letter per pixel, in the system's colour map.
///
/// Letters: '.' nothing, k outline, w white, g light grey, s shadow, b blue, c light blue, d dark
/// amber, o amber, y yellow, l pale yellow. All rows have the same length.
class PixelPicture
{
public:
    explicit PixelPicture(std::span<const char* const> rows);

    int32 Width() const { return fWidth; }
    int32 Height() const { return fHeight; }
    /// One byte per pixel, each row filled up to a multiple of four, as bitmaps keep them.
    std::vector<uint8> PaddedBits() const;
    /// Twice as wide and high without padding; slanted edges become finer steps.
    std::vector<uint8> DoubleBits() const;

private:
    uint8 At(int32 x, int32 y) const;

    int32 fWidth;
    int32 fHeight;
    std::vector<uint8> fPixels;
};

} // namespace norvane
