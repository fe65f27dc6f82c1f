#pragma once

#include <Message.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include "kernel/Mutex.h"

#include <memory>
#include <set>
#include <unordered_map>
#include <utility>

namespace kits {

/// The one thread behind all message runners: waits for the earliest that is due and sends.
///
/// It is started for the first runner, sleeps while there is none, and holds no lock while it
/// sends. Nobody waits for it when the program ends. Thread: any thread.
class RunnerThread
{
public:
    /// What is sent, how often, and where to.
    struct Order
    {
        BMessenger target;
        BMessenger replyTo;
        std::shared_ptr<BMessage> message; // shared with the thread while it sends
        bigtime_t interval = 0;
        int32 count = 0; // still to be sent; negative: without end
        bigtime_t due = 0;
    };

    static RunnerThread& Get();

    /// Begins to send; returns the order's number, which is positive.
    /// Errors: B_NO_MORE_THREADS.
    int32 Add(Order order);
    /// The same calls as the runner's. Errors: B_BAD_VALUE when there is no such order any more.
    status_t SetInterval(int32 number, bigtime_t interval);
    status_t SetCount(int32 number, int32 count);
    status_t GetInfo(int32 number, bigtime_t* interval, int32* count);
    void Remove(int32 number);

private:
    RunnerThread() = default;

    [[nodiscard]] status_t Start() REQUIRES(fMutex);
    void Run();
    std::pair<int32, Order> NextDue();
    void Erase(int32 number) REQUIRES(fMutex);

    Mutex fMutex;
    Condition fChange; // the earliest order may be another one
    std::unordered_map<int32, Order> fOrders GUARDED_BY(fMutex);
    std::set<std::pair<bigtime_t, int32>> fDue GUARDED_BY(fMutex); // all of them, by time
    int32 fLastNumber GUARDED_BY(fMutex) = 0;
    bool fHasThread GUARDED_BY(fMutex) = false;
};

} // namespace kits
