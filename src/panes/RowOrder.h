#pragma once

#include <SupportDefs.h>

#include <unordered_set>

namespace norvane {

class DirListItem;

/// The rows of a list as an array-like thing: the count and a row by its index.
class RowSequence
{
public:
    virtual ~RowSequence() = default;
    virtual int32 CountRows() const = 0;
    virtual const DirListItem* RowAt(int32 index) const = 0;
};

/// Finds places among rows that are in the listing's order, folders first, names in byte order,
/// except for rows that were renamed and kept their place.
class RowOrder
{
public:
    explicit RowOrder(const RowSequence& rows) : fRows(rows) {}

    /// Where a new row goes.
    struct Place
    {
        int32 index = 0;
        bool isInOrder = true; // false when only a displaced row is why it goes there
    };

    /// Notes a row that kept its place though its name or kind changed.
    void Displaced(const DirListItem* row);
    /// Forgets a row that goes away.
    void Forget(const DirListItem* row);
    void Clear() { fDisplaced.clear(); }

    /// Where a new row goes: before the first row behind ".." of its kind with a greater name; a
    /// folder also before the first row that is none.
    Place PlaceFor(const char* name, bool isFolder) const;
    /// The index of a row, -1 when it is not there.
    int32 IndexOf(const DirListItem* row) const;

    bool IsDisplaced(const DirListItem* row) const;

private:
    int32 First() const;
    int32 SearchPlace(const char* name, bool isFolder) const;
    int32 Walk(const DirListItem* row) const;
    int32 ScanForPlace(const char* name, bool isFolder, int32 end) const;

    const RowSequence& fRows;
    std::unordered_set<const DirListItem*> fDisplaced;
};

} // namespace norvane
