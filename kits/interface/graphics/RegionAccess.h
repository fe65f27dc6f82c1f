#pragma once

#include <Region.h>

#include <QRegion>

#include <cmath>

namespace kits {

struct RegionData
{
    QRegion region; // never empty
};

/// The toolkit's region inside a BRegion. Thread: any that holds the region.
class RegionAccess
{
public:
    static QRegion Get(const BRegion& region)
    {
        return region.fData != nullptr ? region.fData->region : QRegion();
    }
    static void Set(BRegion& region, const QRegion& value)
    {
        region.fData = value.isEmpty() ? nullptr : std::make_unique<RegionData>(RegionData{value});
    }
};

/// The whole pixels of a rectangle; empty when it is not valid.
inline QRect PixelsOf(const BRect& rect)
{
    if (!rect.IsValid()) {
        return {};
    }
    const int left = static_cast<int>(std::lround(rect.left));
    const int top = static_cast<int>(std::lround(rect.top));
    return QRect(QPoint(left, top), QPoint(static_cast<int>(std::lround(rect.right)),
                                           static_cast<int>(std::lround(rect.bottom))));
}

inline BRect RectOf(const QRect& rect)
{
    return BRect(static_cast<float>(rect.left()), static_cast<float>(rect.top()),
                 static_cast<float>(rect.right()), static_cast<float>(rect.bottom()));
}

} // namespace kits
