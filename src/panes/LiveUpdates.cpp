#include "panes/LiveUpdates.h"

#include "fileops/engine/OwnNames.h"
#include "panes/DatePattern.h"

#include <Entry.h>
#include <Message.h>
#include <NodeMonitor.h>

#include <utility>

namespace norvane {

namespace {

// From so many changes on, one pass over the list is cheaper than finding each one's place.
constexpr int kManyChanges = 16;

bool AreMany(BEntryChanges changes)
{
    BEntryChange change;
    int count = 0;
    while (count < kManyChanges && changes.GetNext(&change)) {
        count++;
    }
    return count == kManyChanges;
}

/// The kind of what a link leads to; 0 when that is nothing.
mode_t TargetOf(const entry_ref& link)
{
    struct stat st = {};
    return BEntry(&link, true).GetStat(&st) == B_OK ? st.st_mode : 0;
}

} // namespace

BEntryRecord LookAt(const entry_ref& ref)
{
    struct stat st = {};
    BEntryRecord record;
    record.status = BEntry(&ref).GetStat(&st);
    record.mode = st.st_mode;
    record.node = st.st_ino;
    record.links = st.st_nlink;
    record.size = st.st_size;
    record.modified = st.st_mtime;
    return record;
}

// The watch

void LiveUpdates::EndWatch(const WatchedFolder& folder)
{
    if (folder.watcher.IsValid()) {
        watch_node(&folder.node, B_STOP_WATCHING, folder.watcher);
    }
}

void LiveUpdates::Follow(const std::optional<WatchedFolder>& folder)
{
    if (fIsWatching) {
        EndWatch(fFolder); // also of the same one: the new watch is another
    }
    fIsGone = false;
    fHasMoved = false;
    fIsFollowing = folder.has_value();
    fIsWatching = folder.has_value() && folder->status == B_OK;
    if (folder.has_value()) {
        fFolder = *folder;
    }
    const std::vector<BMessage> kept = std::exchange(fKept, {});
    fKeepsNotices = false;
    for (const BMessage& notice : kept) {
        Handle(notice);
    }
}

void LiveUpdates::Release(const std::optional<WatchedFolder>& folder)
{
    if (folder.has_value() && folder->status == B_OK) {
        EndWatch(*folder);
    }
}

void LiveUpdates::SetList(const BMessenger& list)
{
    fLinks = std::make_unique<LinkTargets>(list);
}

void LiveUpdates::ForgetAll()
{
    fMovedIn.clear();
    fAsked.clear();
    fLeft.clear();
}

void LiveUpdates::KeepNotices(bool isOn)
{
    fKeepsNotices = isOn;
    fKept.clear();
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
    if (fKeepsNotices) {
        fKept.push_back(notice);
    }
    Handle(notice);
}

void LiveUpdates::Handle(const BMessage& notice)
{
    if (!fIsFollowing) {
        return;
    }
    BEntryChanges changes(notice);
    if (changes.InitCheck() != B_OK) {
        int32 opcode = 0;
        if (notice.FindInt32("opcode", &opcode) == B_OK) {
            OneChanged(notice, opcode);
        }
        return;
    }
    if (changes.Folder() != fFolder.node) {
        return; // one that was left
    }
    const bool areMany = AreMany(changes);
    if (areMany) {
        fRows.BeginChanges();
    }
    BEntryChange change;
    while (changes.GetNext(&change)) {
        Apply(change);
    }
    if (areMany) {
        fRows.EndChanges();
    }
}

void LiveUpdates::Apply(const BEntryChange& change)
{
    using Kind = BEntryChange::Kind;
    // Half of a file that is being replaced, unless it is what was replaced and comes back.
    if (IsOwnTemporaryName(change.name) && change.kind != Kind::kRenamed) {
        return;
    }
    switch (change.kind) {
    case Kind::kCreated:
        Show(change.name, change.record);
        break;
    case Kind::kRemoved:
        Remove(change.name);
        break;
    case Kind::kRenamed:
        Rename(change);
        break;
    case Kind::kMovedIn:
    case Kind::kExchanged:
        ShowIfListed(change);
        break;
    case Kind::kChanged:
        ShowContents(change);
        break;
    }
}

void LiveUpdates::Remove(const char* name)
{
    fMovedIn.erase(name);
    fAsked.erase(name);
    NoteLeft(name);
    if (DirListItem* row = fRows.FindRow(name)) {
        NoteFolderLeft(row);
        fRows.Remove(row);
    }
}

void LiveUpdates::NoteFolderLeft(const DirListItem* row)
{
    fHasFolderLeft = fHasFolderLeft || (row != nullptr && row->IsDir());
}

/// Of a link that the listing did not know yet.
void LiveUpdates::NoteLeft(const char* name)
{
    if (fFolder.awaitsLinks) {
        fLeft.insert(name);
    }
}

void LiveUpdates::Rename(const BEntryChange& change)
{
    DirListItem* source = fRows.FindRow(change.fromName);
    DirListItem* target = fRows.FindRow(change.name);
    const bool wasMovedIn = fMovedIn.erase(change.fromName) > 0;
    fAsked.erase(change.fromName);
    fAsked.erase(change.name);
    NoteLeft(change.fromName);
    NoteFolderLeft(source);
    if (IsOwnTemporaryName(change.name)) {
        Remove(change.fromName); // about to be deleted; it comes back when it is not
    } else if (target != nullptr) {
        // Renamed over a listed entry, as programs save files: its row lives on with the new
        // contents.
        if (source != nullptr) {
            fRows.Remove(source);
        }
        Show(change.name, change.record);
    } else if (source != nullptr) {
        fMovedIn.erase(change.name);
        // The name at once; what a link leads to is found out.
        BEntryRecord nothingNew;
        nothingNew.status = B_ENTRY_NOT_FOUND;
        const bool isAsked = Ask(change.name, change.record);
        Rebuild(source, change.name, isAsked ? nothingNew : change.record,
                S_ISLNK(change.record.mode) && !isAsked ? TargetOf(RefOf(change.name)) : 0);
    } else if (wasMovedIn) {
        fMovedIn.insert(change.name);
    } else {
        Show(change.name, change.record);
    }
}

/// Of a link it has to be found out first what it leads to, by others: then it is shown. False when
/// that is known, or nobody can tell later.
bool LiveUpdates::Ask(const char* name, const BEntryRecord& record)
{
    fAsked.erase(name);
    if (fLinks == nullptr || !S_ISLNK(record.mode)) {
        return false;
    }
    fAsked[name] = ++fLastNumber;
    fLinks->Ask({RefOf(name), fFolder.node, record, fLastNumber});
    return true;
}

void LiveUpdates::LinkAnswered(const LinkAnswer& answer)
{
    if (!fIsFollowing || answer.folder != fFolder.node) {
        return;
    }
    const auto asked = fAsked.find(answer.name);
    if (answer.number == 0) {
        // By the listing; what was told since knows better.
        if (asked == fAsked.end() && fRows.FindRow(answer.name.c_str()) == nullptr &&
            !fLeft.contains(answer.name)) {
            ShowKnown(answer.name.c_str(), answer.record, answer.target);
        }
    } else if (asked != fAsked.end() && asked->second == answer.number) {
        fAsked.erase(asked);
        ShowKnown(answer.name.c_str(), answer.record, answer.target);
    }
}

void LiveUpdates::Show(const char* name, const BEntryRecord& record)
{
    fMovedIn.erase(name);
    if (!Ask(name, record)) {
        ShowKnown(name, record, S_ISLNK(record.mode) ? TargetOf(RefOf(name)) : 0);
    }
}

void LiveUpdates::ShowKnown(const char* name, const BEntryRecord& record, mode_t target)
{
    if (DirListItem* listed = fRows.FindRow(name)) {
        Rebuild(listed, name, record, target);
        return;
    }
    // One that is gone already gets its row all the same, until that is told: what is told in
    // between may be of it.
    fRows.Insert(std::make_unique<DirListItem>(RefOf(name), record,
                                               DatePattern::For(fRows.DateFormat()), target));
}

void LiveUpdates::Rebuild(DirListItem* row, const char* name, const BEntryRecord& record,
                          mode_t target)
{
    if (row->HasNode() || record.status != B_OK) {
        fRows.Rebuild(row, name, record, target);
        return;
    }
    // Nobody knew what it was, nor where it belongs.
    auto known = std::make_unique<DirListItem>(RefOf(name), record,
                                               DatePattern::For(fRows.DateFormat()), target);
    fRows.Remove(row);
    fRows.Insert(std::move(known));
}

/// What came from elsewhere stays unlisted until the window is activated, unless it has a row
/// already.
void LiveUpdates::ShowIfListed(const BEntryChange& change)
{
    if (fRows.FindRow(change.name) != nullptr) {
        Show(change.name, change.record);
    } else {
        fAsked.erase(change.name);
        fMovedIn.insert(change.name);
    }
}

void LiveUpdates::ShowContents(const BEntryChange& change)
{
    DirListItem* row = fRows.FindRow(change.name);
    if (row == nullptr || change.record.status != B_OK) {
        return;
    }
    if (S_ISLNK(change.record.mode)) {
        Show(change.name, change.record); // it may be another link, after an overflow
        return;
    }
    fRows.Rebuild(row, change.name, change.record, 0);
    if (change.record.links > 1) {
        for (DirListItem* other : fRows.FindAll(row->NodeRef())) {
            if (other != row) {
                fRows.Rebuild(other, other->GetEntryName(), change.record, 0);
            }
        }
    }
}

// The platform's notices

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

/// Whether it tells of the folder itself, rather than of what lies in it.
bool LiveUpdates::IsOfItself(const BMessage& notice) const
{
    int32 device = 0;
    int64 node = 0;
    return notice.FindInt32("device", &device) == B_OK && notice.FindInt64("node", &node) == B_OK &&
           !IsShown(notice, "directory") && !IsShown(notice, "to directory") &&
           !IsShown(notice, "from directory") &&
           device == static_cast<int32>(fFolder.node.device) &&
           static_cast<ino_t>(node) == fFolder.node.node;
}

void LiveUpdates::OneChanged(const BMessage& notice, int32 opcode)
{
    if (IsOfItself(notice)) {
        fIsGone = fIsGone || opcode == B_ENTRY_REMOVED;
        fHasMoved = fHasMoved || opcode == B_ENTRY_MOVED;
        return;
    }
    const char* name = nullptr;
    notice.FindString("name", &name);
    const bool isHere = IsShown(notice, "directory") && name != nullptr;
    if (opcode == B_ENTRY_CREATED && isHere) {
        AddEntry(name);
    } else if (opcode == B_ENTRY_REMOVED && isHere) {
        bool isReplaced = false;
        // Where another entry takes its name and its place the notice of that comes next.
        if (notice.FindBool("replaced", &isReplaced) != B_OK || !isReplaced) {
            Remove(name);
        }
    } else if (opcode == B_ENTRY_MOVED && name != nullptr) {
        OneMoved(notice, name);
    } else if (opcode == B_STAT_CHANGED) {
        OneStatChanged(notice);
    }
}

void LiveUpdates::OneMoved(const BMessage& notice, const char* name)
{
    int64 number = 0;
    notice.FindInt64("node", &number);
    const node_ref node(fFolder.node.device, static_cast<ino_t>(number));
    const bool isFromHere = IsShown(notice, "from directory");
    const bool isToHere = IsShown(notice, "to directory");
    const char* fromName = nullptr;
    if (isFromHere && notice.FindString("from name", &fromName) != B_OK) {
        const DirListItem* row = fRows.FindAny(node);
        fromName = row != nullptr ? row->GetEntryName() : name;
    }
    const std::string from = fromName != nullptr ? fromName : "";
    if (!isToHere) {
        if (isFromHere) {
            Remove(from.c_str());
        }
        return;
    }
    using Kind = BEntryChange::Kind;
    Apply({isFromHere ? Kind::kRenamed : Kind::kMovedIn, name, from.c_str(), LookAt(RefOf(name))});
}

void LiveUpdates::OneStatChanged(const BMessage& notice)
{
    int64 number = 0;
    int64 directory = 0;
    const bool isElsewhere =
        notice.FindInt64("directory", &directory) == B_OK && !IsShown(notice, "directory");
    if (!isElsewhere && notice.FindInt64("node", &number) == B_OK) {
        UpdateEntry(node_ref(fFolder.node.device, static_cast<ino_t>(number)));
    }
}

// Single entries

void LiveUpdates::AddMissing()
{
    const std::set<std::string> names = std::exchange(fMovedIn, {});
    for (const std::string& name : names) {
        AddEntry(name.c_str());
    }
}

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
    if (DirListItem* listed = fRows.FindRow(ref.name)) {
        fRows.Rebuild(listed, ref); // it may have been listed before it was written to
    } else {
        fRows.Insert(std::move(row));
    }
    return kind;
}

int LiveUpdates::AddEntry(const char* name)
{
    return fIsFollowing ? AddEntry(RefOf(name)) : 0;
}

void LiveUpdates::RemoveEntry(const entry_ref& ref)
{
    if (ref.name != nullptr) {
        Remove(ref.name);
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
    if (DirListItem* row = oldRef.name != nullptr ? fRows.FindRow(oldRef.name) : nullptr) {
        fRows.Rebuild(row, newRef);
    }
}

} // namespace norvane
