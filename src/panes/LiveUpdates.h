#pragma once

#include "panes/LinkTargets.h"
#include "panes/PaneRows.h"
#include "panes/RowSource.h"

#include <EntryChanges.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace norvane {

/// What a look at an entry finds; of a link, at the link. Waits for the disk. Thread: any.
BEntryRecord LookAt(const entry_ref& ref);

/// Keeps the rows of a list as its local folder is: turns the notices of the folder's watch into
/// changes of single rows.
///
/// Names are unique in a folder, and what happened to them is told in order; so the rows are right
/// once all is handled, however late, and whether or not an entry is still there by then. The disk
/// is not asked: a notice carries what the row shows. Thread: the list's window's.
class LiveUpdates
{
public:
    explicit LiveUpdates(PaneRows& rows) : fRows(rows) {}
    ~LiveUpdates() { Stop(); }
    LiveUpdates(const LiveUpdates&) = delete;
    LiveUpdates& operator=(const LiveUpdates&) = delete;

    // The watch
    /// Follows a folder whose watch has begun, from here on; nothing for none. The notices that
    /// were kept for it are handled; the watch of the folder followed before ends.
    void Follow(const std::optional<WatchedFolder>& folder);
    /// Ends the watch that began for a folder which is not shown after all.
    static void Release(const std::optional<WatchedFolder>& folder);
    /// Who is told what links lead to, by kLinkAnswered; nobody: the disk is waited for.
    void SetList(const BMessenger& list);
    /// One of these answers, for a link of the folder that is followed.
    void LinkAnswered(const LinkAnswer& answer);
    /// Whether notices are kept, besides being handled, for a folder whose rows are on their way.
    void KeepNotices(bool isOn);
    /// Ends the watch; notices that are on their way still count.
    void Stop();
    bool IsFollowing() const { return fIsFollowing; }
    /// Whether somebody tells of its changes.
    bool IsWatching() const { return fIsWatching; }
    /// Whether the folder followed was removed.
    bool IsGone() const { return fIsGone; }
    void NoteGone() { fIsGone = true; }
    /// Whether the folder followed was renamed or moved since this was last asked.
    bool TakeMoved() { return std::exchange(fHasMoved, false); }
    /// Whether a folder in it was renamed or went since this was last asked.
    bool TakeFolderLeft() { return std::exchange(fHasFolderLeft, false); }
    /// Some name in the folder followed, which keeps it known wherever it is.
    const entry_ref& Inside() const { return fFolder.inside; }
    /// The folder followed, or the one followed last.
    const node_ref& FolderNode() const { return fFolder.node; }

    // Changes
    /// Handles a notice of the watch; one of another folder is dropped.
    void NodeChanged(const BMessage& notice);
    /// Adds entries that were moved in from elsewhere since the last listing.
    void AddMissing();
    /// 1 for a folder's row, 2 for any other, 0 when the entry is gone or no row is made of it.
    int AddEntry(const entry_ref& ref);
    /// The same for a name in the folder that is followed.
    int AddEntry(const char* name);
    /// Shows an entry that was just made in the folder followed, and what a look at it found.
    void AddMade(const char* name, const BEntryRecord& record) { Show(name, record); }
    void RemoveEntry(const entry_ref& ref);
    void UpdateEntry(const node_ref& node);
    void UpdateEntry(const entry_ref& newRef, const entry_ref& oldRef);

    void ForgetAll();

private:
    static void EndWatch(const WatchedFolder& folder);
    void Handle(const BMessage& notice);
    bool IsShown(const BMessage& notice, const char* directoryField) const;
    entry_ref RefOf(const char* name) const;

    // The platform's notices, each of one entry
    bool IsOfItself(const BMessage& notice) const;
    void OneChanged(const BMessage& notice, int32 opcode);
    void OneMoved(const BMessage& notice, const char* name);
    void OneStatChanged(const BMessage& notice);

    void Apply(const BEntryChange& change);
    void Rename(const BEntryChange& change);
    bool Ask(const char* name, const BEntryRecord& record);
    void Show(const char* name, const BEntryRecord& record);
    void ShowKnown(const char* name, const BEntryRecord& record, mode_t target);
    void Rebuild(DirListItem* row, const char* name, const BEntryRecord& record, mode_t target = 0);
    void ShowIfListed(const BEntryChange& change);
    void ShowContents(const BEntryChange& change);
    void Remove(const char* name);
    void NoteLeft(const char* name);
    void NoteFolderLeft(const DirListItem* row);

    PaneRows& fRows;
    WatchedFolder fFolder; // the one followed last
    bool fIsFollowing = false;
    bool fIsWatching = false; // the watch of fFolder is on
    bool fIsGone = false;
    bool fHasMoved = false;
    bool fHasFolderLeft = false;
    bool fKeepsNotices = false;
    std::vector<BMessage> fKept;
    std::unique_ptr<LinkTargets> fLinks; // null: nobody is told
    std::map<std::string, int32> fAsked; // links whose answers are awaited, with their numbers
    int32 fLastNumber = 0;
    std::set<std::string> fLeft;    // names that went since the listing
    std::set<std::string> fMovedIn; // names moved in from elsewhere, not listed yet
};

} // namespace norvane
