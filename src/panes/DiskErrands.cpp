#include "panes/DiskErrands.h"

#include "DetachedThread.h"

#include <OS.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace norvane {

namespace {

// One that has taken so long may take for ever.
constexpr bigtime_t kPatience = 100'000;
constexpr size_t kMostThreads = 8;

} // namespace

class DiskErrands::Queue : public std::enable_shared_from_this<Queue>
{
public:
    void Do(std::function<void()> errand);

private:
    struct Helper
    {
        bigtime_t since = 0; // when it began its errand
    };

    bool NeedsHelper() const;
    bool StartHelper();
    void Help();

    std::mutex fMutex; // guards all below
    std::deque<std::function<void()>> fErrands;
    std::vector<const Helper*> fHelpers; // those that run
    size_t fStarting = 0;                // those that will
};

void DiskErrands::Queue::Do(std::function<void()> errand)
{
    {
        const std::lock_guard lock(fMutex);
        fErrands.push_back(std::move(errand));
        if (!NeedsHelper() || StartHelper() || !fHelpers.empty()) {
            return;
        }
        fStarting++;
    }
    Help();
}

bool DiskErrands::Queue::NeedsHelper() const
{
    // Two, so that one goes on when the other is held.
    const bigtime_t now = system_time();
    const auto answering =
        std::count_if(fHelpers.begin(), fHelpers.end(),
                      [now](const Helper* helper) { return now - helper->since < kPatience; });
    return static_cast<size_t>(answering) + fStarting < 2 &&
           fHelpers.size() + fStarting < kMostThreads;
}

/// With fMutex held, which the new thread waits for.
bool DiskErrands::Queue::StartHelper()
{
    if (!StartDetached("disk errands", B_LOW_PRIORITY,
                       [queue = shared_from_this()] { queue->Help(); })) {
        return false;
    }
    fStarting++;
    return true;
}

void DiskErrands::Queue::Help()
{
    Helper me;
    std::unique_lock lock(fMutex);
    fStarting--;
    fHelpers.push_back(&me);
    while (!fErrands.empty()) {
        const std::function<void()> errand = std::move(fErrands.front());
        fErrands.pop_front();
        me.since = system_time();
        lock.unlock();
        errand();
        lock.lock();
    }
    std::erase(fHelpers, &me);
}

DiskErrands& DiskErrands::Get()
{
    // Never destroyed: an errand may outlive everything.
    static auto* errands = new DiskErrands;
    return *errands;
}

DiskErrands::DiskErrands() : fQueue(std::make_shared<Queue>()) {}

void DiskErrands::Do(std::function<void()> errand)
{
    fQueue->Do(std::move(errand));
}

} // namespace norvane
