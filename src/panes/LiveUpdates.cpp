#include "panes/LiveUpdates.h"

#include "fileops/engine/OwnNames.h"

#include <Entry.h>
#include <Message.h>
#include <NodeMonitor.h>

#include <cstring>
#include <utility>

namespace norvane {

namespace {

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

void LiveUpdates::EndWatch(const WatchedFolder& folder)
{
    if (folder.watcher.IsValid()) {
        watch_node(&folder.node, B_STOP_WATCHING, folder.watcher);
    }
}

void LiveUpdates::Follow(const std::optional<WatchedFolder>& folder)
{
    if (fIsWatching && (!folder.has_value() || folder->node != fFolder.node)) {
        EndWatch(fFolder);
    }
    fIsFollowing = folder.has_value();
    fIsWatching = folder.has_value() && folder->status == B_OK;
    if (folder.has_value()) {
        fFolder = *folder;
    }
}

void LiveUpdates::Release(const std::optional<WatchedFolder>& folder) const
{
    if (folder.has_value() && !(fIsWatching && folder->node == fFolder.node)) {
        EndWatch(*folder);
    }
}

void LiveUpdates::Stop()
{
    if (fIsWatching) {
        EndWatch(fFolder);
        fIsWatching = false;
    }
}

// Notices

void LiveUpdates::NodeChanged(const BMessage& notice)
{
    int32 opcode = 0;
    if (!fIsFollowing || notice.FindInt32("opcode", &opcode) != B_OK) {
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
bool LiveUpdates::IsShown(const BMessage& notice, const char* directoryField) const
{
    int32 device = 0;
    int64 directory = 0;
    return notice.FindInt32("device", &device) == B_OK &&
           notice.FindInt64(directoryField, &directory) == B_OK &&
           device == static_cast<int32>(fFolder.node.device) &&
           static_cast<ino_t>(directory) == fFolder.node.node;
}

entry_ref LiveUpdates::RefOf(const char* name) const
{
    entry_ref ref = fFolder.inside;
    ref.set_name(name);
    return ref;
}

void LiveUpdates::EntryCreated(const BMessage& notice)
{
    const char* name = nullptr;
    if (IsShown(notice, "directory") && notice.FindString("name", &name) == B_OK) {
        const entry_ref ref = RefOf(name);
        node_ref node;
        ReadNode(notice, node, nullptr);
        // What was made here is listed at once, and may be renamed before the watch hears of it.
        if (DirListItem* renamed = RowWithoutEntry(fRows.FindAll(node), node)) {
            fRows.Rebuild(renamed, ref);
        } else {
            AddEntry(ref);
        }
    }
}

void LiveUpdates::EntryRemoved(const BMessage& notice)
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
        fReplaced = fRows.Find(node, name);
        return;
    }
    RemoveEntry(node, name);
}

void LiveUpdates::EntryMoved(const BMessage& notice)
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
        moved = fromName != nullptr ? fRows.Find(node, fromName) : fRows.FindAny(node);
    }
    if (!isToHere) {
        if (isFromHere && moved == nullptr && fromName != nullptr) {
            fMovedIn.erase(fromName);
        }
        if (moved != nullptr) {
            fRows.Remove(moved);
        }
        return;
    }
    MovedHere(name, isFromHere ? fromName : nullptr, isFromHere, moved, target);
}

void LiveUpdates::MovedHere(const char* name, const char* fromName, bool isRename,
                            DirListItem* moved, DirListItem* target)
{
    const entry_ref ref = RefOf(name);
    if (target != nullptr) {
        // Renamed over a listed entry, as programs save files: its row lives on with the new
        // contents.
        if (moved != nullptr && moved != target) {
            fRows.Remove(moved);
        }
        fRows.Rebuild(target, ref);
    } else if (moved != nullptr && IsOwnTemporaryName(name)) {
        fRows.Remove(moved); // about to be deleted; it comes back when it is not
    } else if (moved != nullptr) {
        fRows.Rebuild(moved, ref);
    } else if (!isRename || (fromName != nullptr && fMovedIn.erase(fromName) > 0)) {
        fMovedIn.insert(name); // listed when the window is activated
    } else {
        AddEntry(ref);
    }
}

void LiveUpdates::StatChanged(const BMessage& notice)
{
    node_ref node;
    int64 directory = 0;
    const bool isElsewhere =
        notice.FindInt64("directory", &directory) == B_OK && !IsShown(notice, "directory");
    if (!isElsewhere && ReadNode(notice, node, nullptr)) {
        UpdateEntry(node);
    }
}

void LiveUpdates::AddMissing()
{
    const std::set<std::string> names = std::exchange(fMovedIn, {});
    for (const std::string& name : names) {
        AddEntry(RefOf(name.c_str()));
    }
}

// Rows

int LiveUpdates::AddEntry(const entry_ref& ref)
{
    if (ref.name == nullptr || IsOwnTemporaryName(ref.name)) {
        return 0;
    }
    BEntry entry(&ref);
    auto row = std::make_unique<DirListItem>(&entry, rgb_color(), false, kLocalMode,
                                             fRows.DateFormat().c_str());
    if (!row->HasNode()) {
        return 0;
    }
    const int kind = row->IsDir() ? 1 : 2;
    DirListItem* listed = fRows.Find(row->NodeRef(), ref.name);
    if (listed == nullptr) {
        fRows.Insert(std::move(row));
    } else {
        fRows.Rebuild(listed, ref); // it may have been listed before it was written to
    }
    return kind;
}

int LiveUpdates::AddEntry(const char* name)
{
    return fIsFollowing ? AddEntry(RefOf(name)) : 0;
}

void LiveUpdates::RemoveEntry(const entry_ref& ref)
{
    const int32 index = fRows.Find(ref.name);
    if (index >= 0 && !fRows.RowAt(index)->IsParent()) {
        fRows.Remove(fRows.RowAt(index));
    }
}

void LiveUpdates::RemoveEntry(const node_ref& node, const char* name)
{
    DirListItem* row = fRows.Find(node, name);
    if (row == nullptr) {
        // It was renamed and removed before its row could follow, and is known by its old name.
        row = RowWithoutEntry(fRows.FindAll(node), node);
    }
    if (row != nullptr) {
        fRows.Remove(row);
    }
}

void LiveUpdates::UpdateEntry(const node_ref& node)
{
    for (DirListItem* row : fRows.FindAll(node)) {
        fRows.Rebuild(row, *row->GetRef());
    }
}

void LiveUpdates::UpdateEntry(const entry_ref& newRef, const entry_ref& oldRef)
{
    const int32 index = fRows.Find(oldRef.name);
    if (index >= 0 && !fRows.RowAt(index)->IsParent()) {
        fRows.Rebuild(fRows.RowAt(index), newRef);
    }
}

void LiveUpdates::Forget(const DirListItem* row)
{
    if (fReplaced == row) {
        fReplaced = nullptr;
    }
}

void LiveUpdates::ForgetAll()
{
    fReplaced = nullptr;
    fMovedIn.clear();
}

} // namespace norvane
