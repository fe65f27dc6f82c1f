#include "query/QuerySearch.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "query/VolumeSearch.h"

#include <Message.h>
#include <OS.h>
#include <StorageDefs.h>
#include <Volume.h>
#include <VolumeRoster.h>

#include <atomic>
#include <iterator>
#include <mutex>
#include <utility>

namespace norvane {

/// What the owner and the threads share.
class QuerySearch::Work
{
public:
    explicit Work(Order order) : fOrder(std::move(order)) {}

    void Do();
    void Tell();
    void Cancel();

    SearchCounts Look() const;
    std::string TakeUnreadable();
    std::vector<std::string> TakeSilent();
    std::vector<entry_ref> TakeHits();

private:
    void Search(const BVolume& volume);
    void Collect(VolumeSearch& search);

    const Order fOrder;
    std::atomic<bool> fIsCancelled{false};

    mutable std::mutex fMutex;             // guards all below
    std::shared_ptr<VolumeSearch> fSearch; // that runs
    SearchCounts fCounts;                  // of those that ran before
    std::vector<entry_ref> fHits;
    std::string fUnreadable; // the path of the first one
    std::vector<std::string> fSilent;
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
    const auto search = std::make_shared<VolumeSearch>(fOrder.predicate, fOrder.text, volume);
    {
        const std::lock_guard lock(fMutex);
        fSearch = search;
    }
    if (fIsCancelled) { // before it could be seen
        return;
    }
    if (!StartDetached("query volume", B_NORMAL_PRIORITY, [search] { search->Do(); })) {
        search->Do();
    }
    const bool hasAnswered = search->WaitForEnd(fOrder.patience);
    if (!hasAnswered) {
        search->Cancel();
        char name[B_FILE_NAME_LENGTH] = "";
        volume.GetName(name);
        const std::lock_guard lock(fMutex);
        fSilent.emplace_back(name);
    }
    Collect(*search);
}

void QuerySearch::Work::Collect(VolumeSearch& search)
{
    const std::lock_guard lock(fMutex);
    fSearch = nullptr;
    std::vector<entry_ref> hits = search.TakeHits();
    fCounts += search.Look();
    fHits.insert(fHits.end(), std::make_move_iterator(hits.begin()),
                 std::make_move_iterator(hits.end()));
    const std::string unreadable = search.TakeUnreadable();
    if (fUnreadable.empty()) {
        fUnreadable = unreadable;
    }
}

void QuerySearch::Work::Cancel()
{
    fIsCancelled = true;
    const std::lock_guard lock(fMutex);
    if (fSearch != nullptr) {
        fSearch->Cancel();
    }
}

SearchCounts QuerySearch::Work::Look() const
{
    const std::lock_guard lock(fMutex);
    SearchCounts counts = fCounts;
    if (fSearch != nullptr) {
        counts += fSearch->Look();
    }
    return counts;
}

std::string QuerySearch::Work::TakeUnreadable()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fUnreadable, {});
}

std::vector<std::string> QuerySearch::Work::TakeSilent()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fSilent, {});
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

SearchCounts QuerySearch::Look() const
{
    return fWork->Look();
}

std::string QuerySearch::TakeUnreadable()
{
    return fWork->TakeUnreadable();
}

std::vector<std::string> QuerySearch::TakeSilent()
{
    return fWork->TakeSilent();
}

std::vector<entry_ref> QuerySearch::TakeHits()
{
    return fWork->TakeHits();
}

} // namespace norvane
