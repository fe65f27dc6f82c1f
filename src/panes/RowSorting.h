#pragma once

#include <SupportDefs.h>

#include <memory>
#include <utility>
#include <vector>

namespace norvane {

class DirListItem;

/// The order of a list's rows: ".." first, then folders, then all others, each by the columns that
/// a person chose; names count as people count ("file9" before "file10"). Without a column it is
/// the listing's: names in byte order.
///
/// No two rows of different names are equal. Plain data.
class RowSorting
{
public:
    struct Key
    {
        int32 column = 0; // a column with a text
        bool isDescending = false;
        bool operator==(const Key& other) const = default;
    };

    RowSorting() = default;
    /// The first key counts most.
    explicit RowSorting(std::vector<Key> keys) : fKeys(std::move(keys)) {}

    /// Whether it is the listing's.
    bool IsListings() const { return fKeys.empty(); }
    /// Below zero when `a` comes before `b`, above when behind.
    int Compare(const DirListItem& a, const DirListItem& b) const;
    /// Puts rows into this order.
    void Sort(std::vector<DirListItem*>& rows) const;
    void Sort(std::vector<std::unique_ptr<DirListItem>>& rows) const;

    bool operator==(const RowSorting& other) const = default;

private:
    int CompareColumns(const DirListItem& a, const DirListItem& b, int names) const;

    std::vector<Key> fKeys;
};

/// Rows that are to be put into an order, lent: nobody may change the list meanwhile.
struct RowsToSort
{
    RowSorting sorting;
    std::vector<DirListItem*> rows;
};

} // namespace norvane
