#pragma once

#include <Condition.h>
#include <Locker.h>
#include <OS.h>
#include <SupportDefs.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>

namespace norvane {

class FileCopier;
class OperationUI;
struct ItemCopy;

/// Copies small files on two threads: the operation's, which adds them, and one of its own.
///
/// What is told to the person keeps the order in which the files were added. The thread takes the
/// oldest of those that wait, the operation's helps with the newest: in a tree these lie in another
/// folder, so that neither waits for the other's. After a stop only what was begun is done. Thread:
/// all calls belong to the operation's.
class CopyQueue
{
public:
    /// Ownership: borrows `ui` for its own life.
    explicit CopyQueue(const OperationUI& ui);
    ~CopyQueue();
    CopyQueue(const CopyQueue&) = delete;
    CopyQueue& operator=(const CopyQueue&) = delete;

    /// Takes a copy for Fill() and End(). When enough wait already, one of them is filled here.
    /// `item` takes over how it ended, at the latest with the next Drain(). Ownership: `item` is
    /// borrowed until then.
    void Add(std::unique_ptr<FileCopier> copier, ItemCopy* item);
    /// Calls `step`, which belongs to the item too, when all that were added before have ended.
    void AddAfter(std::function<void()> step, ItemCopy* item);
    /// Waits for those that were added while they are few: then nothing runs ahead of anything.
    void DrainFew();
    /// Waits for all that were added.
    void Drain();

private:
    enum class State : uint8 {
        kFree,
        kWaiting,
        kBeingFilled,
        kFilled,
    };
    /// What is in it belongs to whoever set kBeingFilled, in the other states to the operation.
    struct Task
    {
        std::unique_ptr<FileCopier> copier; // null: `after` is called
        ItemCopy* item = nullptr;
        std::function<void()> after;
        std::atomic<State> state{State::kFree};
    };
    static constexpr size_t kSlots = 32; // a power of two

    Task& At(size_t index) { return fTasks[index & (kSlots - 1)]; }
    Task& TakeSlot();
    bool FillNewest();
    bool FillFirst();
    bool FillOldest();
    bool Claim(Task* task);
    void Fill(Task* task);
    void EndFilled();
    void AwaitFront();
    void WakeThread();
    void StartThread();
    static status_t ThreadEntry(void* queue);
    void Run();
    void Sleep();

    const OperationUI& fUI;
    std::array<Task, kSlots> fTasks;
    size_t fFront = 0;              // the first that has not ended
    std::atomic<size_t> fBack{0};   // behind the last; changed by the operation's thread
    std::atomic<int32> fWaiting{0}; // how many nobody has begun with
    size_t fNext = 0;               // the thread's: the oldest that may wait
    thread_id fThread = 0; // above 0 once it was needed; an error when there was none to be had

    std::atomic<bool> fIsStopped{false}; // no new file is made any more

    // For sleeping only.
    BLocker fLocker;
    BCondition fHasWork;
    BCondition fHasFilled;
    std::atomic<bool> fIsSleeping{false}; // the thread waits for work
    std::atomic<bool> fIsAwaited{false};  // the operation waits for the thread
    std::atomic<bool> fIsOver{false};
};

} // namespace norvane
