#include "clv/CLVColumn.h"

#include "clv/ColumnOwner.h"

#include <algorithm>

namespace norvane {

namespace {

// What an expander column takes over from its maker, and what it always carries.
constexpr uint32 kExpanderKeeps = 0xAA;
constexpr uint32 kExpanderCarries = CLV_EXPANDER | CLV_MERGE_WITH_RIGHT | CLV_NOT_RESIZABLE;

/// `width` within the limits; what is no number is the smallest.
float WithinLimits(float width, float smallest)
{
    return width > smallest ? std::min(width, CLVColumn::kLargestWidth) : smallest;
}

} // namespace

CLVColumn::CLVColumn(const char* label, float width, uint32 flags, float minimumWidth)
    : fMinimumWidth(WithinLimits(minimumWidth, kSmallestMinimum)), fFlags(flags)
{
    if ((flags & CLV_EXPANDER) != 0) {
        fFlags = (flags & kExpanderKeeps) | kExpanderCarries;
        fWidth = kExpanderWidth;
        fMinimumWidth = kExpanderWidth;
        return;
    }
    fWidth = WithinLimits(width, fMinimumWidth);
    fHasLabel = label != nullptr;
    if (fHasLabel) {
        fLabel = label;
    }
}

CLVColumn::~CLVColumn() = default;

void CLVColumn::SetWidth(float width)
{
    const float newWidth = WithinLimits(width, fMinimumWidth);
    if (newWidth == fWidth) {
        return;
    }
    fWidth = newWidth;
    if (fParent != nullptr) {
        fParent->ColumnWidened(*this);
    }
}

void CLVColumn::SetShown(bool isShown)
{
    if (isShown == IsShown()) {
        return;
    }
    fFlags ^= CLV_HIDDEN;
    if (fParent != nullptr) {
        fParent->ColumnShownChanged(*this);
    }
}

} // namespace norvane
