#pragma once

#include <SupportDefs.h>

/// A colour; alpha 255 is opaque.
struct rgb_color
{
    uint8 red = 0;     // of 255, as the others
    uint8 green = 0;   // of 255
    uint8 blue = 0;    // of 255
    uint8 alpha = 255; // 0 is transparent

    constexpr bool operator==(const rgb_color& other) const = default;
};

/// Makes a colour of its parts.
constexpr rgb_color make_color(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255)
{
    return rgb_color{red, green, blue, alpha};
}

/// As a view colour: the view is not erased before it draws. As a pixel: shows what is below.
constexpr rgb_color B_TRANSPARENT_COLOR = {0x77, 0x74, 0x77, 0x00};
/// The same as a pixel of 32 bits, and as the entry of the colour map that shows what is below.
constexpr rgb_color B_TRANSPARENT_32_BIT = B_TRANSPARENT_COLOR;
constexpr uint8 B_TRANSPARENT_8_BIT = 255;
constexpr uint8 B_TRANSPARENT_MAGIC_CMAP8 = 255;

/// Eight rows of eight pixels; a set bit is drawn in the high colour, a clear one in the low
/// colour.
struct pattern
{
    uint8 data[8]; // one row each, from the top; the highest bit is the leftmost pixel

    /// Whether all rows are the same.
    constexpr bool operator==(const pattern& other) const = default;
};

/// All of one colour, or the two in turn like a chess board.
constexpr pattern B_SOLID_HIGH = {{0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}};
constexpr pattern B_SOLID_LOW = {{0, 0, 0, 0, 0, 0, 0, 0}};
constexpr pattern B_MIXED_COLORS = {{0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55}};

/// How pixels of a bitmap are stored.
enum color_space : uint32 {
    B_NO_COLOR_SPACE = 0,
    B_RGB32 = 0x0008,  // bytes blue, green, red, and one that means nothing
    B_RGBA32 = 0x2008, // bytes blue, green, red, alpha (not multiplied into the colour)
    B_CMAP8 = 0x0004,  // one byte, an index into the system's colour map; 255 is transparent
    B_COLOR_8_BIT = B_CMAP8,
    B_RGB_32_BIT = B_RGB32,
};

/// The system's colour map: 32 greys, a colour cube, the transparent entry.
struct color_map
{
    int32 id;                  // no two maps have the same
    rgb_color color_list[256]; // the colour of each entry
    uint8 inversion_map[256];  // the entry nearest to each one's inverse
    uint8 index_map[32768];    // the entry nearest to a colour of five bits each: red, green, blue
};

/// How drawn pixels meet those that are there. The platform's other modes are not offered.
enum drawing_mode {
    B_OP_COPY = 0,   // replace
    B_OP_OVER = 1,   // replace, but leave what is drawn in the transparent or the low colour
    B_OP_INVERT = 3, // invert what is there
    B_OP_ALPHA = 10, // mix by the drawn colour's alpha
};

/// Where B_OP_ALPHA takes alpha from: the pixel drawn, or the high colour.
enum source_alpha { B_PIXEL_ALPHA = 0, B_CONSTANT_ALPHA };
/// How B_OP_ALPHA sets the alpha of what is drawn on.
enum alpha_function { B_ALPHA_OVERLAY = 0, B_ALPHA_COMPOSITE };

/// Names a screen.
struct screen_id
{
    int32 id = 0; // counted from 0; the main screen is 0

    constexpr bool operator==(const screen_id& other) const = default;
};
/// The screen that the desktop says is the first.
constexpr screen_id B_MAIN_SCREEN_ID = {0};
