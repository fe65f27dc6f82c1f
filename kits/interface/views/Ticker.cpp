#include "Ticker.h"

#include <Message.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace kits {

namespace {

using Clock = std::chrono::steady_clock;

// The thread that waits for the earliest tick; it starts with the first ticker.
class TickerThread
{
public:
    static TickerThread& Get()
    {
        static TickerThread thread;
        return thread;
    }

    void Order(int32 id, const BMessenger& target, bigtime_t delay)
    {
        std::lock_guard<std::mutex> lock(fLock);
        if (!fThread.joinable()) {
            fThread = std::thread([this] { Run(); });
        }
        fOrders.emplace(Clock::now() + std::chrono::microseconds(delay), Due{id, target});
        fChange.notify_one();
    }

    void Cancel(int32 id)
    {
        std::lock_guard<std::mutex> lock(fLock);
        std::erase_if(fOrders, [id](const auto& entry) { return entry.second.id == id; });
    }

private:
    struct Due
    {
        int32 id;
        BMessenger target;
    };

    ~TickerThread()
    {
        {
            std::lock_guard<std::mutex> lock(fLock);
            fIsEnding = true;
            fChange.notify_one();
        }
        if (fThread.joinable()) {
            fThread.join();
        }
    }

    void Run()
    {
        std::unique_lock<std::mutex> lock(fLock);
        while (!fIsEnding) {
            if (fOrders.empty()) {
                fChange.wait(lock);
                continue;
            }
            const auto first = fOrders.begin();
            if (Clock::now() < first->first) {
                const Clock::time_point due = first->first;
                fChange.wait_until(lock, due);
                continue;
            }
            const Due order = first->second;
            fOrders.erase(first);
            // Sending takes locks of its own.
            lock.unlock();
            BMessage tick(kTick);
            tick.AddInt32("ticker", order.id);
            order.target.SendMessage(&tick);
            lock.lock();
        }
    }

    std::mutex fLock; // guards everything below
    std::condition_variable fChange;
    std::multimap<Clock::time_point, Due> fOrders;
    std::thread fThread;
    bool fIsEnding = false;
};

int32 NewId()
{
    static std::atomic<int32> last{0};
    return ++last;
}

} // namespace

Ticker::Ticker(const BMessenger& target, bigtime_t delay, bigtime_t interval)
    : fTarget(target), fInterval(interval), fId(NewId())
{
    TickerThread::Get().Order(fId, fTarget, delay);
}

Ticker::~Ticker()
{
    TickerThread::Get().Cancel(fId);
}

void Ticker::NextTick()
{
    TickerThread::Get().Order(fId, fTarget, fInterval);
}

} // namespace kits
