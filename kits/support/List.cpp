#include <List.h>

#include <algorithm>
#include <cstdlib>

BList::BList(int32 blockSize) : fBlockSize(std::max<int32>(blockSize, 1)) {}

BList::BList(const BList& other) : fBlockSize(other.fBlockSize)
{
    AddList(&other);
}

BList::~BList()
{
    std::free(fItems);
}

BList& BList::operator=(const BList& other)
{
    if (this != &other) {
        fBlockSize = other.fBlockSize;
        MakeEmpty();
        AddList(&other);
    }
    return *this;
}

bool BList::AddItem(void* item)
{
    return AddItem(item, fCount);
}

bool BList::AddItem(void* item, int32 index)
{
    if (index < 0 || index > fCount || !MakeRoom(index, 1)) {
        return false;
    }
    fItems[index] = item;
    return true;
}

bool BList::AddList(const BList* list)
{
    return AddList(list, fCount);
}

bool BList::AddList(const BList* list, int32 index)
{
    if (list == nullptr || list->fCount == 0 || index < 0 || index > fCount) {
        return false;
    }
    const int32 count = list->fCount;
    if (!MakeRoom(index, count)) {
        return false;
    }
    // Adding a list to itself works, too: the gap opened is as long as the list, so that the items
    // moved behind it leave those at the front as they were.
    std::copy_backward(list->fItems, list->fItems + count, fItems + index + count);
    return true;
}

bool BList::RemoveItem(void* item)
{
    const int32 index = IndexOf(item);
    return index >= 0 && RemoveItems(index, 1);
}

void* BList::RemoveItem(int32 index)
{
    void* item = ItemAt(index);
    RemoveItems(index, 1);
    return item;
}

bool BList::RemoveItems(int32 index, int32 count)
{
    if (index < 0 || index >= fCount || count < 0) {
        return false;
    }
    count = std::min(count, fCount - index);
    std::copy(fItems + index + count, fItems + fCount, fItems + index);
    fCount -= count;
    GiveBackMemory();
    return true;
}

bool BList::ReplaceItem(int32 index, void* item)
{
    if (index < 0 || index >= fCount) {
        return false;
    }
    fItems[index] = item;
    return true;
}

void BList::MakeEmpty()
{
    fCount = 0;
    GiveBackMemory();
}

void BList::SortItems(int (*compare)(const void*, const void*))
{
    if (compare != nullptr && fCount > 1) {
        std::qsort(fItems, static_cast<size_t>(fCount), sizeof(void*), compare);
    }
}

bool BList::SwapItems(int32 indexA, int32 indexB)
{
    if (indexA < 0 || indexA >= fCount || indexB < 0 || indexB >= fCount) {
        return false;
    }
    std::swap(fItems[indexA], fItems[indexB]);
    return true;
}

bool BList::MoveItem(int32 fromIndex, int32 toIndex)
{
    if (fromIndex < 0 || fromIndex >= fCount || toIndex < 0 || toIndex >= fCount) {
        return false;
    }
    if (fromIndex < toIndex) {
        std::rotate(fItems + fromIndex, fItems + fromIndex + 1, fItems + toIndex + 1);
    } else {
        std::rotate(fItems + toIndex, fItems + fromIndex, fItems + fromIndex + 1);
    }
    return true;
}

void* BList::ItemAt(int32 index) const
{
    return index >= 0 && index < fCount ? fItems[index] : nullptr;
}

int32 BList::IndexOf(void* item) const
{
    return IndexOf(static_cast<const void*>(item));
}

int32 BList::IndexOf(const void* item) const
{
    for (int32 i = 0; i < fCount; i++) {
        if (fItems[i] == item) {
            return i;
        }
    }
    return -1;
}

void BList::DoForEach(bool (*function)(void* item))
{
    // Asked anew for each item: the function may change the list.
    for (int32 i = 0; function != nullptr && i < fCount; i++) {
        if (function(fItems[i])) {
            return;
        }
    }
}

void BList::DoForEach(bool (*function)(void* item, void* argument), void* argument)
{
    for (int32 i = 0; function != nullptr && i < fCount; i++) {
        if (function(fItems[i], argument)) {
            return;
        }
    }
}

/// Opens a gap of `count` items at `index`, which is in range.
bool BList::MakeRoom(int32 index, int32 count)
{
    if (count > INT32_MAX - fCount) {
        return false;
    }
    const int32 needed = fCount + count;
    if (needed > fCapacity) {
        // Whole blocks, and half as much again, so that adding one by one stays cheap in a long
        // list.
        const int64 wanted = std::max<int64>(needed, fCapacity + int64{fCapacity} / 2);
        const int64 blocks = (wanted + fBlockSize - 1) / fBlockSize;
        const int64 capacity = std::min<int64>(blocks * fBlockSize, INT32_MAX);
        void* grown = std::realloc(fItems, static_cast<size_t>(capacity) * sizeof(void*));
        if (grown == nullptr) {
            return false;
        }
        fItems = static_cast<void**>(grown);
        fCapacity = static_cast<int32>(capacity);
    }
    std::copy_backward(fItems + index, fItems + fCount, fItems + needed);
    fCount = needed;
    return true;
}

void BList::GiveBackMemory()
{
    const int32 kept = std::max(fCount * 2, fBlockSize);
    if (fCount > INT32_MAX / 4 || fCapacity / 2 < kept) {
        return;
    }
    void* shrunk = std::realloc(fItems, static_cast<size_t>(kept) * sizeof(void*));
    if (shrunk != nullptr) {
        fItems = static_cast<void**>(shrunk);
        fCapacity = kept;
    }
}
