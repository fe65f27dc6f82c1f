#include "app/RunnerThread.h"

#include <OS.h>

#include "app/Deadline.h"
#include "kernel/WorkerThread.h"

namespace kits {

RunnerThread& RunnerThread::Get()
{
    // Never destroyed: its thread runs to the end of the program.
    static RunnerThread& thread = *new RunnerThread;
    return thread;
}

status_t RunnerThread::Start()
{
    if (fHasThread) {
        return B_OK;
    }
    const status_t status = StartDetached("message runners", [this] { Run(); });
    fHasThread = status == B_OK;
    return status;
}

int32 RunnerThread::Add(Order order)
{
    order.due = DeadlineAfter(order.interval);
    MutexLock lock(fMutex);
    const status_t status = Start();
    if (status != B_OK) {
        return status;
    }
    // Numbers are not used again before all have been.
    do {
        fLastNumber = fLastNumber == INT32_MAX ? 1 : fLastNumber + 1;
    } while (fOrders.contains(fLastNumber));
    const bool isEarliest = fDue.empty() || order.due < fDue.begin()->first;
    fDue.emplace(order.due, fLastNumber);
    fOrders.emplace(fLastNumber, std::move(order));
    if (isEarliest) {
        fChange.Signal();
    }
    return fLastNumber;
}

status_t RunnerThread::SetInterval(int32 number, bigtime_t interval)
{
    MutexLock lock(fMutex);
    const auto found = fOrders.find(number);
    if (found == fOrders.end()) {
        return B_BAD_VALUE;
    }
    Order& order = found->second;
    fDue.erase({order.due, number});
    order.interval = interval;
    order.due = DeadlineAfter(interval);
    fDue.emplace(order.due, number);
    fChange.Signal();
    return B_OK;
}

status_t RunnerThread::SetCount(int32 number, int32 count)
{
    MutexLock lock(fMutex);
    const auto found = fOrders.find(number);
    if (found == fOrders.end()) {
        return B_BAD_VALUE;
    }
    found->second.count = count;
    if (count == 0) {
        Erase(number);
    }
    return B_OK;
}

status_t RunnerThread::GetInfo(int32 number, bigtime_t* interval, int32* count)
{
    MutexLock lock(fMutex);
    const auto found = fOrders.find(number);
    if (found == fOrders.end()) {
        return B_BAD_VALUE;
    }
    if (interval != nullptr) {
        *interval = found->second.interval;
    }
    if (count != nullptr) {
        *count = found->second.count;
    }
    return B_OK;
}

void RunnerThread::Remove(int32 number)
{
    MutexLock lock(fMutex);
    Erase(number);
}

// The thread is not woken: it finds out when the order would have been due.
void RunnerThread::Erase(int32 number)
{
    const auto found = fOrders.find(number);
    if (found != fOrders.end()) {
        fDue.erase({found->second.due, number});
        fOrders.erase(found);
    }
}

void RunnerThread::Run()
{
    for (;;) {
        const auto [number, order] = NextDue();
        if (order.target.SendMessage(order.message.get(), order.replyTo) != B_OK) {
            Remove(number); // the target is gone
        }
    }
}

/// Waits for the order that is due first and notes that it is being carried out.
std::pair<int32, RunnerThread::Order> RunnerThread::NextDue()
{
    MutexLock lock(fMutex);
    for (;;) {
        const bigtime_t now = system_time();
        const bigtime_t due = fDue.empty() ? B_INFINITE_TIMEOUT : fDue.begin()->first;
        if (due > now) {
            fChange.WaitUntil(fMutex, due);
            continue;
        }
        const int32 number = fDue.begin()->second;
        Order& order = fOrders.at(number);
        fDue.erase(fDue.begin());
        const Order taken = order;
        if (order.count > 0 && --order.count == 0) {
            fOrders.erase(number);
        } else {
            // What was missed is left out.
            order.due += order.interval;
            if (order.due <= now) {
                order.due = DeadlineAfter(order.interval);
            }
            fDue.emplace(order.due, number);
        }
        return {number, taken};
    }
}

} // namespace kits
