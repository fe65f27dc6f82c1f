#pragma once

#include <List.h>

#include <vector>

namespace norvane {

class CLVListItem;

/// All rows of an outline, shown or not: each is followed by those below it, which are deeper.
///
/// A row is found, and added at the end or below another, without walking the others. Ownership:
/// borrows the rows, and keeps in them where they are.
class OutlineRows
{
public:
    OutlineRows() = default;
    OutlineRows(const OutlineRows&) = delete;
    OutlineRows& operator=(const OutlineRows&) = delete;

    int32 Count() const { return fRows.CountItems(); }
    CLVListItem* At(int32 index) const;
    /// -1 for a row that is not here.
    int32 IndexOf(const CLVListItem* row) const;
    /// The nearest row before it that is less deep; null for none.
    CLVListItem* SuperitemOf(const CLVListItem* row) const;
    /// How many of the rows behind it are deeper, up to the first that is not; 0 for a row that is
    /// not here.
    int32 CountBelow(const CLVListItem* row) const;

    /// False, and nothing done, when the index is outside.
    bool Insert(CLVListItem* row, int32 index);
    /// The range lies within the rows.
    void Remove(int32 index, int32 count);
    /// Takes the same rows in another order.
    void Arrange(const std::vector<CLVListItem*>& rows);
    /// Touches no row: they may be gone already.
    void Clear();

private:
    CLVListItem* NearestAbove(int32 index) const;
    void Grow(CLVListItem* superitem, int32 by);
    bool KnowsTree() const;
    void LearnTree() const;

    BList fRows{32};
    // Whether all rows know their superitem and how many are below them, and of which levels.
    mutable bool fKnowsTree = true;
    mutable uint32 fLevelChanges = 0;
};

} // namespace norvane
