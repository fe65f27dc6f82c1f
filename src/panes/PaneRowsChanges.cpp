#include "clv/ColumnListView.h"
#include "panes/ComingRows.h"
#include "panes/PaneRows.h"

#include <List.h>

#include <algorithm>
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
        all.rows.reserve(static_cast<std::size_t>(fFilter.CountRows()));
        for (int32 i = 0; i < fFilter.CountRows(); i++) {
            all.rows.push_back(fFilter.RowAt(i));
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
            if (!LeavesOut(row->GetEntryName())) {
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
    const bool showsOthers = fFilter.IsOn() && JudgeAll(*changes);
    if (!fOrder.Sorting().IsListings()) {
        MergeInOrder(*changes, showsOthers);
    } else if (showsOthers || !changes->leavers.empty() || !changes->coming.empty()) {
        MergeInto(*changes);
    }
    RedrawSeen(changes->rebuilt);
    fListener.RowsChanged();
}

/// Of these rows, those that are in sight.
void PaneRows::RedrawSeen(const std::unordered_set<DirListItem*>& rows)
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

/// Judges the rows that come or have other names. False when that is all the same for those that
/// are there.
bool PaneRows::JudgeAll(const Changes& changes)
{
    for (DirListItem* row : changes.coming) {
        fFilter.Judge(row);
    }
    bool isAnyOther = false;
    for (DirListItem* row : changes.rebuilt) {
        isAnyOther = fFilter.Judge(row) || isAnyOther;
    }
    fMarkedChanges += isAnyOther ? 1 : 0;
    return isAnyOther;
}

/// Whether a row that was selected goes, or is hidden: another one is to be.
bool PaneRows::GoesFrom(const DirListItem* row, const Changes& changes) const
{
    return (changes.leavers.contains(row) || (fFilter.IsOn() && row->IsFilteredAway())) &&
           row->IsSelected();
}

/// Brings the list up to date: leaves out what leaves, and puts each row that comes before the
/// first row that is greater, as Insert() does.
void PaneRows::MergeInto(const Changes& changes)
{
    ComingRows coming(changes.coming, fOrder.Sorting());
    BList rows(fFilter.CountRows() + static_cast<int32>(changes.coming.size()) + 1);
    int32 selected = -1;
    for (int32 i = 0; i < fFilter.CountRows(); i++) {
        DirListItem* row = fFilter.RowAt(i);
        selected = GoesFrom(row, changes) ? rows.CountItems() : selected;
        if (changes.leavers.contains(row)) {
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
void PaneRows::MergeInOrder(const Changes& changes, bool showsOthers)
{
    if (!showsOthers && changes.leavers.empty() && changes.coming.empty() &&
        AreInPlace(changes.rebuilt)) {
        return;
    }
    std::vector<DirListItem*> coming(changes.coming.begin(), changes.coming.end());
    std::vector<DirListItem*> kept;
    kept.reserve(static_cast<std::size_t>(fFilter.CountRows()));
    const DirListItem* selected = nullptr; // one that goes
    bool isFollowed = false;
    for (int32 i = 0; i < fFilter.CountRows(); i++) {
        DirListItem* row = fFilter.RowAt(i);
        selected = GoesFrom(row, changes) ? row : selected;
        if (!changes.leavers.contains(row)) {
            const bool isMoved = changes.rebuilt.contains(row);
            (isMoved ? coming : kept).push_back(row);
            isFollowed = isFollowed || (isMoved && IsFollowed(row));
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
bool PaneRows::AreInPlace(const std::unordered_set<DirListItem*>& rows) const
{
    constexpr std::size_t kFew = 16;
    return rows.size() <= kFew && std::all_of(rows.begin(), rows.end(), [this](const auto* row) {
               const int32 index = fOrder.IndexOf(row);
               return index >= 0 && IsInPlace(index);
           });
}

/// All rows. `selected` is where among them a row was that was selected and left, or -1.
void PaneRows::SetRows(const BList& rows, int32 selected)
{
    if (fFilter.IsOn()) {
        fFilter.SetRows(rows);
        const BList shown = fFilter.Shown();
        fList.SetItems(&shown);
    } else {
        fList.SetItems(&rows);
    }
    if (selected >= 0 && CountRows() > 0) {
        fList.Select(std::min(fFilter.ShownBefore(selected), CountRows() - 1));
    }
}

} // namespace norvane
