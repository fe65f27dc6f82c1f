#pragma once

#include "kernel/Mutex.h"

#include <atomic>
#include <forward_list>

namespace kits {

/// Where a layer above registers its calls, and this one finds them. Thread: any.
template<typename Hooks>
class HookSlot
{
public:
    void Set(const Hooks& hooks)
    {
        const MutexLock lock(fLock);
        fCurrent.store(&fAll.emplace_front(hooks), std::memory_order_release);
    }

    const Hooks& Get() const { return *fCurrent.load(std::memory_order_acquire); }

private:
    Mutex fLock;
    // What was replaced is kept: another thread may still read it.
    std::forward_list<Hooks> fAll GUARDED_BY(fLock) = std::forward_list<Hooks>(1);
    std::atomic<const Hooks*> fCurrent{&fAll.front()};
};

} // namespace kits
