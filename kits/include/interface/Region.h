#pragma once

#include <Rect.h>

#include <memory>

namespace kits {
struct RegionData;
class RegionAccess;
} // namespace kits

/// A set of whole pixels, made of rectangles that do not overlap.
///
/// Sides of rectangles are rounded to whole units.
/// Thread: a region belongs to whoever holds it; copies share nothing that is written.
class BRegion
{
public:
    /// Makes an empty region.
    BRegion();
    /// Makes the region of a rectangle; empty when it is not valid.
    explicit BRegion(const BRect& rect);
    /// Copies or takes over; what was moved from is empty.
    BRegion(const BRegion& other);
    BRegion(BRegion&& other) noexcept;
    ~BRegion();
    /// As the constructors.
    BRegion& operator=(const BRegion& other);
    BRegion& operator=(BRegion&& other) noexcept;

    /// Makes the region this rectangle; empty when it is not valid.
    void Set(BRect rect);
    /// Takes all pixels away.
    void MakeEmpty();
    /// Adds the rectangle or region.
    void Include(BRect rect);
    void Include(const BRegion* other);
    /// Takes the rectangle or region away.
    void Exclude(BRect rect);
    void Exclude(const BRegion* other);
    /// Keeps only what is also in `other`.
    void IntersectWith(const BRegion* other);
    /// Moves the region by a distance.
    void OffsetBy(int32 dx, int32 dy);

    /// The smallest rectangle around all; not valid when the region is empty.
    BRect Frame() const;
    /// The rectangle of that index; not valid when the index is out of range.
    BRect RectAt(int32 index) const;
    /// How many rectangles RectAt() knows; 0 when empty.
    int32 CountRects() const;
    bool IsEmpty() const;
    /// Whether a part of the rectangle is inside.
    bool Intersects(BRect rect) const;
    /// Whether the pixel that holds the point is inside.
    bool Contains(BPoint point) const;
    /// Whether both cover the same pixels.
    bool operator==(const BRegion& other) const;

private:
    friend class kits::RegionAccess;

    std::unique_ptr<kits::RegionData> fData; // null when empty
};
