#include "QueryWalk.h"

#include "FolderRecords.h"
#include "FolderTable.h"
#include "OrNoMemory.h"
#include "ReadRecord.h"
#include "kernel/WorkerThread.h"

#include <OS.h>

#include <algorithm>
#include <dirent.h>
#include <iterator>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace kits {

namespace {

constexpr int32 kMostThreads = 8;
// Paths that are longer start at the folder itself; well below what the system takes in one call.
constexpr size_t kLongPath = 2048;
constexpr bigtime_t kDeliverTime = 10'000;
constexpr int32 kKeptOpen = 256;
constexpr int64 kVisitsNoted = 64; // together

} // namespace

/// One thread's part of a walk.
class QueryWalk::Worker
{
public:
    explicit Worker(QueryWalk& walk) : fWalk(walk) {}

    void Run()
    {
        while (!fWalk.IsCancelled()) {
            if (fFolders.empty()) {
                fWalk.Deliver(&fFound);
                if (!fWalk.TakeFolders(&fFolders)) {
                    return;
                }
            }
            const Folder folder = std::move(fFolders.back());
            fFolders.pop_back();
            Read(folder);
            AfterFolder();
        }
    }

private:
    void Read(const Folder& folder);
    void Visit(int descriptor, const FolderRecord& listed, const char* name);
    void NoteVisits();
    void AfterFolder();

    QueryWalk& fWalk;
    FolderRecords fRecords;
    std::vector<Folder> fFolders; // to be read, the last one first
    std::deque<Hits> fFound;
    bigtime_t fDelivered = 0;
    int64 fVisited = 0; // and not noted yet
    // Of the folder that is being read.
    std::vector<std::string> fNames;      // hits
    std::vector<std::string> fSubfolders; // their names
};

void QueryWalk::Worker::Read(const Folder& folder)
{
    UniqueFd opened(sys::OpenUnmountedFolderAt(folder.base->folder.Get(), folder.path.c_str()));
    if (!opened.IsOpen()) {
        return;
    }
    fNames.clear();
    fSubfolders.clear();
    // What was listed before an error counts.
    [[maybe_unused]] const status_t status = fRecords.ForEach(
        opened.Get(), [this] { return fWalk.IsCancelled(); },
        [&](const FolderRecord& listed, const char* name) { Visit(opened.Get(), listed, name); });
    if (!fNames.empty()) {
        fFound.push_back({fWalk.Know(opened.Get(), folder), std::exchange(fNames, {})});
    }
    if (fSubfolders.empty()) {
        return;
    }
    std::shared_ptr<const Base> base = folder.base;
    std::string path = folder.path == "." ? "" : folder.path + "/";
    if (path.size() > kLongPath) {
        base = std::make_shared<const Base>(std::move(opened), std::string());
        path.clear();
    }
    for (const std::string& name : fSubfolders) {
        fFolders.push_back({base, path + name});
    }
}

void QueryWalk::Worker::Visit(int descriptor, const FolderRecord& listed, const char* name)
{
    if (++fVisited == kVisitsNoted) {
        NoteVisits();
    }
    BEntryRecord record;
    QueryPredicate::Entry entry{name, listed.kind == DT_DIR};
    const auto look = [&] {
        record = ReadRecord(descriptor, name);
        entry.record = &record;
    };
    if (listed.kind == DT_UNKNOWN) { // some file systems do not list kinds
        look();
        entry.isFolder = S_ISDIR(record.mode);
    }
    if (entry.isFolder) {
        fSubfolders.emplace_back(name);
    }
    QueryPredicate::Answer answer = fWalk.fPredicate.Match(entry);
    if (answer == QueryPredicate::Answer::kUnknown) {
        look();
        answer = fWalk.fPredicate.Match(entry);
    }
    if (answer == QueryPredicate::Answer::kYes) {
        fNames.emplace_back(name);
    }
}

void QueryWalk::Worker::NoteVisits()
{
    fWalk.fVisited.fetch_add(std::exchange(fVisited, 0), std::memory_order_relaxed);
}

void QueryWalk::Worker::AfterFolder()
{
    NoteVisits();
    if (fFolders.size() > 1 && fWalk.fIdle.load(std::memory_order_relaxed) > 0) {
        fWalk.ShareFolders(&fFolders);
    }
    if (fFound.empty()) {
        return;
    }
    const bigtime_t now = system_time();
    if (now - fDelivered >= kDeliverTime) {
        fDelivered = now;
        fWalk.Deliver(&fFound);
    }
}

std::shared_ptr<QueryWalk> QueryWalk::Start(UniqueFd root, std::string path,
                                            QueryPredicate predicate, status_t* status)
{
    auto walk = std::make_shared<QueryWalk>(std::move(root), std::move(path), std::move(predicate));
    const int32 cores = static_cast<int32>(std::thread::hardware_concurrency());
    const int32 wanted = std::clamp<int32>(cores, 1, kMostThreads);
    {
        MutexLock lock(walk->fMutex);
        walk->fThreads = wanted; // before the first of them may look
    }
    int32 started = 0;
    for (int32 thread = 0; thread < wanted; ++thread) {
        *status = StartDetached("query walk", [walk] {
            // Without memory it ends early, and what it had not read is missing.
            [[maybe_unused]] const status_t done = OrNoMemory([&walk] {
                Worker(*walk).Run();
                return B_OK;
            });
            walk->ThreadEnds();
        });
        if (*status != B_OK) {
            walk->ThreadEnds();
            continue;
        }
        ++started;
    }
    if (started == 0) {
        return nullptr;
    }
    *status = B_OK;
    return walk;
}

QueryWalk::QueryWalk(UniqueFd root, std::string path, QueryPredicate predicate)
    : fPredicate(std::move(predicate))
{
    MutexLock lock(fMutex);
    fFolders.push_back({std::make_shared<const Base>(std::move(root), std::move(path)), "."});
}

/// The first ones stay open, so that their hits are found wherever they are moved to. Of thousands
/// most would be closed again at once.
FolderHold QueryWalk::Know(int descriptor, const Folder& folder)
{
    const std::string& start = folder.base->path;
    if (start.empty() || fFoldersWithHits.fetch_add(1, std::memory_order_relaxed) < kKeptOpen) {
        return FolderTable::Get().Know(descriptor);
    }
    const bool isRoot = start == "/";
    return FolderTable::Get().KnowAt(descriptor, (isRoot ? "" : start) + "/" + folder.path);
}

bool QueryWalk::GetNext(Hits* hits)
{
    MutexLock lock(fMutex);
    while (fHits.empty() && fThreads > 0 && !IsCancelled()) {
        fHitsCame.Wait(fMutex);
    }
    if (fHits.empty() || IsCancelled()) {
        return false;
    }
    *hits = std::move(fHits.front());
    fHits.pop_front();
    return true;
}

void QueryWalk::Cancel()
{
    {
        MutexLock lock(fMutex);
        fIsCancelled.store(true, std::memory_order_relaxed);
    }
    fFoldersCame.Broadcast();
    fHitsCame.Broadcast();
}

bool QueryWalk::TakeFolders(std::vector<Folder>* folders)
{
    MutexLock lock(fMutex);
    fIdle.fetch_add(1, std::memory_order_relaxed);
    while (fFolders.empty() && !fIsDone && !IsCancelled()) {
        if (fIdle.load(std::memory_order_relaxed) == fThreads) {
            fIsDone = true;
            fFoldersCame.Broadcast();
            break;
        }
        fFoldersCame.Wait(fMutex);
    }
    fIdle.fetch_sub(1, std::memory_order_relaxed);
    if (fFolders.empty() || IsCancelled()) {
        return false;
    }
    folders->push_back(std::move(fFolders.back()));
    fFolders.pop_back();
    return true;
}

/// Gives half of them away, those that lie nearest to the root.
void QueryWalk::ShareFolders(std::vector<Folder>* folders)
{
    const auto half = folders->begin() + static_cast<ptrdiff_t>(folders->size() / 2);
    {
        MutexLock lock(fMutex);
        fFolders.insert(fFolders.end(), std::make_move_iterator(folders->begin()),
                        std::make_move_iterator(half));
    }
    folders->erase(folders->begin(), half);
    fFoldersCame.Broadcast();
}

void QueryWalk::Deliver(std::deque<Hits>* found)
{
    if (found->empty()) {
        return;
    }
    {
        MutexLock lock(fMutex);
        std::move(found->begin(), found->end(), std::back_inserter(fHits));
    }
    found->clear();
    fHitsCame.Signal();
}

void QueryWalk::ThreadEnds()
{
    {
        MutexLock lock(fMutex);
        --fThreads;
    }
    fFoldersCame.Broadcast(); // the idle ones may be all that are left
    fHitsCame.Broadcast();
}

} // namespace kits
