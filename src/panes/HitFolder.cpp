#include "panes/HitFolder.h"

#include "panes/PaneRows.h"

#include <NodeMonitor.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace norvane {

namespace {

using Kind = BEntryChange::Kind;

struct SharedWatch
{
    node_ref folder;
    BMessenger watcher;
    int32 count;
};

struct SharedWatches
{
    std::mutex mutex; // held while a watch begins or ends, too: neither waits for a disk
    std::vector<SharedWatch> all;

    std::vector<SharedWatch>::iterator Find(const node_ref& folder, const BMessenger& watcher)
    {
        return std::find_if(all.begin(), all.end(), [&](const SharedWatch& watch) {
            return watch.folder == folder && watch.watcher == watcher;
        });
    }
};

SharedWatches& Watches()
{
    // Never destroyed: a reader may end after everything else.
    static SharedWatches& watches = *new SharedWatches;
    return watches;
}

void Remove(const std::string& path, PaneRows& rows)
{
    if (DirListItem* row = rows.FindRow(path.c_str())) {
        rows.Remove(row);
    }
}

void Rebuild(const std::string& oldPath, const std::string& path, const BEntryChange& change,
             PaneRows& rows)
{
    if (DirListItem* row = rows.FindRow(oldPath.c_str())) {
        rows.RebuildHit(row, change.name, path, change.record);
    }
}

} // namespace

HitWatch::HitWatch(const node_ref& folder, const BMessenger& watcher)
    : fFolder(folder), fWatcher(watcher)
{
    SharedWatches& watches = Watches();
    const std::lock_guard lock(watches.mutex);
    const auto other = watches.Find(folder, watcher);
    if (other != watches.all.end()) {
        ++other->count;
        fIsOn = true;
    } else if (watch_node(&folder, B_WATCH_ENTRIES, watcher) == B_OK) {
        watches.all.push_back({folder, watcher, 1});
        fIsOn = true;
    }
}

HitWatch::~HitWatch()
{
    if (!fIsOn) {
        return;
    }
    SharedWatches& watches = Watches();
    const std::lock_guard lock(watches.mutex);
    const auto watch = watches.Find(fFolder, fWatcher);
    if (--watch->count > 0) {
        return;
    }
    watches.all.erase(watch);
    watch_node(&fFolder, B_STOP_WATCHING, fWatcher);
}

void ApplyToHits(const BEntryChange& change, const std::string& folderPath, PaneRows& rows)
{
    const std::string path = folderPath + change.name;
    switch (change.kind) {
    case Kind::kRemoved:
        Remove(path, rows);
        break;
    case Kind::kRenamed: {
        const std::string from = folderPath + change.fromName;
        if (rows.FindRow(from.c_str()) == nullptr) {
            Rebuild(path, path, change, rows); // another entry took a hit's name
            break;
        }
        Remove(path, rows);
        Rebuild(from, path, change, rows);
        break;
    }
    default:
        Rebuild(path, path, change, rows);
    }
}

} // namespace norvane
