#pragma once

#include <SupportDefs.h>

/// A point of the plane, in view units; x grows to the right, y downwards.
class BPoint
{
public:
    /// The origin, or a place.
    constexpr BPoint() = default;
    constexpr BPoint(float px, float py) : x(px), y(py) {}

    /// Moves the point to a place.
    void Set(float px, float py)
    {
        x = px;
        y = py;
    }

    /// Adds and subtracts by coordinates.
    constexpr BPoint operator+(const BPoint& other) const
    {
        return BPoint(x + other.x, y + other.y);
    }
    constexpr BPoint operator-(const BPoint& other) const
    {
        return BPoint(x - other.x, y - other.y);
    }
    /// The same as far on the other side of the origin.
    constexpr BPoint operator-() const { return BPoint(-x, -y); }
    /// Moves the point by a distance, or back by it.
    BPoint& operator+=(const BPoint& other)
    {
        x += other.x;
        y += other.y;
        return *this;
    }
    BPoint& operator-=(const BPoint& other)
    {
        x -= other.x;
        y -= other.y;
        return *this;
    }
    /// Whether both coordinates are the same.
    constexpr bool operator==(const BPoint& other) const = default;

    /// The coordinates.
    float x = 0;
    float y = 0;
};

/// The point 0, 0.
constexpr BPoint B_ORIGIN(0, 0);
