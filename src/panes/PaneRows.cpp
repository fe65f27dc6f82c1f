#include "panes/PaneRows.h"

#include "clv/ColumnListView.h"
#include "panes/DatePattern.h"

#include <List.h>
#include <OS.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace norvane {

namespace {

using RowList = PaneRows::RowList;

// Beyond so many rows giving their memory back takes longer than an answer to a key may.
constexpr int32 kManyRows = 20'000;

int32 DeleteRowList(void* rows)
{
    delete static_cast<RowList*>(rows);
    return B_OK;
}

/// Deletes the rows on a thread of its own, or here when there is none.
void DeleteInBackground(std::unique_ptr<RowList> rows)
{
    const thread_id thread =
        spawn_thread(&DeleteRowList, "row deleter", B_LOW_PRIORITY, rows.get());
    if (thread >= 0 && resume_thread(thread) == B_OK) {
        [[maybe_unused]] const auto* taken = rows.release(); // adopted by the thread
    }
}

} // namespace

int32 PaneRows::CountRows() const
{
    return fList.CountItems();
}

DirListItem* PaneRows::RowAt(int32 index) const
{
    return static_cast<DirListItem*>(fList.ItemAt(index));
}

// Searches

void PaneRows::VisitRows(const std::function<void(DirListItem*)>& visit) const
{
    for (int32 i = 0; i < fFilter.CountRows(); i++) {
        DirListItem* row = fFilter.RowAt(i);
        if (!fChanges.has_value() || !fChanges->leavers.contains(row)) {
            visit(row);
        }
    }
    if (fChanges.has_value()) {
        for (DirListItem* row : fChanges->coming) {
            visit(row);
        }
    }
}

const RowIndex& PaneRows::Nodes() const
{
    if (!fNodes.has_value()) {
        fNodes.emplace();
        fNodes->Reserve(static_cast<std::size_t>(fFilter.CountRows()));
        VisitRows([this](DirListItem* row) {
            // Rows of a server have no node: under their common number zero they would lie in one
            // long run, and adding the last of a hundred thousand would walk past all others.
            if (row->HasNode()) {
                fNodes->Add(row);
            }
        });
    }
    return *fNodes;
}

const RowNames& PaneRows::Names() const
{
    if (!fNames.has_value()) {
        fNames.emplace();
        fNames->Reserve(static_cast<std::size_t>(fFilter.CountRows()));
        VisitRows([this](DirListItem* row) {
            if (!row->IsParent()) {
                fNames->Add(row);
            }
        });
    }
    return *fNames;
}

int32 PaneRows::IndexOf(const DirListItem* row) const
{
    return row->IsFilteredAway() ? -1 : fOrder.IndexOf(row, *this);
}

int32 PaneRows::Find(const char* name) const
{
    const DirListItem* row = FindRow(name);
    if (row != nullptr) {
        return IndexOf(row);
    }
    const DirListItem* first = RowAt(0);
    return first != nullptr && std::strcmp(first->GetEntryName(), name) == 0 ? 0 : -1; // ".."
}

void PaneRows::Note(DirListItem* row)
{
    if (fNodes.has_value() && row->HasNode()) {
        fNodes->Add(row);
    }
    if (fNames.has_value() && !row->IsParent()) {
        fNames->Add(row);
    }
    fTotals.Add(*row);
    fFilter.CountIn(*row);
    fMarkedChanges += row->IsMarked() ? 1 : 0;
}

void PaneRows::Forget(DirListItem* row)
{
    if (fNodes.has_value() && row->HasNode()) {
        fNodes->Remove(row);
    }
    if (fNames.has_value()) {
        fNames->Remove(row);
    }
    fTotals.Remove(*row);
    fFilter.CountOut(*row);
}

void PaneRows::RewriteDates()
{
    const DatePattern& dates = DatePattern::For(fDateFormat);
    for (int32 index = 0; index < fFilter.CountRows(); index++) {
        fFilter.RowAt(index)->SetDates(dates);
    }
}

// All rows

void PaneRows::Fill(ListedRows rows)
{
    if (rows.sorting != fOrder.Sorting()) {
        fOrder.Sorting().Sort(rows.folders);
        fOrder.Sorting().Sort(rows.files);
    }
    const std::size_t count = rows.folders.size() + rows.files.size();
    BList added(static_cast<int32>(count) + 1);
    for (RowList* group : {&rows.folders, &rows.files}) {
        for (std::unique_ptr<DirListItem>& row : *group) {
            if (row->IsParent() || !LeavesOut(row->GetEntryName())) {
                Note(row.get());
                fFilter.Judge(row.get());
                added.AddItem(row.release()); // ours, deleted by Clear()
            }
        }
    }
    if (fFilter.IsOn()) {
        SetRows(added, -1);
    } else {
        fList.AddList(&added);
    }
}

void PaneRows::Clear()
{
    fListener.AllRowsLeave();
    const int32 count = fFilter.CountRows();
    // Deleted once the list has let go of them.
    auto rows = std::make_unique<RowList>(static_cast<std::size_t>(count));
    for (int32 i = 0; i < count; i++) {
        (*rows)[static_cast<std::size_t>(i)].reset(fFilter.RowAt(i));
    }
    fFilter.Clear();
    fHasLeftOut = false;
    fNodes.reset();
    fNames.reset();
    fOrder.Clear();
    fTotals = {};
    fList.MakeEmpty();
    if (count > kManyRows) {
        DeleteInBackground(std::move(rows));
    }
}

// One row

void PaneRows::Insert(std::unique_ptr<DirListItem> row)
{
    if (DirListItem* former = FindRow(row->GetEntryName())) {
        Remove(former);
    }
    if (LeavesOut(row->GetEntryName())) {
        return;
    }
    Note(row.get());
    if (fChanges.has_value()) {
        fChanges->coming.insert(row.release()); // ours, deleted by Remove() or Clear()
        return;
    }
    const RowOrder::Place place = fOrder.PlaceFor(*row);
    if (!place.isInOrder) {
        fOrder.Displaced(row.get());
    }
    DirListItem* inserted = row.release(); // the same
    fFilter.Judge(inserted);
    if (fFilter.IsOn()) {
        fFilter.Insert(place.index, inserted);
    }
    if (!inserted->IsFilteredAway()) {
        fList.AddItem(inserted, fFilter.ShownBefore(place.index));
    }
    fListener.RowsChanged();
}

void PaneRows::Remove(DirListItem* row)
{
    Forget(row);
    if (fChanges.has_value()) {
        if (fChanges->coming.erase(row) == 0) {
            fChanges->leavers.insert(row);
        }
        fChanges->rebuilt.erase(row);
        fChanges->leaving.emplace_back(row);
        return;
    }
    const int32 index = fOrder.IndexOf(row);
    fListener.RowsLeave({row});
    const std::unique_ptr<DirListItem> removed(row);
    fOrder.Forget(row);
    const int32 shown = fFilter.ShownBefore(index);
    if (fFilter.IsOn()) {
        fFilter.Remove(index);
    }
    if (!row->IsFilteredAway()) {
        TakeOut(shown);
    }
    fListener.RowsChanged();
}

/// Takes the row at an index out of the list; when it was selected, the one that takes its place
/// is.
void PaneRows::TakeOut(int32 index)
{
    const bool wasSelected = RowAt(index)->IsSelected();
    fList.RemoveItem(index);
    if (wasSelected && CountRows() > 0) {
        fList.Select(std::min(index, CountRows() - 1));
    }
}

void PaneRows::Rebuild(DirListItem* row, const entry_ref& ref)
{
    if (LeavesOut(ref.name)) {
        Remove(row);
        return;
    }
    const std::string oldName = row->GetEntryName();
    const bool wasFolder = row->IsDir();
    Forget(row);
    // When the entry is gone again the row stays as it is; the notice of that is on its way.
    row->Update(&ref, fDateFormat.c_str());
    Rebuilt(row, oldName, wasFolder);
}

void PaneRows::Rebuild(DirListItem* row, const char* name, const BEntryRecord& record,
                       mode_t target)
{
    if (LeavesOut(name)) {
        Remove(row);
        return;
    }
    const std::string oldName = row->GetEntryName();
    const bool wasFolder = row->IsDir();
    Forget(row);
    if (oldName != name) {
        row->SetName(name);
    }
    if (record.status != B_ENTRY_NOT_FOUND) {
        row->Take(record, DatePattern::For(fDateFormat), target);
    }
    Rebuilt(row, oldName, wasFolder);
}

void PaneRows::RebuildHit(DirListItem* row, const char* name, const std::string& path,
                          const BEntryRecord& record)
{
    const std::string oldName = row->GetEntryName();
    const bool wasFolder = row->IsDir();
    Forget(row);
    row->SetName(name);
    if (record.status != B_ENTRY_NOT_FOUND) {
        // A link leads where it led; what that is nobody watches.
        row->Take(record, DatePattern::For(fDateFormat), wasFolder ? S_IFDIR : S_IFREG);
    }
    row->ShowPath(path);
    Rebuilt(row, oldName, wasFolder);
}

void PaneRows::Rebuilt(DirListItem* row, const std::string& oldName, bool wasFolder)
{
    const bool isDisplaced = fOrder.Sorting().IsListings() &&
                             (row->IsDir() != wasFolder || oldName != row->GetEntryName());
    Note(row);
    if (fChanges.has_value()) {
        // What is not in the list yet goes to its place later.
        if (isDisplaced && !fChanges->coming.contains(row)) {
            fOrder.Displaced(row);
        }
        fChanges->rebuilt.insert(row);
        return;
    }
    if (isDisplaced) {
        fOrder.Displaced(row);
    }
    Place(row);
    fListener.RowsChanged();
}

/// Whether the row at an index, of all rows, stands between its neighbours as they are sorted.
bool PaneRows::IsInPlace(int32 index) const
{
    const RowSorting& sorting = fOrder.Sorting();
    const DirListItem& row = *fFilter.RowAt(index);
    return (index == 0 || sorting.Compare(*fFilter.RowAt(index - 1), row) < 0) &&
           (index + 1 == fFilter.CountRows() ||
            sorting.Compare(row, *fFilter.RowAt(index + 1)) < 0);
}

/// Has a row that changed drawn, where rows are sorted in its place.
void PaneRows::Place(DirListItem* row)
{
    const int32 index = fOrder.IndexOf(row);
    const bool stays = index < 0 || fOrder.Sorting().IsListings() || IsInPlace(index);
    const int32 place = stays ? index : PlaceAmongOthers(index);
    if (fFilter.IsOn() && index >= 0) {
        PlaceFiltered(row, index, place);
        return;
    }
    if (stays) {
        fList.InvalidateItem(index);
        return;
    }
    const bool isFollowed = IsFollowed(row);
    fList.MoveItem(index, place);
    fList.InvalidateItem(place);
    if (isFollowed) {
        fList.ScrollToSelection();
    }
}

/// Whether a person has a row in sight that moves, as one just renamed: there it stays.
bool PaneRows::IsFollowed(const DirListItem* row) const
{
    return row->IsSelected() && fList.Bounds().Intersects(fList.ItemFrame(IndexOf(row)));
}

/// Where a row belongs among all others, which are in their places.
int32 PaneRows::PlaceAmongOthers(int32 index) const
{
    int32 low = 0;
    int32 high = fFilter.CountRows() - 1;
    while (low < high) {
        const int32 middle = low + (high - low) / 2;
        const DirListItem& other = *fFilter.RowAt(middle < index ? middle : middle + 1);
        if (fOrder.Sorting().Compare(other, *fFilter.RowAt(index)) < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

void PaneRows::SetDirSize(DirListItem* row, int64 bytes)
{
    row->SetDirSize(bytes);
    fMarkedChanges += row->IsMarked() ? 1 : 0;
    Place(row);
    fListener.RowsChanged();
}

/// Whether a row of that name is to be left out, which is noted. Of ".." it is asked by nobody.
bool PaneRows::LeavesOut(const char* name)
{
    const bool isLeftOut = fLeavesOutDotNames && name != nullptr && name[0] == '.';
    fHasLeftOut = fHasLeftOut || isLeftOut;
    return isLeftOut;
}

void PaneRows::SetLeavesOutDotNames(bool isOn)
{
    const bool isNew = isOn && !fLeavesOutDotNames;
    fLeavesOutDotNames = isOn;
    if (!isNew) {
        return;
    }
    auto left = std::make_unique<RowList>();
    std::vector<DirListItem*> leaving;
    BList kept(fFilter.CountRows());
    int32 selected = -1;
    for (int32 i = 0; i < fFilter.CountRows(); i++) {
        DirListItem* row = fFilter.RowAt(i);
        if (row->IsParent() || !LeavesOut(row->GetEntryName())) {
            kept.AddItem(row);
            continue;
        }
        selected = row->IsSelected() ? kept.CountItems() : selected;
        leaving.push_back(row);
        left->emplace_back(row);
        fTotals.Remove(*row);
        fFilter.CountOut(*row);
        fOrder.Forget(row);
    }
    if (!leaving.empty()) {
        Leave(leaving, std::move(left), kept, selected);
    }
}

/// Takes many rows out by one pass over the list, of which the others are `kept`; a row takes the
/// selection over from one that leaves.
void PaneRows::Leave(const std::vector<DirListItem*>& leaving, std::unique_ptr<RowList> left,
                     BList& kept, int32 selected)
{
    // Made again when they are asked for, which is cheaper than taking out what leaves one by one.
    fNodes.reset();
    fNames.reset();
    fListener.RowsLeave(leaving);
    SetRows(kept, selected);
    fListener.RowsChanged();
    if (leaving.size() > static_cast<std::size_t>(kManyRows)) {
        DeleteInBackground(std::move(left));
    }
}

void PaneRows::Redraw(const DirListItem* row)
{
    fList.InvalidateItem(IndexOf(row));
}

void PaneRows::RedrawAll()
{
    fList.Invalidate();
}

} // namespace norvane
