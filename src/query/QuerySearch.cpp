#include "query/QuerySearch.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "query/ContentSearch.h"

#include <Message.h>
#include <OS.h>
#include <Path.h>
#include <Query.h>
#include <Volume.h>
#include <VolumeRoster.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>

namespace norvane {

namespace {

constexpr size_t kMostReaders = 8;

size_t CountReaders()
{
    return std::min<size_t>(std::max(1u, std::thread::hardware_concurrency()), kMostReaders);
}

using Reading = std::function<void()>;

status_t RunReading(void* reading)
{
    (*static_cast<const Reading*>(reading))();
    return B_OK;
}

} // namespace

/// What the owner and the threads share.
class QuerySearch::Work
{
public:
    explicit Work(Order order) : fOrder(std::move(order)) {}

    void Do();
    void Tell();
    void Cancel();

    Counts Look() const;
    std::string TakeUnreadable();
    std::vector<entry_ref> TakeHits();

private:
    void Search(const BVolume& volume);
    void TakeAll(BQuery& query);
    void ReadAll(BQuery& query);
    bool GetNext(BQuery& query, entry_ref* hit);

    const Order fOrder;
    std::atomic<bool> fIsCancelled{false};
    std::atomic<int32> fExamined{0};
    std::atomic<int32> fFound{0};
    std::atomic<int32> fUnreadable{0};

    std::mutex fFetching;     // held while the next hit is waited for
    std::mutex fMutex;        // guards all below
    BQuery* fQuery = nullptr; // the one that runs
    std::vector<entry_ref> fHits;
    std::string fUnreadablePath; // of the first one
};

void QuerySearch::Work::Do()
{
    BVolumeRoster roster;
    BVolume volume;
    while (!fIsCancelled && roster.GetNextVolume(&volume) == B_OK) {
        const bool isMeant = fOrder.volume == 0 || fOrder.volume == volume.Device();
        if (isMeant && volume.KnowsQuery()) {
            Search(volume);
        }
    }
    if (!fIsCancelled) {
        Tell();
    }
}

void QuerySearch::Work::Tell()
{
    BMessage ended(kSearchEnded);
    ended.AddInt32("search", fOrder.number);
    fOrder.window.SendMessage(&ended);
}

void QuerySearch::Work::Search(const BVolume& volume)
{
    BQuery query;
    if (query.SetVolume(&volume) != B_OK || query.SetPredicate(fOrder.predicate.c_str()) != B_OK ||
        query.Fetch() != B_OK) {
        return;
    }
    {
        const std::lock_guard lock(fMutex);
        fQuery = &query;
    }
    if (fIsCancelled) { // before it could be seen
        query.Stop();
    }
    if (fOrder.text.has_value()) {
        ReadAll(query);
    } else {
        TakeAll(query);
    }
    const std::lock_guard lock(fMutex);
    fQuery = nullptr;
}

void QuerySearch::Work::TakeAll(BQuery& query)
{
    std::vector<entry_ref> hits;
    entry_ref hit;
    while (query.GetNextRef(&hit) == B_OK) {
        hits.push_back(std::move(hit));
        fFound.fetch_add(1, std::memory_order_relaxed);
    }
    const std::lock_guard lock(fMutex);
    fHits.insert(fHits.end(), std::make_move_iterator(hits.begin()),
                 std::make_move_iterator(hits.end()));
}

bool QuerySearch::Work::GetNext(BQuery& query, entry_ref* hit)
{
    const std::lock_guard lock(fFetching);
    return !fIsCancelled && query.GetNextRef(hit) == B_OK;
}

/// Has the files read by several threads, this one among them, and waits for all.
void QuerySearch::Work::ReadAll(BQuery& query)
{
    Reading read = [this, &query] {
        ContentSearch search(*fOrder.text, fIsCancelled);
        entry_ref hit;
        while (GetNext(query, &hit)) {
            const ContentSearch::Result result = search.Look(hit);
            fExamined.fetch_add(1, std::memory_order_relaxed);
            if (result == ContentSearch::Result::kNotFound) {
                continue;
            }
            const std::lock_guard lock(fMutex);
            if (result == ContentSearch::Result::kFound) {
                fHits.push_back(hit);
                ++fFound;
            } else if (fUnreadable++ == 0) {
                BPath path(&hit);
                fUnreadablePath = path.InitCheck() == B_OK ? path.Path() : hit.name;
            }
        }
    };
    std::vector<thread_id> readers;
    for (size_t reader = 1; reader < CountReaders(); ++reader) {
        const thread_id thread =
            spawn_thread(&RunReading, "query reader", B_NORMAL_PRIORITY, &read);
        if (thread >= B_OK && resume_thread(thread) == B_OK) {
            readers.push_back(thread);
        }
    }
    read();
    for (const thread_id reader : readers) {
        status_t result = B_OK;
        wait_for_thread(reader, &result);
    }
}

void QuerySearch::Work::Cancel()
{
    fIsCancelled = true;
    const std::lock_guard lock(fMutex);
    if (fQuery != nullptr) {
        fQuery->Stop();
    }
}

QuerySearch::Counts QuerySearch::Work::Look() const
{
    return {fExamined, fFound, fUnreadable};
}

std::string QuerySearch::Work::TakeUnreadable()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fUnreadablePath, {});
}

std::vector<entry_ref> QuerySearch::Work::TakeHits()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fHits, {});
}

QuerySearch::QuerySearch(Order order) : fWork(std::make_shared<Work>(std::move(order)))
{
    if (!StartDetached("query", B_NORMAL_PRIORITY, [work = fWork] { work->Do(); })) {
        fWork->Tell();
    }
}

QuerySearch::~QuerySearch()
{
    fWork->Cancel();
}

QuerySearch::Counts QuerySearch::Look() const
{
    return fWork->Look();
}

std::string QuerySearch::TakeUnreadable()
{
    return fWork->TakeUnreadable();
}

std::vector<entry_ref> QuerySearch::TakeHits()
{
    return fWork->TakeHits();
}

} // namespace norvane
