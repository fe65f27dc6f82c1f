#include "app/LooperLock.h"

namespace kits {

struct LooperLock::Waiter
{
    thread_id thread;
    bool isGranted = false;
    Condition turn{};
};

thread_id ThisThread()
{
    thread_local const thread_id thread = find_thread(nullptr);
    return thread;
}

bool LooperLock::Lock(bigtime_t deadline)
{
    const thread_id self = ThisThread();
    if (fHolder.load(std::memory_order_relaxed) == self) {
        fCount.fetch_add(1, std::memory_order_relaxed);
        return true;
    }
    MutexLock lock(fMutex);
    if (fHolder.load(std::memory_order_relaxed) != kNobody) {
        Waiter waiter{self};
        const auto place = fWaiters.insert(fWaiters.end(), &waiter);
        while (!waiter.isGranted) {
            if (!waiter.turn.WaitUntil(fMutex, deadline) && !waiter.isGranted) {
                fWaiters.erase(place);
                return false;
            }
        }
        // Release() has made this thread the holder and taken it off the list.
    } else {
        fHolder.store(self, std::memory_order_relaxed);
    }
    fCount.store(1, std::memory_order_relaxed);
    return true;
}

void LooperLock::Unlock()
{
    if (IsHeld() && fCount.fetch_sub(1, std::memory_order_relaxed) == 1) {
        Release();
    }
}

int32 LooperLock::UnlockAll()
{
    if (!IsHeld()) {
        return 0;
    }
    const int32 count = fCount.exchange(0, std::memory_order_relaxed);
    Release();
    return count;
}

void LooperLock::Release()
{
    MutexLock lock(fMutex);
    if (fWaiters.empty()) {
        fHolder.store(kNobody, std::memory_order_relaxed);
        return;
    }
    Waiter* next = fWaiters.front();
    fWaiters.pop_front();
    fHolder.store(next->thread, std::memory_order_relaxed);
    next->isGranted = true;
    next->turn
        .Signal(); // locked: the waiter lies on the stack of its thread, which may go on at once
}

bool LooperLock::IsHeld() const
{
    return fHolder.load(std::memory_order_relaxed) == ThisThread();
}

thread_id LooperLock::Holder() const
{
    const thread_id holder = fHolder.load(std::memory_order_relaxed);
    return holder == kNobody ? B_ERROR : holder;
}

int32 LooperLock::CountLocks() const
{
    return fCount.load(std::memory_order_relaxed);
}

int32 LooperLock::CountRequests() const
{
    MutexLock lock(fMutex);
    return CountLocks() + static_cast<int32>(fWaiters.size());
}

} // namespace kits
