#pragma once

#include <SupportDefs.h>

#include <vector>

namespace kits {

/// Where each row of a list lies: heights by index, and their sums.
///
/// While all rows are equally high it keeps one height and a count, and every question is one
/// multiplication. Otherwise rows lie in blocks: a question costs O(log n), a change touches one
/// block. Units: view units; a row's extent includes the unit between it and the next row.
/// Positions are double: a million rows reach beyond what a float counts in whole units.
class RowHeights
{
public:
    int32 Count() const { return fCount; }
    /// Whether it knows that all rows are equally high.
    bool AreEqual() const { return fBlocks.empty(); }
    /// The sum of all extents.
    double Total() const;

    void Clear();
    /// Adds `count` rows of that extent before `index`; an index outside is brought to the end.
    void Insert(int32 index, int32 count, double extent);
    /// Removes rows; what lies outside is left out.
    void Remove(int32 index, int32 count);
    void Set(int32 index, double extent);

    /// The extent of a row; 0 outside.
    double Extent(int32 index) const;
    /// Where a row begins; for Count() where the last one ends.
    double Top(int32 index) const;
    /// The row that covers a position, or -1.
    int32 RowAt(double position) const;

private:
    struct Block
    {
        std::vector<double> extents;
        double sum = 0;
    };
    struct Place
    {
        size_t block = 0;
        size_t inBlock = 0;
    };

    void MakeBlocks();
    void InsertIntoBlocks(int32 index, int32 count, double extent);
    void SplitBlock(size_t block);
    Place Find(int32 index) const;
    void Sum() const;

    int32 fCount = 0;
    double fExtent = 0;         // of every row, while there are no blocks
    std::vector<Block> fBlocks; // empty while all rows are equally high; none in it is empty
    // Where each block begins, by row and by position; made when asked for after a change.
    mutable std::vector<int32> fFirstRows;
    mutable std::vector<double> fTops;
    mutable bool fIsSummed = false;
};

} // namespace kits
