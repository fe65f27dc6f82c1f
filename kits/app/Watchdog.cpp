#include "app/Watchdog.h"

#ifdef KITS_GUARDS

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/Stacks.h"
#include "kernel/Mutex.h"
#include "kernel/WorkerThread.h"

#include <Message.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace kits {

class Watchdog::Watch
{
public:
    explicit Watch(bigtime_t limit) : fLimit(limit)
    {
        // Without a thread nobody watches: a program that runs short of them has enough to tell.
        [[maybe_unused]] const status_t started = fThread.Start("watchdog", [this] { Run(); });
    }

    ~Watch()
    {
        {
            MutexLock lock(fMutex);
            fEnds = true;
        }
        fEnd.Signal();
        fThread.Join();
    }

private:
    struct Silence
    {
        int64 takenCount;
        bigtime_t since;
        bool isReported;
    };

    void Run()
    {
        while (!WaitForEnd(system_time() + fLimit / 8)) {
            for (const std::shared_ptr<LooperCore>& core : LooperRegistry::AllLoopers()) {
                LookAt(*core);
            }
        }
    }

    bool WaitForEnd(bigtime_t time)
    {
        MutexLock lock(fMutex);
        while (!fEnds && fEnd.WaitUntil(fMutex, time)) {
        }
        return fEnds;
    }

    void LookAt(LooperCore& core)
    {
        if (!core.IsWindow() || !core.HasRun() || core.IsAtLongWork() || core.Queue().IsEmpty()) {
            fSilences.erase(core.Token());
            return;
        }
        const Silence now{core.TakenCount(), system_time(), false};
        Silence& silence = fSilences.emplace(core.Token(), now).first->second;
        if (silence.takenCount != now.takenCount) {
            silence = now;
        } else if (now.since - silence.since >= fLimit && !silence.isReported) {
            silence.isReported = true;
            Report(core);
        }
    }

    void Report(const LooperCore& core)
    {
        std::fprintf(stderr,
                     "Thread %d takes no messages of its window since %.1f s; all stacks:\n",
                     static_cast<int>(core.Thread()), static_cast<double>(fLimit) / 1e6);
        PrintAllStacks();
        const char* wish = std::getenv("KITS_WATCHDOG");
        if (wish != nullptr && std::strcmp(wish, "abort") == 0) {
            std::abort();
        }
    }

    const bigtime_t fLimit;
    Mutex fMutex;
    Condition fEnd;
    bool fEnds GUARDED_BY(fMutex) = false;
    std::unordered_map<int32, Silence> fSilences; // by looper; the watching thread only
    WorkerThread fThread;
};

Watchdog::Watchdog(bigtime_t limit) : fWatch(std::make_unique<Watch>(limit)) {}

Watchdog::~Watchdog() = default;

} // namespace kits

#endif
