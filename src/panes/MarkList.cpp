#include "panes/MarkList.h"

#include "panes/DirListItem.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_set>

namespace norvane {

namespace {

// Up to so many rows are looked for one by one.
constexpr std::size_t kFew = 8;

} // namespace

void MarkList::Toggle(DirListItem* row)
{
    if (row->IsMarked()) {
        UnmarkFew({row});
    } else {
        row->Mark(true);
        fTotals.Add(*row);
        Append(row);
    }
}

void MarkList::Append(DirListItem* row)
{
    if (std::find(fRows.begin(), fRows.end(), row) == fRows.end()) {
        fRows.push_back(row);
    }
}

void MarkList::Mark(const std::vector<DirListItem*>& rows)
{
    if (rows.size() > kFew) {
        fRows.reserve(fRows.size() + rows.size());
    }
    for (DirListItem* row : rows) {
        if (!row->IsMarked()) {
            row->Mark(true);
            fTotals.Add(*row);
            fRows.push_back(row);
        }
    }
}

/// Mostly those that were marked last.
void MarkList::UnmarkFew(const std::vector<DirListItem*>& rows)
{
    for (DirListItem* row : rows) {
        if (row->IsMarked()) {
            fTotals.Remove(*row);
            row->Mark(false);
            const auto found = std::find(fRows.rbegin(), fRows.rend(), row);
            if (found != fRows.rend()) {
                fRows.erase(std::next(found).base());
            }
        }
    }
}

void MarkList::Unmark(const std::vector<DirListItem*>& rows)
{
    if (rows.size() <= kFew) {
        UnmarkFew(rows);
        return;
    }
    bool changed = false;
    for (DirListItem* row : rows) {
        if (row->IsMarked()) {
            fTotals.Remove(*row);
            row->Mark(false);
            changed = true;
        }
    }
    if (changed) {
        std::erase_if(fRows, [](const DirListItem* row) { return !row->IsMarked(); });
    }
}

void MarkList::Forget(const std::vector<DirListItem*>& rows)
{
    if (fRows.empty()) {
        return;
    }
    const std::size_t before = fRows.size();
    if (rows.size() == 1) {
        std::erase(fRows, rows.front());
    } else {
        const std::unordered_set<const DirListItem*> leaving(rows.begin(), rows.end());
        std::erase_if(fRows, [&](const DirListItem* row) { return leaving.contains(row); });
    }
    if (fRows.size() != before) {
        Recount(); // what went may have changed before
    }
}

void MarkList::Clear()
{
    for (DirListItem* row : fRows) {
        row->Mark(false);
    }
    fRows.clear();
    fTotals = {};
}

void MarkList::ClearSeen()
{
    if (fTotals.unseen == 0) {
        Clear();
        return;
    }
    std::erase_if(fRows, [](DirListItem* row) {
        if (!row->IsFilteredAway()) {
            row->Mark(false);
        }
        return !row->IsFilteredAway();
    });
    Recount();
}

std::vector<DirListItem*> MarkList::SeenRows() const
{
    if (fTotals.unseen == 0) {
        return fRows;
    }
    std::vector<DirListItem*> seen;
    std::copy_if(fRows.begin(), fRows.end(), std::back_inserter(seen),
                 [](const DirListItem* row) { return !row->IsFilteredAway(); });
    return seen;
}

void MarkList::Recount()
{
    fTotals = {};
    for (const DirListItem* row : fRows) {
        if (row->IsMarked()) {
            fTotals.Add(*row);
        }
    }
}

} // namespace norvane
