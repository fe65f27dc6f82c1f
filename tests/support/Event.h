#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/// Something that happens on another thread, as often as it is told.
class Event
{
public:
    void Happen()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        ++fCount;
        fChange.notify_all();
    }

    /// Waits until it has happened `count` times in all; false when that takes longer than ten
    /// seconds.
    bool Await(int count = 1)
    {
        std::unique_lock<std::mutex> lock(fMutex);
        return fChange.wait_for(lock, std::chrono::seconds(10), [&] { return fCount >= count; });
    }

    int Count()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        return fCount;
    }

private:
    std::mutex fMutex;
    std::condition_variable fChange;
    int fCount = 0;
};
