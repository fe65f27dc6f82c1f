#include "panes/DirView.h"

#include "fileops/engine/OwnNames.h"
#include "panes/FolderReader.h"
#include "settings/MsgBox.h"

#include <Entry.h>
#include <Message.h>
#include <NodeMonitor.h>
#include <Window.h>

#include <algorithm>
#include <cstring>
#include <utility>

// Following the changes of the listed folder.

namespace norvane {

namespace {

constexpr uint32 kWatchFlags = B_WATCH_DIRECTORY | B_WATCH_STAT;

/// The "node" of a notice; false when the notice is not complete.
bool ReadNode(const BMessage& notice, node_ref& node, const char** name)
{
    int32 device = 0;
    int64 number = 0;
    if (notice.FindInt32("device", &device) != B_OK || notice.FindInt64("node", &number) != B_OK) {
        return false;
    }
    node = node_ref(static_cast<dev_t>(device), static_cast<ino_t>(number));
    return name == nullptr || notice.FindString("name", name) == B_OK;
}

/// The one of the node's rows under whose name the node is no more; null when there is none.
DirListItem* RowWithoutEntry(const std::vector<DirListItem*>& rows, const node_ref& node)
{
    for (DirListItem* row : rows) {
        node_ref found;
        const BEntry entry(row->GetRef());
        if (entry.GetNodeRef(&found) != B_OK || found != node) {
            return row;
        }
    }
    return nullptr;
}

} // namespace

// The watch

status_t DirView::BeginWatch(FolderReader& folder, status_t* watchStatus)
{
    if (Window() == nullptr || fPane == nullptr) {
        return folder.ReadNames(); // nobody is there to be told
    }
    fWatcher = BMessenger(fPane);
    return folder.WatchAndReadNames(kWatchFlags, fWatcher, watchStatus);
}

void DirView::EndWatch(const node_ref& folder)
{
    if (fWatcher.IsValid()) {
        watch_node(&folder, B_STOP_WATCHING, fWatcher);
    }
}

void DirView::TakeWatch(const FolderReader& folder, status_t status, Complaint complaint)
{
    if (fIsWatching && fWatched != folder.Node()) {
        EndWatch(fWatched);
    }
    fIsWatching = status == B_OK;
    fWatched = folder.Node();
    fInFolder = folder.Ref();
    if (status != B_OK && complaint == Complaint::kAlert) {
        MsgBox("Err",
               status == B_BAD_VALUE ? "A bad value was passed.  Node Monitoring disabled."
                                     : "Out of memory. Node Monitoring disabled.",
               "Oh Well", B_INFO_ALERT);
    }
}

void DirView::StopNodeMonitoring()
{
    if (fIsWatching) {
        EndWatch(fWatched);
        fIsWatching = false;
    }
}

// Notices

void DirView::NodeChanged(const BMessage& notice)
{
    int32 opcode = 0;
    if (fMode != kLocalMode || notice.FindInt32("opcode", &opcode) != B_OK) {
        return;
    }
    switch (opcode) {
    case B_ENTRY_CREATED:
        EntryCreated(notice);
        break;
    case B_ENTRY_REMOVED:
        EntryRemoved(notice);
        break;
    case B_ENTRY_MOVED:
        EntryMoved(notice);
        break;
    case B_STAT_CHANGED:
        StatChanged(notice);
        break;
    default:
        break;
    }
}

/// A notice may still come from a folder that was left.
bool DirView::IsShown(const BMessage& notice, const char* directoryField) const
{
    int32 device = 0;
    int64 directory = 0;
    return notice.FindInt32("device", &device) == B_OK &&
           notice.FindInt64(directoryField, &directory) == B_OK &&
           device == static_cast<int32>(fWatched.device) &&
           static_cast<ino_t>(directory) == fWatched.node;
}

entry_ref DirView::RefOf(const char* name) const
{
    entry_ref ref = fInFolder;
    ref.set_name(name);
    return ref;
}

void DirView::EntryCreated(const BMessage& notice)
{
    const char* name = nullptr;
    if (IsShown(notice, "directory") && notice.FindString("name", &name) == B_OK) {
        const entry_ref ref = RefOf(name);
        node_ref node;
        ReadNode(notice, node, nullptr);
        // What was made here is listed at once, and may be renamed before the watch hears of it.
        if (DirListItem* renamed = RowWithoutEntry(fIndex.FindAll(node), node)) {
            RebuildRow(renamed, ref);
        } else {
            AddEntry(&ref);
        }
    }
}

void DirView::EntryRemoved(const BMessage& notice)
{
    node_ref node;
    const char* name = nullptr;
    if (!IsShown(notice, "directory") || !ReadNode(notice, node, &name)) {
        return;
    }
    fMovedIn.erase(name);
    bool isReplaced = false;
    if (notice.FindBool("replaced", &isReplaced) == B_OK && isReplaced) {
        // Another entry takes its name and its place: the notice of that comes next.
        fReplaced = fIndex.Find(node, name);
        return;
    }
    RemoveEntry(node, name);
}

void DirView::EntryMoved(const BMessage& notice)
{
    node_ref node;
    const char* name = nullptr;
    if (!ReadNode(notice, node, &name)) {
        return;
    }
    const char* fromName = nullptr;
    notice.FindString("from name", &fromName);
    DirListItem* target = std::exchange(fReplaced, nullptr);
    if (target != nullptr && std::strcmp(target->GetEntryName(), name) != 0) {
        target = nullptr;
    }
    const bool isFromHere = IsShown(notice, "from directory");
    const bool isToHere = IsShown(notice, "to directory");
    DirListItem* moved = nullptr;
    if (isFromHere) {
        moved = fromName != nullptr ? fIndex.Find(node, fromName) : fIndex.FindAny(node);
    }
    if (!isToHere) {
        if (isFromHere && moved == nullptr && fromName != nullptr) {
            fMovedIn.erase(fromName);
        }
        if (moved != nullptr) {
            RemoveRow(moved);
        }
        return;
    }
    MovedHere(name, isFromHere ? fromName : nullptr, isFromHere, moved, target);
}

void DirView::MovedHere(const char* name, const char* fromName, bool isRename, DirListItem* moved,
                        DirListItem* target)
{
    const entry_ref ref = RefOf(name);
    if (target != nullptr) {
        // Renamed over a listed entry, as programs save files: its row lives on with the new
        // contents.
        if (moved != nullptr && moved != target) {
            RemoveRow(moved);
        }
        RebuildRow(target, ref);
    } else if (moved != nullptr) {
        RebuildRow(moved, ref);
    } else if (!isRename || (fromName != nullptr && fMovedIn.erase(fromName) > 0)) {
        fMovedIn.insert(name); // listed when the window is activated
    } else {
        AddEntry(&ref);
    }
}

void DirView::StatChanged(const BMessage& notice)
{
    node_ref node;
    int64 directory = 0;
    const bool isElsewhere =
        notice.FindInt64("directory", &directory) == B_OK && !IsShown(notice, "directory");
    if (!isElsewhere && ReadNode(notice, node, nullptr)) {
        UpdateEntry(&node);
    }
}

void DirView::AddMissing()
{
    const std::set<std::string> names = std::exchange(fMovedIn, {});
    for (const std::string& name : names) {
        const entry_ref ref = RefOf(name.c_str());
        AddEntry(&ref);
    }
}

// Rows

int DirView::AddEntry(const entry_ref* ref)
{
    BEntry entry(ref);
    if (ref->name == nullptr || IsOwnTemporaryName(ref->name) || !entry.Exists()) {
        return 0;
    }
    auto row =
        std::make_unique<DirListItem>(&entry, ViewColor(), false, kLocalMode, fDateFormat.c_str());
    const int kind = row->IsDir() ? 1 : 2;
    if (fIndex.Find(row->NodeRef(), ref->name) == nullptr) {
        InsertRow(std::move(row));
    }
    return kind;
}

void DirView::InsertRow(std::unique_ptr<DirListItem> row)
{
    const RowOrder::Place place = fOrder.PlaceFor(row->GetEntryName(), row->IsDir());
    DirListItem* before = RowAt(place.index - 1);
    if (before != nullptr && std::strcmp(before->GetEntryName(), row->GetEntryName()) == 0) {
        RebuildRow(before, *row->GetRef()); // of a former entry of that name
        return;
    }
    fIndex.Add(row.get());
    fTotals.Add(*row);
    if (!place.isInOrder) {
        fOrder.Displaced(row.get());
    }
    AddItem(row.release(), place.index); // ours, deleted by RemoveRow() or DeleteRows()
    PlaceRenameField();
    NotifyParent(MSG_PANE_INFO);
}

void DirView::RemoveEntry(const entry_ref* ref)
{
    const int32 index = fOrder.Find(ref->name);
    if (index >= 0 && !RowAt(index)->IsParent()) {
        RemoveRow(RowAt(index));
    }
}

void DirView::RemoveEntry(const node_ref& node, const char* name)
{
    if (DirListItem* row = fIndex.Find(node, name)) {
        RemoveRow(row);
    }
}

void DirView::RemoveRow(DirListItem* row)
{
    const int32 index = IndexOfRow(row);
    const bool wasSelected = row->IsSelected();
    const std::unique_ptr<DirListItem> removed(row);
    fMarks.Forget(row);
    fIndex.Remove(row);
    fOrder.Forget(row);
    fTotals.Remove(*row);
    ForgetPressedRow(row);
    if (fRename.Row() == row) {
        DropRenameField();
    }
    if (fAnchor == row) {
        fAnchor = nullptr;
    }
    if (fReplaced == row) {
        fReplaced = nullptr;
    }
    RemoveItem(index);
    PlaceRenameField();
    if (wasSelected && CountItems() > 0) {
        Select(std::min(index, CountItems() - 1));
    }
    NotifyParent(MSG_PANE_INFO);
}

void DirView::UpdateEntry(const node_ref* node)
{
    for (DirListItem* row : fIndex.FindAll(*node)) {
        RebuildRow(row, *row->GetRef());
    }
}

void DirView::UpdateEntry(const entry_ref* newRef, const entry_ref* oldRef)
{
    const int32 index = fOrder.Find(oldRef->name);
    if (index >= 0 && !RowAt(index)->IsParent()) {
        RebuildRow(RowAt(index), *newRef);
    }
}

void DirView::RebuildRow(DirListItem* row, const entry_ref& ref)
{
    const int32 index = IndexOfRow(row);
    const std::string oldName = row->GetEntryName();
    const bool wasFolder = row->IsDir();
    fIndex.Remove(row);
    fTotals.Remove(*row);
    // When the entry is gone again the row stays as it is; the notice of that is on its way.
    row->Update(&ref, fDateFormat.c_str());
    fTotals.Add(*row);
    fIndex.Add(row);
    if (row->IsDir() != wasFolder || oldName != row->GetEntryName()) {
        fOrder.Displaced(row);
    }
    InvalidateItem(index);
    NotifyParent(MSG_PANE_INFO);
}

int32 DirView::IndexOfRow(const DirListItem* row) const
{
    return fOrder.IndexOf(row);
}

void DirView::RedrawRow(const DirListItem* row)
{
    InvalidateItem(IndexOfRow(row));
}

} // namespace norvane
