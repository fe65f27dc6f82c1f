#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace norvane {

class FileCopier;

/// Fills small files on two threads: the operation's, which makes them, and one of its own.
///
/// What is told to the person keeps the order in which the files were added. Thread: all calls
/// belong to the operation's.
class CopyQueue
{
public:
    CopyQueue();
    ~CopyQueue();
    CopyQueue(const CopyQueue&) = delete;
    CopyQueue& operator=(const CopyQueue&) = delete;

    /// Takes a copy whose Begin() asked for Fill(). When enough wait already, the first of them is
    /// filled here.
    void Add(std::unique_ptr<FileCopier> copier);
    /// Waits for all that were added; returns whether all of those since the last call are whole.
    bool Drain();

private:
    enum class State : uint8 {
        kWaiting,
        kBeingFilled,
        kFilled,
    };
    struct Task
    {
        std::unique_ptr<FileCopier> copier;
        State state;
    };

    Task* FirstWaiting();
    void Fill(Task* task, std::unique_lock<std::mutex>& lock);
    void EndFilled();
    void StartThread();
    static status_t ThreadEntry(void* queue);
    void Run();

    std::mutex fMutex;
    std::condition_variable fHasWork;
    std::condition_variable fHasFilled;
    std::deque<Task> fTasks;  // guarded by fMutex; only the operation's thread adds and removes
    size_t fWaiting = 0;      // guarded by fMutex: how many nobody has begun with
    bool fIsFilling = false;  // guarded by fMutex: the thread fills one
    bool fIsSleeping = false; // guarded by fMutex: the thread waits for work
    bool fIsOver = false;     // guarded by fMutex
    bool fAreWhole = true;    // of the operation's thread
    thread_id fThread = 0;    // above 0 once it was needed; an error when there was none to be had
};

} // namespace norvane
