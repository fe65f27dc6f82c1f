#include "query/VolumeSearch.h"

#include "HelperThreads.h"
#include "query/ContentSearch.h"

#include <Path.h>
#include <Query.h>

#include <chrono>
#include <limits>
#include <utility>

namespace norvane {

VolumeSearch::VolumeSearch(std::string predicate, std::optional<std::string> text,
                           const BVolume& volume)
    : fPredicate(std::move(predicate)), fText(std::move(text)), fVolume(volume)
{
}

void VolumeSearch::Do()
{
    Search();
    {
        const std::lock_guard lock(fMutex);
        fHasEnded = true;
    }
    fEnd.notify_all();
}

void VolumeSearch::Search()
{
    BQuery query;
    if (query.SetVolume(&fVolume) != B_OK || query.SetPredicate(fPredicate.c_str()) != B_OK ||
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
    if (fText.has_value()) {
        ReadAll(query);
    } else {
        TakeAll(query);
    }
    const std::lock_guard lock(fMutex);
    fQuery = nullptr;
}

void VolumeSearch::TakeAll(BQuery& query)
{
    entry_ref hit;
    while (query.GetNextRef(&hit) == B_OK) {
        const std::lock_guard lock(fMutex); // a volume that falls silent has those found before
        fHits.push_back(std::move(hit));
        ++fFound;
    }
}

/// Has the files read by several threads, this one among them, and waits for all.
void VolumeSearch::ReadAll(BQuery& query)
{
    constexpr size_t kManyFiles = std::numeric_limits<size_t>::max();
    const HelperThreads helpers("query reader", HelperThreads::CountFor(kManyFiles),
                                [this, &query] {
                                    Read(query);
                                    return false;
                                });
    Read(query);
}

void VolumeSearch::Read(BQuery& query)
{
    ContentSearch search(*fText, fIsCancelled, fPieces);
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
}

bool VolumeSearch::GetNext(BQuery& query, entry_ref* hit)
{
    const std::lock_guard lock(fFetching);
    return !fIsCancelled && query.GetNextRef(hit) == B_OK;
}

/// Seconds are counted in which nothing happened, not those that passed: a program that was
/// stopped meanwhile had no time to get an answer.
bool VolumeSearch::WaitForEnd(int32 patience)
{
    constexpr std::chrono::seconds kSecond(1);
    std::unique_lock lock(fMutex);
    int64 steps = -1;
    int32 silent = 0;
    while (!fHasEnded && !fIsCancelled && silent < patience) {
        fEnd.wait_for(lock, kSecond, [this] { return fHasEnded || fIsCancelled; });
        const int64 visited = fQuery != nullptr ? fQuery->CountVisited() : 0;
        const int64 now = visited + fPieces + fExamined + fFound;
        silent = now == steps ? silent + 1 : 0;
        steps = now;
    }
    return fHasEnded || fIsCancelled;
}

void VolumeSearch::Cancel()
{
    const std::lock_guard lock(fMutex);
    fIsCancelled = true;
    if (fQuery != nullptr) {
        fQuery->Stop();
    }
    fEnd.notify_all();
}

SearchCounts VolumeSearch::Look() const
{
    return {fExamined, fFound, fUnreadable};
}

std::vector<entry_ref> VolumeSearch::TakeHits()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fHits, {});
}

std::string VolumeSearch::TakeUnreadable()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fUnreadablePath, {});
}

} // namespace norvane
