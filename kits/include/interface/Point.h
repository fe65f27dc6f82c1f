#pragma once

#include <SupportDefs.h>

/// A point of the plane, in view units; x grows to the right, y downwards.
class BPoint
{
public:
    constexpr BPoint() = default;
    constexpr BPoint(float px, float py) : x(px), y(py) {}

    void Set(float px, float py)
    {
        x = px;
        y = py;
    }

    constexpr BPoint operator+(const BPoint& other) const
    {
        return BPoint(x + other.x, y + other.y);
    }
    constexpr BPoint operator-(const BPoint& other) const
    {
        return BPoint(x - other.x, y - other.y);
    }
    constexpr BPoint operator-() const { return BPoint(-x, -y); }
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
    constexpr bool operator==(const BPoint& other) const = default;

    float x = 0;
    float y = 0;
};

constexpr BPoint B_ORIGIN(0, 0);
