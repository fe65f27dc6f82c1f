#pragma once

#include "QueryPredicate.h"
#include "UniqueFd.h"
#include "kernel/Mutex.h"

#include <EntryRef.h>

#include <atomic>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kits {

/// A walk through all folders of a volume that finds the entries for which a predicate holds.
///
/// It follows no link, enters nothing that is mounted below its start, and passes over what it may
/// not read. Its threads, one for each core, keep the state alive that they share; so whoever began
/// it lets go of it at any time, and a volume that does not answer holds up nobody but them.
///
/// Thread: any.
class QueryWalk
{
public:
    /// Entries of one folder.
    struct Hits
    {
        FolderHold folder;
        std::vector<std::string> names;
    };

    /// Starts below `root`, an open folder, which is adopted; it lies at `path`. Null, with a
    /// status, without threads.
    static std::shared_ptr<QueryWalk> Start(UniqueFd root, std::string path,
                                            QueryPredicate predicate, status_t* status);

    /// Waits for hits; false when there will be no more.
    bool GetNext(Hits* hits);
    /// Has the threads end soon; GetNext() says false from now on.
    void Cancel();
    /// How many entries were looked at so far. More often than not a few more were.
    int64 CountVisited() const { return fVisited.load(std::memory_order_relaxed); }
    bool IsCancelled() const { return fIsCancelled.load(std::memory_order_relaxed); }

    /// For Start() alone.
    QueryWalk(UniqueFd root, std::string path, QueryPredicate predicate);

private:
    /// Where paths start. Paths are limited, trees are not: a deep folder becomes a start itself.
    struct Base
    {
        Base(UniqueFd open, std::string at) : folder(std::move(open)), path(std::move(at)) {}

        UniqueFd folder;
        std::string path; // "" where no call would take it
    };
    struct Folder
    {
        std::shared_ptr<const Base> base;
        std::string path; // from there
    };
    class Worker;

    bool TakeFolders(std::vector<Folder>* folders);
    void ShareFolders(std::vector<Folder>* folders);
    void Deliver(std::deque<Hits>* found);
    void ThreadEnds();
    FolderHold Know(int descriptor, const Folder& folder);

    const QueryPredicate fPredicate;
    std::atomic<bool> fIsCancelled{false};
    std::atomic<int32> fIdle{0}; // threads without a folder, written under the lock
    std::atomic<int32> fFoldersWithHits{0};
    std::atomic<int64> fVisited{0};

    Mutex fMutex;
    Condition fFoldersCame;
    Condition fHitsCame;
    std::vector<Folder> fFolders GUARDED_BY(fMutex); // for whoever has none
    std::deque<Hits> fHits GUARDED_BY(fMutex);
    int32 fThreads GUARDED_BY(fMutex) = 0;
    bool fIsDone GUARDED_BY(fMutex) = false; // every folder was read
};

} // namespace kits
