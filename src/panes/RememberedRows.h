#pragma once

#include <Node.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

class DirListItem;
class PaneRows;

/// The entries of some rows, known by their names and nodes, so that they are found again after
/// rows came, went or became others.
class RememberedRows
{
public:
    RememberedRows() = default;
    explicit RememberedRows(const std::vector<DirListItem*>& rows);

    /// Those that are there still: the same entry under the same name. One that was renamed, or
    /// whose name another entry has by now, is none of them.
    std::vector<DirListItem*> FindIn(const PaneRows& rows) const;

private:
    struct Entry
    {
        std::string name; // as the row shows it: of a query's hit the path
        node_ref node;
        uint64 directory = 0;
        bool hasNode = false;
        bool isParent = false;
    };

    static DirListItem* Find(const Entry& entry, const PaneRows& rows);

    std::vector<Entry> fEntries;
};

} // namespace norvane
