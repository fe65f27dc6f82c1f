#include <Region.h>

#include "RegionAccess.h"

using kits::PixelsOf;
using kits::RectOf;
using kits::RegionAccess;

namespace {

// Beyond this, whole units are no longer exact in a float, and sums of two could overflow.
constexpr float kFarthest = 1 << 24;

QRegion RegionOf(BRect rect)
{
    return QRegion(PixelsOf(rect & BRect(-kFarthest, -kFarthest, kFarthest, kFarthest)));
}

} // namespace

BRegion::BRegion() = default;

BRegion::BRegion(const BRect& rect)
{
    Set(rect);
}

BRegion::BRegion(const BRegion& other)
    : fData(other.fData != nullptr ? std::make_unique<kits::RegionData>(*other.fData) : nullptr)
{
}

BRegion::BRegion(BRegion&& other) noexcept = default;
BRegion::~BRegion() = default;

BRegion& BRegion::operator=(const BRegion& other)
{
    RegionAccess::Set(*this, RegionAccess::Get(other));
    return *this;
}

BRegion& BRegion::operator=(BRegion&& other) noexcept = default;

void BRegion::Set(BRect rect)
{
    RegionAccess::Set(*this, RegionOf(rect));
}

void BRegion::MakeEmpty()
{
    fData.reset();
}

void BRegion::Include(BRect rect)
{
    RegionAccess::Set(*this, RegionAccess::Get(*this) | RegionOf(rect));
}

void BRegion::Include(const BRegion* other)
{
    RegionAccess::Set(*this, RegionAccess::Get(*this) | RegionAccess::Get(*other));
}

void BRegion::Exclude(BRect rect)
{
    RegionAccess::Set(*this, RegionAccess::Get(*this) - RegionOf(rect));
}

void BRegion::Exclude(const BRegion* other)
{
    RegionAccess::Set(*this, RegionAccess::Get(*this) - RegionAccess::Get(*other));
}

void BRegion::IntersectWith(const BRegion* other)
{
    RegionAccess::Set(*this, RegionAccess::Get(*this) & RegionAccess::Get(*other));
}

void BRegion::OffsetBy(int32 dx, int32 dy)
{
    if (fData != nullptr) {
        fData->region.translate(dx, dy);
    }
}

BRect BRegion::Frame() const
{
    return fData != nullptr ? RectOf(fData->region.boundingRect()) : BRect();
}

BRect BRegion::RectAt(int32 index) const
{
    return index >= 0 && index < CountRects() ? RectOf(fData->region.begin()[index]) : BRect();
}

int32 BRegion::CountRects() const
{
    return fData != nullptr ? fData->region.rectCount() : 0;
}

bool BRegion::IsEmpty() const
{
    return fData == nullptr;
}

bool BRegion::Intersects(BRect rect) const
{
    return fData != nullptr && rect.IsValid() && fData->region.intersects(PixelsOf(rect));
}

bool BRegion::Contains(BPoint point) const
{
    return fData != nullptr && fData->region.contains(PixelsOf(BRect(point, point)).topLeft());
}

bool BRegion::operator==(const BRegion& other) const
{
    return RegionAccess::Get(*this) == RegionAccess::Get(other);
}
