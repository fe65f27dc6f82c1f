#pragma once

#include <unordered_set>
#include <vector>

namespace norvane {

class DirListItem;

/// Rows on their way into a list, in the listing's order.
class ComingRows
{
public:
    explicit ComingRows(const std::unordered_set<DirListItem*>& rows);

    /// The next one that goes before `row`; null when there is none.
    DirListItem* TakeBefore(const DirListItem& row);
    /// The next one that goes behind all rows; null when there is none left.
    DirListItem* TakeLast();

private:
    // The last ones are taken first.
    std::vector<DirListItem*> fFolders;
    std::vector<DirListItem*> fFiles;
};

} // namespace norvane
