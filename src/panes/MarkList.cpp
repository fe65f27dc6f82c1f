#include "panes/MarkList.h"

#include "panes/DirListItem.h"

#include <algorithm>
#include <unordered_set>

namespace norvane {

void MarkList::Toggle(DirListItem* row)
{
    if (row->IsMarked()) {
        row->Mark(false);
        std::erase(fRows, row);
    } else {
        row->Mark(true);
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
    fRows.reserve(fRows.size() + rows.size());
    for (DirListItem* row : rows) {
        if (!row->IsMarked()) {
            row->Mark(true);
            fRows.push_back(row);
        }
    }
}

void MarkList::Unmark(const std::vector<DirListItem*>& rows)
{
    bool changed = false;
    for (DirListItem* row : rows) {
        changed = changed || row->IsMarked();
        row->Mark(false);
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
    if (rows.size() == 1) {
        std::erase(fRows, rows.front());
        return;
    }
    const std::unordered_set<const DirListItem*> leaving(rows.begin(), rows.end());
    std::erase_if(fRows, [&](const DirListItem* row) { return leaving.contains(row); });
}

void MarkList::Clear()
{
    for (DirListItem* row : fRows) {
        row->Mark(false);
    }
    fRows.clear();
}

} // namespace norvane
