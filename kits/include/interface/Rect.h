#pragma once

#include <Point.h>

#include <algorithm>

/// A rectangle given by the centres of its outermost pixels: right and bottom belong to it, so that
/// a rectangle from 0 to 9 covers ten pixels while its Width() is 9.
///
/// A rectangle whose right is left of its left, or whose bottom is above its top, is not valid and
/// covers nothing; a new one is such.
class BRect
{
public:
    /// Not valid; or of four sides, or of two corners.
    constexpr BRect() = default;
    constexpr BRect(float l, float t, float r, float b) : left(l), top(t), right(r), bottom(b) {}
    constexpr BRect(BPoint leftTop, BPoint rightBottom)
        : left(leftTop.x), top(leftTop.y), right(rightBottom.x), bottom(rightBottom.y)
    {
    }

    /// Sets all four sides.
    void Set(float l, float t, float r, float b)
    {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }

    /// The corners.
    constexpr BPoint LeftTop() const { return BPoint(left, top); }
    constexpr BPoint RightTop() const { return BPoint(right, top); }
    constexpr BPoint LeftBottom() const { return BPoint(left, bottom); }
    constexpr BPoint RightBottom() const { return BPoint(right, bottom); }
    /// Moves a corner; the two sides that meet there go along, the others stay.
    void SetLeftTop(BPoint point)
    {
        left = point.x;
        top = point.y;
    }
    void SetRightTop(BPoint point)
    {
        right = point.x;
        top = point.y;
    }
    void SetLeftBottom(BPoint point)
    {
        left = point.x;
        bottom = point.y;
    }
    void SetRightBottom(BPoint point)
    {
        right = point.x;
        bottom = point.y;
    }

    /// Moves each side inwards by the distance; negative ones move outwards.
    void InsetBy(float dx, float dy)
    {
        left += dx;
        top += dy;
        right -= dx;
        bottom -= dy;
    }
    void InsetBy(BPoint distance) { InsetBy(distance.x, distance.y); }
    /// Moves all sides by a distance; the size stays.
    void OffsetBy(float dx, float dy)
    {
        left += dx;
        top += dy;
        right += dx;
        bottom += dy;
    }
    void OffsetBy(BPoint distance) { OffsetBy(distance.x, distance.y); }
    /// Moves the left top corner to the point; the size stays.
    void OffsetTo(float x, float y) { OffsetBy(x - left, y - top); }
    void OffsetTo(BPoint point) { OffsetTo(point.x, point.y); }

    /// A copy with its sides moved inwards.
    BRect InsetByCopy(float dx, float dy) const
    {
        BRect copy(*this);
        copy.InsetBy(dx, dy);
        return copy;
    }
    /// A copy moved by a distance, or to a place.
    BRect OffsetByCopy(float dx, float dy) const
    {
        BRect copy(*this);
        copy.OffsetBy(dx, dy);
        return copy;
    }
    BRect OffsetByCopy(BPoint distance) const { return OffsetByCopy(distance.x, distance.y); }
    BRect OffsetToCopy(float x, float y) const
    {
        BRect copy(*this);
        copy.OffsetTo(x, y);
        return copy;
    }
    BRect OffsetToCopy(BPoint point) const { return OffsetToCopy(point.x, point.y); }

    /// The distance between the outermost pixel columns: one less than the columns covered.
    constexpr float Width() const { return right - left; }
    /// The distance between the outermost pixel rows: one less than the rows covered.
    constexpr float Height() const { return bottom - top; }
    /// Width and height, rounded up.
    constexpr int32 IntegerWidth() const { return RoundUp(right - left); }
    constexpr int32 IntegerHeight() const { return RoundUp(bottom - top); }
    /// Whether it covers anything: a pixel at least.
    constexpr bool IsValid() const { return left <= right && top <= bottom; }

    /// Whether a point, or a whole rectangle, lies inside; the sides do.
    constexpr bool Contains(BPoint point) const
    {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    constexpr bool Contains(const BRect& other) const
    {
        return other.left >= left && other.right <= right && other.top >= top &&
               other.bottom <= bottom;
    }
    /// Whether both share a pixel; false when one of them is not valid.
    constexpr bool Intersects(const BRect& other) const
    {
        return IsValid() && other.IsValid() && other.left <= right && other.right >= left &&
               other.top <= bottom && other.bottom >= top;
    }

    /// What both cover; not valid when they share nothing.
    constexpr BRect operator&(const BRect& other) const
    {
        return BRect(std::max(left, other.left), std::max(top, other.top),
                     std::min(right, other.right), std::min(bottom, other.bottom));
    }
    /// The smallest rectangle that holds both.
    constexpr BRect operator|(const BRect& other) const
    {
        return BRect(std::min(left, other.left), std::min(top, other.top),
                     std::max(right, other.right), std::max(bottom, other.bottom));
    }
    /// Whether all four sides are the same.
    constexpr bool operator==(const BRect& other) const = default;

    /// The sides.
    float left = 0;
    float top = 0;
    float right = -1;
    float bottom = -1;

private:
    static constexpr int32 RoundUp(float value)
    {
        const int32 whole = static_cast<int32>(value);
        return static_cast<float>(whole) < value ? whole + 1 : whole;
    }
};
