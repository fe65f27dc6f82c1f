#include "panes/ComingRows.h"

#include "panes/DirListItem.h"

#include <algorithm>
#include <cstring>

namespace norvane {

namespace {

DirListItem* TakeFrom(std::vector<DirListItem*>* group)
{
    if (group->empty()) {
        return nullptr;
    }
    DirListItem* row = group->back();
    group->pop_back();
    return row;
}

} // namespace

ComingRows::ComingRows(const std::unordered_set<DirListItem*>& rows)
{
    for (DirListItem* row : rows) {
        (row->IsDir() ? fFolders : fFiles).push_back(row);
    }
    for (auto* group : {&fFolders, &fFiles}) {
        std::sort(group->begin(), group->end(), [](const auto* a, const auto* b) {
            return std::strcmp(a->GetEntryName(), b->GetEntryName()) > 0;
        });
    }
}

DirListItem* ComingRows::TakeBefore(const DirListItem& row)
{
    if (row.IsParent()) {
        return nullptr;
    }
    if (!row.IsDir() && !fFolders.empty()) {
        return TakeFrom(&fFolders);
    }
    auto* group = row.IsDir() ? &fFolders : &fFiles;
    const bool isBefore =
        !group->empty() && std::strcmp(group->back()->GetEntryName(), row.GetEntryName()) < 0;
    return isBefore ? TakeFrom(group) : nullptr;
}

DirListItem* ComingRows::TakeLast()
{
    return TakeFrom(fFolders.empty() ? &fFiles : &fFolders);
}

} // namespace norvane
