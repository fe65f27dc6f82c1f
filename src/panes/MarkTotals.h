#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

class DirListItem;

/// How many rows are marked and what they hold, kept up while marks come and go. Plain data.
struct MarkTotals
{
    int64 rows = 0;    // that are shown
    int64 folders = 0; // of these, those of which nobody knows what they hold
    int64 bytes = 0;   // of all others
    int64 unseen = 0;  // rows that a filter keeps out of the list

    void Add(const DirListItem& row) { Count(row, 1); }
    void Remove(const DirListItem& row) { Count(row, -1); }

    /// "3 marked (1 folder), 1.2 MiB; 2 marked out of sight"; empty when nothing is marked.
    std::string Text() const;

private:
    void Count(const DirListItem& row, int64 sign);
};

} // namespace norvane
