#include "clv/ArrowPictures.h"

#include "clv/PixelPicture.h"

namespace norvane {

namespace {

// Ten pixels square; the bitmaps' last row and column stay empty.
constexpr const char* kRightArrow[] = {
    "...........", //
    "...k.......", //
    "...kk......", //
    "...kck.....", //
    "...kcck....", //
    "...kcbk....", //
    "...kbk.....", //
    "...kk......", //
    "...k.......", //
    "...........", //
    "...........", //
};

constexpr const char* kDownArrow[] = {
    "...........", //
    "...........", //
    "...........", //
    ".kkkkkkkk..", //
    "..kccccbk..", //
    "...kccbk...", //
    "....kbk....", //
    ".....k.....", //
    "...........", //
    "...........", //
    "...........", //
};

} // namespace

const void* RightArrowBits()
{
    static const std::vector<uint8> bits = PixelPicture(kRightArrow).PaddedBits();
    return bits.data();
}

const void* DownArrowBits()
{
    static const std::vector<uint8> bits = PixelPicture(kDownArrow).PaddedBits();
    return bits.data();
}

} // namespace norvane
