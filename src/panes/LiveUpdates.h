#pragma once

#include "panes/PaneRows.h"
#include "panes/RowSource.h"

#include <EntryChanges.h>

#include <optional>
#include <set>
#include <string>

namespace norvane {

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
    /// Follows a folder whose watch has begun, from here on; nothing for none. The watch of the
    /// folder followed before ends, unless it is the same one.
    void Follow(const std::optional<WatchedFolder>& folder);
    /// Ends the watch that began for a folder which is not shown after all, unless it is the one
    /// that is followed.
    void Release(const std::optional<WatchedFolder>& folder) const;
    /// Ends the watch; notices that are on their way still count.
    void Stop();
    bool IsFollowing() const { return fIsFollowing; }
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
    void RemoveEntry(const entry_ref& ref);
    void UpdateEntry(const node_ref& node);
    void UpdateEntry(const entry_ref& newRef, const entry_ref& oldRef);

    void ForgetAll() { fMovedIn.clear(); }

private:
    static void EndWatch(const WatchedFolder& folder);
    bool IsShown(const BMessage& notice, const char* directoryField) const;
    entry_ref RefOf(const char* name) const;

    // The platform's notices, each of one entry
    void OneChanged(const BMessage& notice, int32 opcode);
    void OneMoved(const BMessage& notice, const char* name);
    void OneStatChanged(const BMessage& notice);

    void Apply(const BEntryChange& change);
    void Rename(const BEntryChange& change);
    void Show(const char* name, const BEntryRecord& record);
    void Rebuild(DirListItem* row, const char* name, const BEntryRecord& record);
    void ShowIfListed(const BEntryChange& change);
    void ShowContents(const BEntryChange& change);
    void Remove(const char* name);

    PaneRows& fRows;
    WatchedFolder fFolder; // the one followed last
    bool fIsFollowing = false;
    bool fIsWatching = false;       // the watch of fFolder is on
    std::set<std::string> fMovedIn; // names moved in from elsewhere, not listed yet
};

} // namespace norvane
