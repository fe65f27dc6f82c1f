#include "panes/RowsJob.h"

#include "DetachedThread.h"
#include "MessageCodes.h"

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
class RowsJob::Work : public RowsReader::Notes
{
public:
    Work(std::shared_ptr<RowsReader> reader, const OpenOrder& order)
        : fReader(std::move(reader)), fList(order.list), fSorting(order.sorting)
    {
    }

    void Do();
    void LetGo();
    bool WaitUntil(bigtime_t time);
    Progress Look();
    status_t Status();
    ListedRows TakeRows();

    // Notes
    bool Note(int32 entries, int32 read) override;

private:
    const std::shared_ptr<RowsReader> fReader;
    const BMessenger fList;
    const RowSorting fSorting;
    bigtime_t fNextTelling = 0; // the thread's

    std::mutex fMutex; // guards all below
    std::condition_variable fEnd;
    Progress fProgress;
    status_t fStatus = B_OK;
    ListedRows fRows;
    bool fIsLetGo = false;
};

void RowsJob::Work::Do()
{
    ListedRows rows;
    const status_t status = fReader->Read(*this, &rows);
    if (!fSorting.IsListings()) {
        fSorting.Sort(rows.folders);
        fSorting.Sort(rows.files);
        rows.sorting = fSorting;
    }
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
        fList.SendMessage(kListingNews);
    } else {
        fReader->LetGo();
    }
}

bool RowsJob::Work::Note(int32 entries, int32 read)
{
    const bigtime_t now = system_time();
    {
        const std::lock_guard lock(fMutex);
        fProgress.entries = entries;
        fProgress.read = read;
        if (fIsLetGo) {
            return false;
        }
    }
    if (now >= fNextTelling) {
        fNextTelling = now + kFrame;
        fList.SendMessage(kListingNews);
    }
    return true;
}

void RowsJob::Work::LetGo()
{
    bool hasEnded = false;
    {
        const std::lock_guard lock(fMutex);
        fIsLetGo = true;
        hasEnded = fProgress.hasEnded;
    }
    if (hasEnded) {
        fReader->LetGo();
    }
}

bool RowsJob::Work::WaitUntil(bigtime_t time)
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

RowsJob::Progress RowsJob::Work::Look()
{
    const std::lock_guard lock(fMutex);
    return fProgress;
}

status_t RowsJob::Work::Status()
{
    const std::lock_guard lock(fMutex);
    return fStatus;
}

ListedRows RowsJob::Work::TakeRows()
{
    const std::lock_guard lock(fMutex);
    return std::move(fRows);
}

RowsJob::RowsJob(std::shared_ptr<RowsReader> reader, const OpenOrder& order)
    : fWork(std::make_shared<Work>(std::move(reader), order))
{
    if (!StartDetached("listing", B_NORMAL_PRIORITY, [work = fWork] { work->Do(); })) {
        fWork->Do();
    }
}

RowsJob::~RowsJob()
{
    fWork->LetGo();
}

bool RowsJob::WaitUntil(bigtime_t time)
{
    return fWork->WaitUntil(time);
}

RowsJob::Progress RowsJob::Look()
{
    return fWork->Look();
}

status_t RowsJob::Status()
{
    return fWork->Status();
}

ListedRows RowsJob::TakeRows()
{
    return fWork->TakeRows();
}

} // namespace norvane
