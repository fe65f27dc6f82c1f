#include <Bitmap.h>
#include <Screen.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

namespace {

TEST(ColorMapTest, HasGreysAndATransparentEntry)
{
    const color_map* map = system_colors();

    EXPECT_EQ(map->color_list[0], (rgb_color{0, 0, 0, 255}));
    EXPECT_EQ(map->color_list[31], (rgb_color{255, 255, 255, 255}));
    EXPECT_EQ(map->color_list[B_TRANSPARENT_8_BIT], B_TRANSPARENT_COLOR);
    EXPECT_EQ(map->color_list[map->inversion_map[0]], (rgb_color{255, 255, 255, 255}));
    // Five bits of each: pure red.
    EXPECT_EQ(map->color_list[map->index_map[31 << 10]], (rgb_color{255, 0, 0, 255}));
}

TEST(ColorMapTest, EveryColourFindsItself)
{
    const BScreen screen;
    for (int i = 0; i < 256; ++i) {
        const rgb_color color = screen.ColorForIndex(static_cast<uint8>(i));
        EXPECT_EQ(screen.ColorForIndex(screen.IndexForColor(color)), color) << i;
    }
    EXPECT_EQ(screen.IndexForColor(1, 2, 3, 0), B_TRANSPARENT_8_BIT);
}

TEST(ColorMapTest, FindsTheFirstOfTheNearestColours)
{
    const color_map* map = system_colors();
    const auto wide = [](int five) {
        return (five << 3) | (five >> 2);
    };
    for (int place = 0; place < 32768; ++place) {
        int nearest = 0;
        int least = INT_MAX;
        for (int i = 0; i < B_TRANSPARENT_8_BIT; ++i) {
            const rgb_color& color = map->color_list[i];
            const int red = color.red - wide(place >> 10);
            const int green = color.green - wide((place >> 5) & 31);
            const int blue = color.blue - wide(place & 31);
            const int distance = red * red + green * green + blue * blue;
            if (distance < least) {
                least = distance;
                nearest = i;
            }
        }
        ASSERT_EQ(map->index_map[place], nearest) << place;
    }
}

TEST(BitmapTest, RowsArePaddedToFourBytes)
{
    BBitmap bitmap(BRect(0, 0, 4, 2), B_CMAP8);

    EXPECT_EQ(bitmap.InitCheck(), B_OK);
    EXPECT_EQ(bitmap.BytesPerRow(), 8);
    EXPECT_EQ(bitmap.BitsLength(), 24);
    EXPECT_EQ(static_cast<uint8*>(bitmap.Bits())[0], B_TRANSPARENT_8_BIT);
}

struct BadCase
{
    const char* name;
    BRect bounds;
    color_space space;
};

class BadBitmapTest : public ::testing::TestWithParam<BadCase>
{
};

TEST_P(BadBitmapTest, IsRefused)
{
    BBitmap bitmap(GetParam().bounds, GetParam().space);

    EXPECT_EQ(bitmap.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(bitmap.Bits(), nullptr);
    EXPECT_EQ(bitmap.BitsLength(), 0);
    const uint8 byte = 0;
    EXPECT_EQ(bitmap.ImportBits(&byte, 1, 1, 0, B_CMAP8), B_BAD_VALUE);
    bitmap.SetBits(&byte, 1, 0, B_CMAP8);
}

INSTANTIATE_TEST_SUITE_P(All, BadBitmapTest,
                         ::testing::Values(BadCase{"Empty", BRect(), B_RGB32},
                                           BadCase{"TooLarge", BRect(0, 0, 1e9f, 1e9f), B_RGB32},
                                           BadCase{"TooBroad", BRect(0, 0, 20000, 1), B_CMAP8},
                                           BadCase{"NoColours", BRect(0, 0, 3, 3),
                                                   B_NO_COLOR_SPACE}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(BitmapTest, ConvertsColours)
{
    BBitmap bitmap(BRect(0, 0, 1, 0), B_CMAP8);
    const uint8 pixels[] = {0, 0, 255, 255, 9, 9, 9, 0}; // opaque red, something transparent

    ASSERT_EQ(bitmap.ImportBits(pixels, 8, 8, 0, B_RGBA32), B_OK);

    const auto* bits = static_cast<const uint8*>(bitmap.Bits());
    EXPECT_EQ(BScreen().ColorForIndex(bits[0]), (rgb_color{255, 0, 0, 255}));
    EXPECT_EQ(bits[1], B_TRANSPARENT_8_BIT);
}

TEST(BitmapTest, NeverWritesPastItsEnd)
{
    BBitmap bitmap(BRect(0, 0, 3, 1), B_CMAP8);
    uint8 many[64];
    std::memset(many, 7, sizeof(many));

    bitmap.SetBits(many, 64, 4, B_CMAP8);
    bitmap.SetBits(many, 64, 100, B_CMAP8);

    const auto* bits = static_cast<const uint8*>(bitmap.Bits());
    EXPECT_EQ(bits[3], B_TRANSPARENT_8_BIT);
    EXPECT_EQ(bits[7], 7);
    EXPECT_EQ(bitmap.ImportBits(many, 64, 16, 0, B_RGB32), B_BAD_VALUE);
    EXPECT_EQ(bitmap.ImportBits(many, 8, 4, -1, B_CMAP8), B_BAD_VALUE);
}

TEST(BitmapTest, DoublePictureMustFit)
{
    BBitmap bitmap(BRect(0, 0, 1, 1), B_CMAP8);
    const uint8 pixels[16] = {};

    EXPECT_EQ(bitmap.SetDoubleBits(pixels, 15, B_CMAP8), B_BAD_VALUE);
    EXPECT_EQ(bitmap.SetDoubleBits(pixels, 16, B_CMAP8), B_OK);
}

TEST(BitmapTest, CopyHasItsOwnPixels)
{
    BBitmap one(BRect(0, 0, 3, 3), B_RGB32);
    BBitmap copy(&one);

    std::memset(one.Bits(), 0, static_cast<size_t>(one.BitsLength()));

    EXPECT_EQ(static_cast<const uint8*>(copy.Bits())[0], 255);
    EXPECT_EQ(copy.Bounds(), one.Bounds());
}

} // namespace
