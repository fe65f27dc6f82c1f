#include "clv/ColumnListView.h"
#include "panes/ComingRows.h"
#include "panes/PaneRows.h"

#include <List.h>

#include <algorithm>
#include <span>
#include <utility>

// Many rows at once.

namespace norvane {

namespace {

using RowList = PaneRows::RowList;

BList ListOf(const std::vector<DirListItem*>& rows)
{
    BList list(static_cast<int32>(rows.size()) + 1);
    for (DirListItem* row : rows) {
        list.AddItem(row);
    }
    return list;
}

} // namespace

void PaneRows::SetSorting(const RowSorting& sorting)
{
    if (sorting == fOrder.Sorting()) {
        return;
    }
    RowsToSort rows = ToSort(sorting);
    sorting.Sort(rows.rows);
    fOrder.SetSorting(sorting);
    TakeSorted(rows);
}

RowsToSort PaneRows::ToSort(const RowSorting& sorting) const
{
    RowsToSort all{sorting, {}};
    if (sorting != fOrder.Sorting()) {
        const std::span rows(fList.Items(), static_cast<std::size_t>(CountRows()));
        all.rows.reserve(rows.size());
        for (const BListItem* row : rows) {
            all.rows.push_back(static_cast<DirListItem*>(const_cast<BListItem*>(row)));
        }
    }
    return all;
}

void PaneRows::TakeSorted(const RowsToSort& sorted)
{
    if (sorted.rows.empty()) {
        return;
    }
    fOrder.SetSorting(sorted.sorting);
    SetRows(ListOf(sorted.rows), -1);
    fListener.RowsChanged();
}

void PaneRows::Become(ListedRows fresh)
{
    std::unordered_set<std::string_view> names;
    for (const RowList* group : {&fresh.folders, &fresh.files}) {
        for (const std::unique_ptr<DirListItem>& row : *group) {
            if (!IsLeftOut(row->GetEntryName())) {
                names.insert(row->GetEntryName());
            }
        }
    }
    BeginChanges();
    RemoveAllBut(names);
    for (RowList* group : {&fresh.folders, &fresh.files}) {
        for (std::unique_ptr<DirListItem>& row : *group) {
            if (!row->IsParent()) {
                BecomeOrInsert(std::move(row));
            }
        }
    }
    EndChanges();
}

void PaneRows::RemoveAllBut(const std::unordered_set<std::string_view>& names)
{
    std::vector<DirListItem*> gone;
    VisitRows([&](DirListItem* row) {
        if (!row->IsParent() && !names.contains(row->GetEntryName())) {
            gone.push_back(row);
        }
    });
    for (DirListItem* row : gone) {
        Remove(row);
    }
}

void PaneRows::BecomeOrInsert(std::unique_ptr<DirListItem> fresh)
{
    DirListItem* listed = FindRow(fresh->GetEntryName());
    if (listed == nullptr) { // or not listed at all
        Insert(std::move(fresh));
        return;
    }
    const bool wasFolder = listed->IsDir();
    Forget(listed);
    const bool isOther = listed->Become(*fresh);
    Note(listed);
    if (isOther) {
        if (listed->IsDir() != wasFolder && fOrder.Sorting().IsListings()) {
            fOrder.Displaced(listed);
        }
        fChanges->rebuilt.insert(listed);
    }
}

void PaneRows::BeginChanges()
{
    fChanges.emplace();
}

void PaneRows::EndChanges()
{
    const std::optional<Changes> changes = std::exchange(fChanges, std::nullopt);
    if (!changes.has_value() ||
        (changes->leaving.empty() && changes->coming.empty() && changes->rebuilt.empty())) {
        return;
    }
    if (!changes->leaving.empty()) {
        std::vector<DirListItem*> leaving;
        for (const auto& row : changes->leaving) {
            leaving.push_back(row.get());
            fOrder.Forget(row.get());
        }
        fListener.RowsLeave(leaving);
    }
    if (!fOrder.Sorting().IsListings()) {
        MergeInOrder(*changes);
    } else if (!changes->leavers.empty() || !changes->coming.empty()) {
        MergeInto(*changes);
    }
    RedrawSeen(changes->rebuilt);
    fListener.RowsChanged();
}

/// Of these rows, those that are in sight.
void PaneRows::RedrawSeen(const std::unordered_set<const DirListItem*>& rows)
{
    const BRect seen = fList.Bounds();
    const int32 first = rows.empty() ? -1 : fList.IndexOf(seen.LeftTop());
    for (int32 i = first; i >= 0 && i < CountRows(); i++) {
        if (fList.ItemFrame(i).top > seen.bottom) {
            break;
        }
        if (rows.contains(RowAt(i))) {
            fList.InvalidateItem(i);
        }
    }
}

/// Brings the list up to date: leaves out what leaves, and puts each row that comes before the
/// first row that is greater, as Insert() does.
void PaneRows::MergeInto(const Changes& changes)
{
    ComingRows coming(changes.coming, fOrder.Sorting());
    BList rows(CountRows() + static_cast<int32>(changes.coming.size()) + 1);
    int32 selected = -1;
    for (int32 i = 0; i < CountRows(); i++) {
        DirListItem* row = RowAt(i);
        if (changes.leavers.contains(row)) {
            selected = row->IsSelected() ? rows.CountItems() : selected;
            continue;
        }
        const bool isDisplaced = fOrder.IsDisplaced(row);
        while (DirListItem* before = coming.TakeBefore(*row)) {
            rows.AddItem(before);
            if (isDisplaced) {
                fOrder.Displaced(before);
            }
        }
        rows.AddItem(row);
    }
    while (DirListItem* last = coming.TakeLast()) {
        rows.AddItem(last);
    }
    SetRows(rows, selected);
}

/// The same where rows are sorted: what changed goes to its place like what comes, while all others
/// are in theirs.
void PaneRows::MergeInOrder(const Changes& changes)
{
    if (changes.leavers.empty() && changes.coming.empty() && AreInPlace(changes.rebuilt)) {
        return;
    }
    std::vector<DirListItem*> coming(changes.coming.begin(), changes.coming.end());
    std::vector<DirListItem*> kept;
    kept.reserve(static_cast<std::size_t>(CountRows()));
    const DirListItem* selected = nullptr; // one that leaves
    bool isFollowed = false;
    for (int32 i = 0; i < CountRows(); i++) {
        DirListItem* row = RowAt(i);
        if (changes.leavers.contains(row)) {
            selected = row->IsSelected() ? row : selected;
        } else {
            const bool isMoved = changes.rebuilt.contains(row);
            (isMoved ? coming : kept).push_back(row);
            isFollowed = isFollowed || (isMoved && IsFollowed(i));
        }
    }
    const auto isBefore = [this](const DirListItem* a, const DirListItem* b) {
        return fOrder.Sorting().Compare(*a, *b) < 0;
    };
    fOrder.Sorting().Sort(coming);
    std::vector<DirListItem*> ordered;
    ordered.reserve(kept.size() + coming.size());
    auto next = kept.begin();
    for (DirListItem* row : coming) {
        const auto place = std::upper_bound(next, kept.end(), row, isBefore);
        ordered.insert(ordered.end(), next, place);
        ordered.push_back(row);
        next = place;
    }
    ordered.insert(ordered.end(), next, kept.end());
    const auto heir = selected == nullptr
                          ? ordered.end()
                          : std::lower_bound(ordered.begin(), ordered.end(), selected, isBefore);
    SetRows(ListOf(ordered), selected == nullptr ? -1 : static_cast<int32>(heir - ordered.begin()));
    if (isFollowed) {
        fList.ScrollToSelection();
    }
}

/// Whether rows, a few, stand between their neighbours as the rows are sorted. Of many it says no.
bool PaneRows::AreInPlace(const std::unordered_set<const DirListItem*>& rows) const
{
    constexpr std::size_t kFew = 16;
    return rows.size() <= kFew && std::all_of(rows.begin(), rows.end(), [this](const auto* row) {
               const int32 index = IndexOf(row);
               return index >= 0 && IsInPlace(index);
           });
}

/// `selected` is where a row was that was selected and left, or -1.
void PaneRows::SetRows(const BList& rows, int32 selected)
{
    fList.SetItems(&rows);
    if (selected >= 0 && CountRows() > 0) {
        fList.Select(std::min(selected, CountRows() - 1));
    }
}

} // namespace norvane
