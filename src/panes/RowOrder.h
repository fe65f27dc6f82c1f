#pragma once

#include "panes/RowSorting.h"

#include <SupportDefs.h>

#include <unordered_set>
#include <utility>

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

/// Finds places among rows that are in order, except for rows that changed and kept their place;
/// in the listing's order, those that were renamed do.
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

    /// The order that the rows are in from now on. No row is out of its place then.
    void SetSorting(RowSorting sorting)
    {
        fSorting = std::move(sorting);
        fDisplaced.clear();
    }
    const RowSorting& Sorting() const { return fSorting; }

    /// Notes a row that kept its place though its name or kind changed.
    void Displaced(const DirListItem* row);
    /// Forgets a row that goes away.
    void Forget(const DirListItem* row);
    void Clear() { fDisplaced.clear(); }

    /// Where a new row goes: before the first row behind ".." that is greater.
    Place PlaceFor(const DirListItem& row) const;
    /// The index of a row, -1 when it is not there.
    int32 IndexOf(const DirListItem* row) const { return IndexOf(row, fRows); }
    /// The same among some of the rows, in their order.
    int32 IndexOf(const DirListItem* row, const RowSequence& some) const;

    bool IsDisplaced(const DirListItem* row) const;

private:
    bool IsBehind(const DirListItem& other, const DirListItem& row) const;
    int32 SearchPlace(const DirListItem& row, const RowSequence& rows) const;
    static int32 Walk(const DirListItem* row, const RowSequence& rows);
    int32 ScanForPlace(const DirListItem& row) const;

    const RowSequence& fRows;
    RowSorting fSorting;
    std::unordered_set<const DirListItem*> fDisplaced;
};

} // namespace norvane
