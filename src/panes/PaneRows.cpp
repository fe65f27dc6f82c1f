#include "panes/PaneRows.h"

#include "clv/ColumnListView.h"

#include <List.h>
#include <OS.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace norvane {

namespace {

using RowList = std::vector<std::unique_ptr<DirListItem>>;

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

DirListItem* PaneRows::Find(const node_ref& node, const char* name) const
{
    return fIndex.Find(node, name);
}

/// Rows of a server have no node: under their common number zero they would lie in one long run,
/// and adding the last of a hundred thousand would walk past all others.
void PaneRows::Note(DirListItem* row)
{
    if (row->HasNode()) {
        fIndex.Add(row);
    }
    fTotals.Add(*row);
}

void PaneRows::Forget(DirListItem* row)
{
    if (row->HasNode()) {
        fIndex.Remove(row);
    }
    fTotals.Remove(*row);
}

// All rows

void PaneRows::Fill(ListedRows rows)
{
    const std::size_t count = rows.folders.size() + rows.files.size();
    BList added(static_cast<int32>(count) + 1);
    fIndex.Reserve(count);
    for (RowList* group : {&rows.folders, &rows.files}) {
        for (std::unique_ptr<DirListItem>& row : *group) {
            Note(row.get());
            added.AddItem(row.release()); // ours, deleted by Clear()
        }
    }
    fList.AddList(&added);
}

void PaneRows::Clear()
{
    fListener.RowsLeave();
    const int32 count = CountRows();
    // Deleted once the list has let go of them.
    auto rows = std::make_unique<RowList>(static_cast<std::size_t>(count));
    for (int32 i = 0; i < count; i++) {
        (*rows)[static_cast<std::size_t>(i)].reset(RowAt(i));
    }
    fIndex.Clear();
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
    const RowOrder::Place place = fOrder.PlaceFor(row->GetEntryName(), row->IsDir());
    DirListItem* before = RowAt(place.index - 1);
    if (before != nullptr && std::strcmp(before->GetEntryName(), row->GetEntryName()) == 0) {
        Rebuild(before, *row->GetRef()); // of a former entry of that name
        return;
    }
    Note(row.get());
    if (!place.isInOrder) {
        fOrder.Displaced(row.get());
    }
    fList.AddItem(row.release(), place.index); // ours, deleted by Remove() or Clear()
    fListener.RowsChanged();
}

void PaneRows::Remove(DirListItem* row)
{
    const int32 index = IndexOf(row);
    const bool wasSelected = row->IsSelected();
    fListener.RowLeaves(row);
    const std::unique_ptr<DirListItem> removed(row);
    Forget(row);
    fOrder.Forget(row);
    fList.RemoveItem(index);
    if (wasSelected && CountRows() > 0) {
        fList.Select(std::min(index, CountRows() - 1));
    }
    fListener.RowsChanged();
}

void PaneRows::Rebuild(DirListItem* row, const entry_ref& ref)
{
    const std::string oldName = row->GetEntryName();
    const bool wasFolder = row->IsDir();
    const int32 index = IndexOf(row);
    Forget(row);
    // When the entry is gone again the row stays as it is; the notice of that is on its way.
    row->Update(&ref, fDateFormat.c_str());
    Note(row);
    if (row->IsDir() != wasFolder || oldName != row->GetEntryName()) {
        fOrder.Displaced(row);
    }
    fList.InvalidateItem(index);
    fListener.RowsChanged();
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
