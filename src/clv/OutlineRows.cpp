#include "clv/OutlineRows.h"

#include "clv/CLVListItem.h"
#include "clv/NearSearch.h"

namespace norvane {

CLVListItem* OutlineRows::At(int32 index) const
{
    return static_cast<CLVListItem*>(fRows.ItemAt(index));
}

int32 OutlineRows::IndexOf(const CLVListItem* row) const
{
    if (row == nullptr || row->fPlace.outline != this) {
        return -1;
    }
    const int32 index =
        FindNear(row, row->fPlace.index, Count(), [this](int32 at) { return fRows.ItemAt(at); });
    if (index >= 0) {
        row->fPlace.index = index;
    }
    return index;
}

CLVListItem* OutlineRows::SuperitemOf(const CLVListItem* row) const
{
    if (IndexOf(row) < 0) {
        return nullptr;
    }
    LearnTree();
    return row->fPlace.superitem;
}

int32 OutlineRows::CountBelow(const CLVListItem* row) const
{
    if (IndexOf(row) < 0) {
        return 0;
    }
    LearnTree();
    return row->fPlace.below;
}

bool OutlineRows::Insert(CLVListItem* row, int32 index)
{
    if (!fRows.AddItem(row, index)) {
        return false;
    }
    row->fPlace = {};
    row->fPlace.outline = this;
    row->fPlace.index = index;
    const CLVListItem* next = At(index + 1);
    // One that takes over rows behind it changes what is above those.
    const bool takesOver = next != nullptr && next->OutlineLevel() > row->OutlineLevel();
    fKnowsTree = !takesOver && KnowsTree();
    if (fKnowsTree) {
        row->fPlace.superitem = NearestAbove(index);
        Grow(row->fPlace.superitem, 1);
    }
    return true;
}

void OutlineRows::Remove(int32 index, int32 count)
{
    const CLVListItem* first = At(index);
    fKnowsTree = KnowsTree() && first->fPlace.below + 1 == count;
    if (fKnowsTree) {
        Grow(first->fPlace.superitem, -count);
    }
    for (int32 i = index; i < index + count; i++) {
        At(i)->fPlace = {};
    }
    fRows.RemoveItems(index, count);
}

void OutlineRows::Arrange(const std::vector<CLVListItem*>& rows)
{
    fRows.MakeEmpty();
    for (CLVListItem* row : rows) {
        row->fPlace.index = Count();
        fRows.AddItem(row);
    }
    fKnowsTree = false;
}

void OutlineRows::Clear()
{
    fRows.MakeEmpty();
    fKnowsTree = true;
    fLevelChanges = CLVListItem::LevelChanges();
}

// The rows before it know theirs.
CLVListItem* OutlineRows::NearestAbove(int32 index) const
{
    const uint32 level = At(index)->OutlineLevel();
    CLVListItem* above = At(index - 1);
    while (above != nullptr && above->OutlineLevel() >= level) {
        above = above->fPlace.superitem;
    }
    return above;
}

void OutlineRows::Grow(CLVListItem* superitem, int32 by)
{
    for (; superitem != nullptr; superitem = superitem->fPlace.superitem) {
        superitem->fPlace.below += by;
    }
}

bool OutlineRows::KnowsTree() const
{
    return fKnowsTree && fLevelChanges == CLVListItem::LevelChanges();
}

void OutlineRows::LearnTree() const
{
    if (KnowsTree()) {
        return;
    }
    for (int32 i = 0; i < Count(); i++) {
        CLVListItem::Place& place = At(i)->fPlace;
        place.index = i;
        place.below = 0;
        place.superitem = NearestAbove(i);
    }
    for (int32 i = Count() - 1; i >= 0; i--) {
        const CLVListItem::Place& place = At(i)->fPlace;
        if (place.superitem != nullptr) {
            place.superitem->fPlace.below += place.below + 1;
        }
    }
    fKnowsTree = true;
    fLevelChanges = CLVListItem::LevelChanges();
}

} // namespace norvane
