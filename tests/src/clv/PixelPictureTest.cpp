#include "clv/PixelPicture.h"

#include <GraphicsDefs.h>

#include <gtest/gtest.h>

namespace {

using norvane::PixelPicture;

constexpr const char* kStep[] = {
    "k..", //
    "kk.", //
};

TEST(PixelPictureTest, PadsRowsToFour)
{
    const std::vector<uint8> bits = PixelPicture(kStep).PaddedBits();
    ASSERT_EQ(bits.size(), 8u);
    EXPECT_NE(bits[0], B_TRANSPARENT_8_BIT);
    EXPECT_EQ(bits[1], B_TRANSPARENT_8_BIT);
    EXPECT_EQ(bits[4], bits[0]);
    EXPECT_EQ(bits[5], bits[0]);
    EXPECT_EQ(bits[3], B_TRANSPARENT_8_BIT);
}

TEST(PixelPictureTest, DoublesAndSmoothsSteps)
{
    const std::vector<uint8> bits = PixelPicture(kStep).DoubleBits();
    ASSERT_EQ(bits.size(), 24u);
    const uint8 ink = bits[0];
    EXPECT_EQ(bits[6 + 2], ink);                     // the inner corner of the step is filled
    EXPECT_EQ(bits[2], B_TRANSPARENT_8_BIT);         // above it nothing is
    EXPECT_EQ(bits[2 * 6 + 3], B_TRANSPARENT_8_BIT); // the outer corner is taken off
    EXPECT_EQ(bits[3 * 6 + 3], ink);
}

} // namespace
