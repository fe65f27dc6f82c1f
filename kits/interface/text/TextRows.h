#pragma once

#include "RowHeights.h"

#include <SupportDefs.h>

#include <vector>

namespace kits {

/// How many rows the lines of a wrapped text have: counted, or as many as is usual.
///
/// Lines that were not counted share a number that need not be whole; where a line begins is
/// rounded down, so each has a row at least. Questions and changes cost O(log n).
class TextRows
{
public:
    /// No line is counted; each has `usual` rows, at least one.
    void Reset(int32 lines, double usual);
    /// Lines from `first` on were replaced by others, which are not counted.
    void Replace(int32 first, int32 removed, int32 inserted);
    /// A line was counted. Whether that is news.
    bool Set(int32 line, int32 rows);

    int32 CountLines() const { return static_cast<int32>(fIsCounted.size()); }
    bool IsCounted(int32 line) const { return fIsCounted[static_cast<size_t>(line)] != 0; }
    /// The row that a line begins with; for CountLines() how many there are.
    int32 FirstRow(int32 line) const;
    /// The line of a row that exists.
    int32 LineAt(int32 row) const;

private:
    RowHeights fRows; // the height of a line is its number of rows
    std::vector<uint8> fIsCounted;
    double fUsual = 1;
};

} // namespace kits
