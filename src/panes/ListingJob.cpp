#include "panes/ListingJob.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "panes/DatePattern.h"
#include "panes/FolderReader.h"
#include "panes/LinkTargets.h"

#include <Message.h>
#include <NodeMonitor.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kFrame = 1'000'000 / 60;

} // namespace

/// What the owner and the thread share.
class ListingJob::Work
{
public:
    Work(std::string folder, OpenOrder order)
        : fPath(std::move(folder)), fOrder(std::move(order)), fLinks(fOrder.list)
    {
    }

    void Do();
    void LetGo();
    bool WaitUntil(bigtime_t time);
    Progress Look();
    status_t Status();
    ListedRows TakeRows();
    WatchedFolder TakeFolder();
    bool IsTrash();

private:
    status_t Read(ListedRows* rows);
    bool Note(const FolderReader& reader);
    void EndWatch();

    const std::string fPath;
    const OpenOrder fOrder;
    LinkTargets fLinks;         // the thread's
    bigtime_t fNextTelling = 0; // the thread's

    std::mutex fMutex; // guards all below
    std::condition_variable fEnd;
    Progress fProgress;
    status_t fStatus = B_OK;
    ListedRows fRows;
    WatchedFolder fFolder;
    bool fIsTrash = false;
    bool fIsWatching = false; // and nobody took it
    bool fIsLetGo = false;
};

void ListingJob::Work::Do()
{
    ListedRows rows;
    const status_t status = Read(&rows);
    bool isWanted = false;
    {
        const std::lock_guard lock(fMutex);
        isWanted = !fIsLetGo;
        fStatus = status;
        fProgress.hasEnded = true;
        if (isWanted) {
            fRows = std::move(rows);
        }
    }
    fEnd.notify_all();
    if (isWanted) {
        fOrder.list.SendMessage(kListingNews);
    } else {
        EndWatch();
    }
}

status_t ListingJob::Work::Read(ListedRows* rows)
{
    FolderReader reader;
    status_t status = reader.Open(fPath);
    if (status != B_OK) {
        return status;
    }
    WatchedFolder folder{reader.Node(), reader.Ref(), fOrder.watcher, B_OK};
    const bool isTrash = reader.IsTrash();
    const bool isToWatch = fOrder.watcher.IsValid();
    status = isToWatch ? reader.WatchAndReadNames(B_WATCH_ENTRIES | B_WATCH_NAME, fOrder.watcher,
                                                  &folder.status)
                       : reader.ReadNames();
    {
        const std::lock_guard lock(fMutex);
        fIsWatching = isToWatch && folder.status == B_OK;
        fFolder = std::move(folder);
        fIsTrash = isTrash;
    }
    bool isWanted = status == B_OK && Note(reader);
    while (isWanted && reader.ReadMore()) {
        isWanted = Note(reader);
    }
    if (isWanted) {
        reader.TakeRows(DatePattern::For(fOrder.dateFormat), fLinks, rows->folders, rows->files);
        const std::lock_guard lock(fMutex);
        fFolder.awaitsLinks = reader.HasLeftLinksOut();
    }
    return status;
}

/// False when nobody wants the rows any more.
bool ListingJob::Work::Note(const FolderReader& reader)
{
    const bigtime_t now = system_time();
    {
        const std::lock_guard lock(fMutex);
        fProgress.entries = reader.CountEntries() + 1;
        fProgress.read = reader.CountRead();
        if (fIsLetGo) {
            return false;
        }
    }
    if (now >= fNextTelling) {
        fNextTelling = now + kFrame;
        fOrder.list.SendMessage(kListingNews);
    }
    return true;
}

void ListingJob::Work::EndWatch()
{
    WatchedFolder folder;
    {
        const std::lock_guard lock(fMutex);
        if (!std::exchange(fIsWatching, false)) {
            return;
        }
        folder = fFolder;
    }
    watch_node(&folder.node, B_STOP_WATCHING, folder.watcher);
}

void ListingJob::Work::LetGo()
{
    bool hasEnded = false;
    {
        const std::lock_guard lock(fMutex);
        fIsLetGo = true;
        hasEnded = fProgress.hasEnded;
    }
    if (hasEnded) {
        EndWatch();
    }
}

bool ListingJob::Work::WaitUntil(bigtime_t time)
{
    std::unique_lock lock(fMutex);
    const auto hasEnded = [this] {
        return fProgress.hasEnded;
    };
    if (time == B_INFINITE_TIMEOUT) {
        fEnd.wait(lock, hasEnded);
        return true;
    }
    const std::chrono::microseconds left(std::max<bigtime_t>(0, time - system_time()));
    return fEnd.wait_for(lock, left, hasEnded);
}

ListingJob::Progress ListingJob::Work::Look()
{
    const std::lock_guard lock(fMutex);
    return fProgress;
}

status_t ListingJob::Work::Status()
{
    const std::lock_guard lock(fMutex);
    return fStatus;
}

ListedRows ListingJob::Work::TakeRows()
{
    const std::lock_guard lock(fMutex);
    return std::move(fRows);
}

WatchedFolder ListingJob::Work::TakeFolder()
{
    const std::lock_guard lock(fMutex);
    fIsWatching = false;
    return fFolder;
}

bool ListingJob::Work::IsTrash()
{
    const std::lock_guard lock(fMutex);
    return fIsTrash;
}

ListingJob::ListingJob(const std::string& folder, const OpenOrder& order)
    : fWork(std::make_shared<Work>(folder, order))
{
    if (!StartDetached("listing", B_NORMAL_PRIORITY, [work = fWork] { work->Do(); })) {
        fWork->Do();
    }
}

ListingJob::~ListingJob()
{
    fWork->LetGo();
}

bool ListingJob::WaitUntil(bigtime_t time)
{
    return fWork->WaitUntil(time);
}

ListingJob::Progress ListingJob::Look()
{
    return fWork->Look();
}

status_t ListingJob::Status()
{
    return fWork->Status();
}

ListedRows ListingJob::TakeRows()
{
    return fWork->TakeRows();
}

WatchedFolder ListingJob::TakeFolder()
{
    return fWork->TakeFolder();
}

bool ListingJob::IsTrash()
{
    return fWork->IsTrash();
}

} // namespace norvane
