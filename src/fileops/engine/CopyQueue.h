#pragma once

#include <Condition.h>
#include <Locker.h>
#include <OS.h>
#include <SupportDefs.h>

#include <deque>
#include <memory>

namespace norvane {

class FileCopier;
struct ItemCopy;

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
    /// `item` takes over how it ended, at the latest with the next Drain(). Ownership: `item` is
    /// borrowed until then.
    void Add(std::unique_ptr<FileCopier> copier, ItemCopy* item);
    /// Waits for all that were added.
    void Drain();

private:
    enum class State : uint8 {
        kWaiting,
        kBeingFilled,
        kFilled,
    };
    struct Task
    {
        std::unique_ptr<FileCopier> copier;
        ItemCopy* item;
        State state;
    };

    Task* FirstWaiting() REQUIRES(fLocker);
    // Gives the lock back meanwhile.
    void Fill(Task* task) REQUIRES(fLocker);
    void EndFilled() EXCLUDES(fLocker);
    void StartThread() REQUIRES(fLocker);
    static status_t ThreadEntry(void* queue);
    void Run();

    BLocker fLocker;
    BCondition fHasWork;
    BCondition fHasFilled;
    // Only the operation's thread adds and removes.
    std::deque<Task> fTasks GUARDED_BY(fLocker);
    size_t fWaiting GUARDED_BY(fLocker) = 0;      // how many nobody has begun with
    bool fIsFilling GUARDED_BY(fLocker) = false;  // the thread fills one
    bool fIsSleeping GUARDED_BY(fLocker) = false; // the thread waits for work
    bool fIsOver GUARDED_BY(fLocker) = false;
    thread_id fThread = 0; // above 0 once it was needed; an error when there was none to be had
};

} // namespace norvane
