#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>

#include <memory>

namespace kits {
struct BitmapData;
class BitmapAccess;
} // namespace kits

/// A picture in memory whose pixels the program writes.
///
/// Thread: belongs to whoever holds it. Units: one pixel is one view unit, at every density of the
/// screen.
class BBitmap
{
public:
    /// Makes a bitmap whose pixels are white (transparent in B_RGBA32 and B_CMAP8).
    /// Only B_CMAP8, B_RGB32 and B_RGBA32 are supported, and at most 16384 pixels to a side.
    BBitmap(BRect bounds, color_space space, bool acceptsViews = false,
            bool needsContiguous = false);
    /// Copies the pixels of `source`, which may be null: not valid then.
    explicit BBitmap(const BBitmap* source, bool acceptsViews = false,
                     bool needsContiguous = false);
    BBitmap(const BBitmap&) = delete;
    BBitmap& operator=(const BBitmap&) = delete;
    ~BBitmap();

    /// B_OK; B_BAD_VALUE for bounds or a colour space that cannot be.
    status_t InitCheck() const;
    /// Whether InitCheck() says B_OK.
    bool IsValid() const;

    /// What was given to the constructor: the pixels' places and how they are stored.
    BRect Bounds() const;
    color_space ColorSpace() const;
    /// Lends the pixels for writing, until the bitmap goes; null when the bitmap is not valid.
    /// Drops pictures for other densities: what is written holds for all.
    void* Bits();
    const void* Bits() const;
    /// How many bytes there are, the rows' padding included; 0 when the bitmap is not valid.
    int32 BitsLength() const;
    /// How far apart two rows are in memory; a multiple of four.
    int32 BytesPerRow() const;

    /// Writes pixels of the given colour space, `length` bytes from byte `offset` of the bitmap on.
    /// B_RGB32 data written to a B_CMAP8 bitmap, and to a B_RGBA32 one, may have rows without
    /// padding.
    void SetBits(const void* data, int32 length, int32 offset, color_space space);
    /// Converts pixels of the given colour space into the bitmap's own, from byte `offset` on.
    /// Errors: B_BAD_VALUE for unknown spaces and what does not fit; nothing is written then.
    status_t ImportBits(const void* data, int32 length, int32 bytesPerRow, int32 offset,
                        color_space space);

    /// An extension of the platform. Takes the same picture drawn at twice the width and height,
    /// rows without padding; it is drawn where the screen is dense. Kept until pixels are written.
    /// Errors: B_BAD_VALUE when the length does not fit; the bitmap keeps what it has.
    status_t SetDoubleBits(const void* data, int32 length, color_space space);

private:
    friend class kits::BitmapAccess;

    std::unique_ptr<kits::BitmapData> fData;
};
