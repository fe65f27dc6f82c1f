#include "clv/CLVColumn.h"

#include "clv/ColumnListView.h"

#include <algorithm>

namespace norvane {

namespace {

// What an expander column takes over from its maker, and what it always carries.
constexpr uint32 kExpanderKeeps = 0xAA;
constexpr uint32 kExpanderCarries = CLV_EXPANDER | CLV_MERGE_WITH_RIGHT | CLV_NOT_RESIZABLE;

} // namespace

CLVColumn::CLVColumn(const char* label, float width, uint32 flags, float minimumWidth)
    : fMinimumWidth(std::max(minimumWidth, kSmallestMinimum)), fFlags(flags)
{
    if ((flags & CLV_EXPANDER) != 0) {
        fFlags = (flags & kExpanderKeeps) | kExpanderCarries;
        fWidth = kExpanderWidth;
        fMinimumWidth = kExpanderWidth;
        return;
    }
    fWidth = std::max(width, fMinimumWidth);
    fHasLabel = label != nullptr;
    if (fHasLabel) {
        fLabel = label;
    }
}

CLVColumn::~CLVColumn() = default;

void CLVColumn::SetWidth(float width)
{
    const float newWidth = std::max(width, fMinimumWidth);
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
