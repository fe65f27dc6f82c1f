#include "panes/RowSorting.h"

#include "panes/DirListItem.h"

#include <Collator.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace norvane {

namespace {

constexpr int32 kNameColumn = 1;
constexpr int32 kSizeColumn = 2;
constexpr int32 kDateColumn = 3;

int Order(int64 a, int64 b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

/// ".." before folders before all others.
int GroupOf(const DirListItem& row)
{
    if (row.IsParent()) {
        return 0;
    }
    return row.IsDir() ? 1 : 2;
}

BCollator MakeNumericCollator()
{
    BCollator collator;
    collator.SetNumericSorting(true);
    return collator;
}

// Each thread has its own: it may not be shared.
const BCollator& NameCollator()
{
    thread_local const BCollator collator = MakeNumericCollator();
    return collator;
}

int CompareBytes(const DirListItem& a, const DirListItem& b)
{
    return std::strcmp(a.GetEntryName(), b.GetEntryName());
}

/// One column but the name's. What has no node is compared as it is shown, among its like: a
/// server's rows, or entries that could not be read, which come first.
int CompareColumn(const DirListItem& a, const DirListItem& b, int32 column)
{
    if (column == kSizeColumn) {
        return Order(a.SizeShown(), b.SizeShown());
    }
    if (a.HasNode() != b.HasNode()) {
        return a.HasNode() ? 1 : -1;
    }
    if (!a.HasNode()) {
        return std::strcmp(a.Text(column), b.Text(column));
    }
    return column == kDateColumn ? Order(a.Modified(), b.Modified()) : Order(a.Mode(), b.Mode());
}

/// A row with what says at a glance which of two comes first, most times.
struct RankedRow
{
    uint64 first = 0;
    uint32 rank = 0; // of its name
    DirListItem* row = nullptr;
};

constexpr int kGroupShift = 62;
constexpr uint64 kBelowGroup = (uint64{1} << kGroupShift) - 1;

/// A number as one that is not negative and leaves room for more; those far out count as one.
uint64 Lifted(int64 value)
{
    constexpr int64 kFarOut = int64{1} << 59;
    return static_cast<uint64>(std::clamp(value, -kFarOut, kFarOut) + kFarOut);
}

/// Where the first column puts a row.
uint64 FirstOrder(const DirListItem& row, const RowSorting::Key& key, uint32 rank)
{
    uint64 order = 0; // rows without a node, which come before those that have one
    if (key.column == kNameColumn) {
        order = rank;
    } else if (key.column == kSizeColumn) {
        order = Lifted(row.SizeShown());
    } else if (row.HasNode()) {
        const int64 value = key.column == kDateColumn ? row.Modified() : row.Mode();
        order = (uint64{1} << 61) | Lifted(value);
    }
    const auto group = static_cast<uint64>(GroupOf(row));
    return group << kGroupShift | (key.isDescending ? kBelowGroup - order : order);
}

uint64 GroupIn(const RankedRow& row)
{
    return row.first >> kGroupShift;
}

/// Rows by their groups and names, upwards or as a first column says that is the name's.
std::vector<RankedRow> RankedByName(const std::vector<DirListItem*>& rows,
                                    const RowSorting::Key& first)
{
    std::vector<const char*> names;
    names.reserve(rows.size());
    for (const DirListItem* row : rows) {
        names.push_back(row->GetEntryName());
    }
    const std::vector<uint32> ranks = NameCollator().Ranks(names);
    std::vector<uint32> taken(rows.size()); // of the places from a rank on
    std::vector<RankedRow> ranked(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        const uint32 rank = ranks[i];
        ranked[rank + taken[rank]++] = {FirstOrder(*rows[i], first, rank), rank, rows[i]};
    }
    if (first.column == kNameColumn && first.isDescending) {
        std::reverse(ranked.begin(), ranked.end());
    }
    const auto isInOrder = [](const RankedRow& a, const RankedRow& b) {
        return GroupIn(a) < GroupIn(b);
    };
    if (!std::is_sorted(ranked.begin(), ranked.end(), isInOrder)) {
        std::stable_sort(ranked.begin(), ranked.end(), isInOrder);
    }
    return ranked;
}

} // namespace

/// `names` is the order of the two names.
int RowSorting::CompareColumns(const DirListItem& a, const DirListItem& b, int names) const
{
    for (const Key& key : fKeys) {
        const int order = key.column == kNameColumn ? names : CompareColumn(a, b, key.column);
        if (order != 0) {
            return key.isDescending ? -order : order;
        }
    }
    return names;
}

int RowSorting::Compare(const DirListItem& a, const DirListItem& b) const
{
    const int groups = GroupOf(a) - GroupOf(b);
    if (groups != 0 || IsListings()) {
        return groups != 0 ? groups : CompareBytes(a, b);
    }
    const int columns =
        CompareColumns(a, b, NameCollator().Compare(a.GetEntryName(), b.GetEntryName()));
    return columns != 0 ? columns : CompareBytes(a, b);
}

void RowSorting::Sort(std::vector<DirListItem*>& rows) const
{
    if (IsListings()) {
        std::sort(rows.begin(), rows.end(), [this](const DirListItem* a, const DirListItem* b) {
            return Compare(*a, *b) < 0;
        });
        return;
    }
    std::vector<RankedRow> ranked = RankedByName(rows, fKeys.front());
    const auto isBefore = [this](const RankedRow& a, const RankedRow& b) {
        if (a.first != b.first) {
            return a.first < b.first;
        }
        const int columns = CompareColumns(*a.row, *b.row, Order(a.rank, b.rank));
        return columns != 0 ? columns < 0 : CompareBytes(*a.row, *b.row) < 0;
    };
    // By names alone they are, but for names that count as one.
    if (!std::is_sorted(ranked.begin(), ranked.end(), isBefore)) {
        std::sort(ranked.begin(), ranked.end(), isBefore);
    }
    std::transform(ranked.begin(), ranked.end(), rows.begin(),
                   [](const RankedRow& row) { return row.row; });
}

void RowSorting::Sort(std::vector<std::unique_ptr<DirListItem>>& rows) const
{
    std::vector<DirListItem*> order(rows.size());
    std::transform(rows.begin(), rows.end(), order.begin(),
                   [](auto& row) { return row.release(); });
    Sort(order);
    std::transform(order.begin(), order.end(), rows.begin(),
                   [](DirListItem* row) { return std::unique_ptr<DirListItem>(row); });
}

} // namespace norvane
