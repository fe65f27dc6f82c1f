#pragma once

#include <SupportDefs.h>

/// An ordered list of pointers; it never touches what they point at.
///
/// Indices count from 0. An index out of range changes nothing and yields false or null.
/// Ownership: borrows its items; whoever added them deletes them.
class BList
{
public:
    /// Makes an empty list that takes and gives back memory `blockSize` items at a time.
    explicit BList(int32 blockSize = 20);
    /// Copies the pointers, not what they point at.
    BList(const BList& other);
    virtual ~BList();
    BList& operator=(const BList& other);

    /// Adds `item` at the end. Errors: false when memory runs out.
    bool AddItem(void* item);
    /// Adds `item` so that it stands at `index`, from 0 to CountItems().
    bool AddItem(void* item, int32 index);
    /// Adds the items of `list` in their order, at the end. False when there are none.
    bool AddList(const BList* list);
    /// The same, with the first of them at `index`.
    bool AddList(const BList* list, int32 index);

    /// Removes the first occurrence of `item`. False when it is not there.
    bool RemoveItem(void* item);
    /// Removes and returns the item at `index`.
    void* RemoveItem(int32 index);
    /// Removes up to `count` items from `index` on. False when there is no item at `index`.
    bool RemoveItems(int32 index, int32 count);
    /// Puts `item` in the place of the one at `index`.
    bool ReplaceItem(int32 index, void* item);
    /// Takes all items out.
    void MakeEmpty();

    /// Sorts by `compare`, which gets pointers to two items, that is `const void**`.
    void SortItems(int (*compare)(const void*, const void*));
    /// Exchanges two items.
    bool SwapItems(int32 indexA, int32 indexB);
    /// Takes the item at `fromIndex` out and adds it so that it stands at `toIndex`.
    bool MoveItem(int32 fromIndex, int32 toIndex);

    /// The item at `index`, null outside the list.
    void* ItemAt(int32 index) const;
    /// The item at `index`, which must exist.
    void* ItemAtFast(int32 index) const { return fItems[index]; }
    /// The first and the last item; null in an empty list.
    void* FirstItem() const { return ItemAt(0); }
    void* LastItem() const { return ItemAt(fCount - 1); }
    /// Lends the array of items, until the list changes; null when there was never one.
    void* Items() const { return fItems; }

    /// Whether `item` is in the list; walks it.
    bool HasItem(void* item) const { return IndexOf(item) >= 0; }
    bool HasItem(const void* item) const { return IndexOf(item) >= 0; }
    /// The index of the first occurrence of `item`, or -1.
    int32 IndexOf(void* item) const;
    int32 IndexOf(const void* item) const;
    /// The number of items.
    int32 CountItems() const { return fCount; }
    bool IsEmpty() const { return fCount == 0; }

    /// Calls `function` with each item in turn, until it returns true.
    void DoForEach(bool (*function)(void* item));
    void DoForEach(bool (*function)(void* item, void* argument), void* argument);

private:
    bool MakeRoom(int32 index, int32 count);
    void GiveBackMemory();

    void** fItems = nullptr;
    int32 fCount = 0;
    int32 fCapacity = 0;
    int32 fBlockSize;
};
