#include "clv/DragGroups.h"

#include "clv/CLVColumn.h"

#include <algorithm>

namespace norvane {

namespace {

constexpr uint32 kTies = CLV_LOCK_WITH_RIGHT | CLV_MERGE_WITH_RIGHT;
constexpr uint32 kLocks = CLV_LOCK_AT_BEGINNING | CLV_LOCK_AT_END;

} // namespace

DragGroups::DragGroups(const Columns& displayed)
{
    bool isTied = false;
    for (CLVColumn* column : displayed) {
        if (!isTied) {
            fGroups.emplace_back();
        }
        Join(fGroups.back(), column);
        // A hidden column does not come between two that are tied.
        const bool hasTie = (column->Flags() & kTies) != 0;
        isTied = column->IsShown() ? hasTie : isTied || hasTie;
    }
}

void DragGroups::Join(Group& group, CLVColumn* column)
{
    group.columns.push_back(column);
    group.isLocked = group.isLocked || (column->Flags() & kLocks) != 0;
    group.isMovable = group.isMovable && (column->Flags() & CLV_NOT_MOVABLE) == 0;
    if (!column->IsShown()) {
        return;
    }
    group.left = group.isShown ? group.left : column->Begin();
    group.right = column->End();
    group.isShown = true;
}

std::size_t DragGroups::GroupOf(const CLVColumn* column) const
{
    std::size_t group = 0;
    while (std::find(ColumnsOf(group).begin(), ColumnsOf(group).end(), column) ==
           ColumnsOf(group).end()) {
        group++;
    }
    return group;
}

bool DragGroups::CanMove(std::size_t group) const
{
    return fGroups[group].isMovable && !fGroups[group].isLocked;
}

std::size_t DragGroups::FirstReachable(std::size_t group) const
{
    while (group > 0 && !fGroups[group - 1].isLocked) {
        group--;
    }
    return group;
}

std::size_t DragGroups::LastReachable(std::size_t group) const
{
    while (group + 1 < fGroups.size() && !fGroups[group + 1].isLocked) {
        group++;
    }
    return group;
}

DragGroups::Limits DragGroups::LimitsOf(std::size_t group) const
{
    const Group& dragged = fGroups[group];
    Limits limits{dragged.left, dragged.left};
    for (std::size_t other = FirstReachable(group); other <= LastReachable(group); other++) {
        if (fGroups[other].isShown) {
            limits.min = std::min(limits.min, fGroups[other].left);
            limits.max =
                std::max(limits.max, fGroups[other].right - (dragged.right - dragged.left));
        }
    }
    return limits;
}

std::size_t DragGroups::PlaceOf(std::size_t group, float left) const
{
    const auto middle = [this](std::size_t other) {
        return (fGroups[other].left + fGroups[other].right) / 2;
    };
    const float right = left + fGroups[group].right - fGroups[group].left;
    std::size_t place = group;
    for (std::size_t other = group; other-- > FirstReachable(group);) {
        place = fGroups[other].isShown && left < middle(other) ? other : place;
    }
    for (std::size_t other = group + 1; other <= LastReachable(group); other++) {
        place = fGroups[other].isShown && right > middle(other) ? other : place;
    }
    return place;
}

DragGroups::Columns DragGroups::Shifted(std::size_t group, float left) const
{
    std::vector<const Group*> order;
    for (std::size_t other = 0; other < fGroups.size(); other++) {
        if (other != group) {
            order.push_back(&fGroups[other]);
        }
    }
    const auto place = static_cast<std::ptrdiff_t>(PlaceOf(group, left));
    order.insert(order.begin() + place, &fGroups[group]);
    Columns columns;
    for (const Group* one : order) {
        columns.insert(columns.end(), one->columns.begin(), one->columns.end());
    }
    return columns;
}

} // namespace norvane
