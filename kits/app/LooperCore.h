#pragma once

#include <MessageQueue.h>
#include <OS.h>
#include <SupportDefs.h>

#include "app/LooperLock.h"
#include "kernel/Mutex.h"

#include <atomic>
#include <memory>
#include <vector>

class BHandler;
class BLooper;
class BMessage;
class BWindow;

namespace kits {

/// The part of a looper that outlives it: its lock, its queue, and whether it still lives.
///
/// Whoever waits for a looper holds its core, so that the looper may go meanwhile. A looper is
/// found by its pointer, a handler's looper by the handler's token; the tables are asked before any
/// of its memory is touched. Thread: any thread, unless a function says otherwise.
class LooperCore : public std::enable_shared_from_this<LooperCore>
{
public:
    /// The core of a looper that lives; null when there is no looper at that address.
    static std::shared_ptr<LooperCore> CoreOf(const BLooper* looper);
    /// The core of the looper that the handler with that token belongs to; null when there is none.
    static std::shared_ptr<LooperCore> CoreOfToken(int32 token);
    /// The cores of all living loopers, in the order of their making.
    static std::vector<std::shared_ptr<LooperCore>> All();
    /// The cores of all loopers whose threads run, the application's apart.
    static std::vector<std::shared_ptr<LooperCore>> AllRunning();
    /// The core of the looper whose thread is calling, null on other threads.
    static std::shared_ptr<LooperCore> OfThisThread();

    LooperCore(BLooper* looper, int32 token);
    ~LooperCore();
    LooperCore(const LooperCore&) = delete;
    LooperCore& operator=(const LooperCore&) = delete;

    // The lock

    /// Errors: B_TIMED_OUT; B_BAD_VALUE when the looper is gone. Nothing is locked then.
    status_t Lock(bigtime_t timeout = B_INFINITE_TIMEOUT);
    [[nodiscard]] status_t LockUntil(bigtime_t deadline);
    void Unlock();
    /// Gives the lock back however often the calling thread took it, and returns how often that
    /// was.
    int32 UnlockAll();
    /// Takes it that often again. False when the looper is gone.
    bool LockAgain(int32 count);
    const LooperLock& GetLock() const { return fLock; }

    // The queue

    /// Queues `message` for whom its delivery names, the looper itself when it has none.
    /// False when the looper is gone or about to end; the message is deleted then.
    bool Post(std::unique_ptr<BMessage> message);
    /// The same for a B_MOUSE_MOVED, which takes the place of one that waits for the same "window",
    /// unless a press, a release or other input stands behind that one.
    bool PostFoldingMouseMove(std::unique_ptr<BMessage> message);
    /// Takes out the B_KEY_DOWNs that wait, in their order.
    std::vector<std::unique_ptr<BMessage>> TakeKeyMessages();
    /// Puts messages before all that wait, in their order.
    void PutInFront(std::vector<std::unique_ptr<BMessage>> messages);
    BMessageQueue& Queue() { return fQueue; }

    // The loop. Thread: the looper's own.

    /// Takes the next message, waiting until `deadline` (of system_time()) at most. Null: the time
    /// is over, or the looper is about to end.
    std::unique_ptr<BMessage> NextMessage(bigtime_t deadline);
    /// Handles `message` as the loop does: under the lock, filters first. Loops inside hooks call
    /// it too. Returns false when the looper is about to end.
    bool Dispatch(std::unique_ptr<BMessage> message);
    /// Handles messages until the looper is to end.
    void Loop();
    /// The message being handled.
    BMessage* Current() const { return fCurrent.get(); }
    std::unique_ptr<BMessage> DetachCurrent();

    // Life

    int32 Token() const { return fToken; }
    /// The looper; null once it is gone. Lasts while the lock is held.
    BLooper* Looper() const { return fLooper.load(std::memory_order_acquire); }
    bool IsAlive() const { return Looper() != nullptr; }
    /// Runs `Loop()` on a new thread, which deletes the looper at its end.
    thread_id Start(const char* name, int32 priority);
    /// Says that the calling thread runs the loop.
    void AdoptThisThread();
    thread_id Thread() const { return fThread.load(std::memory_order_acquire); }
    bool HasRun() const { return Thread() > 0; }
    /// Ends the loop after the message being handled; the rest is dropped.
    void EndSoon();
    bool IsEnding() const { return fIsEnding.load(std::memory_order_acquire); }
    /// Ends the loop once the messages that wait are handled. False when it is gone.
    bool EndAfterQueue();
    /// Waits until the looper's thread has ended; returns at once for one that never ran, and on
    /// that thread.
    void WaitForEnd();
    /// Whether the thread has ended. If not, `listener` is woken when it does.
    bool HasEnded(const std::shared_ptr<LooperCore>& listener);
    /// Makes NextMessage() return, without a message if none waits.
    void Wake();
    /// Deletes the messages that wait and takes no more: senders that wait for answers are told.
    void CloseQueue();
    /// Called by the looper's destructor, locked: takes it out of the tables and closes its queue.
    void Die();

    // Kinds

    /// Says that the looper is a window, which is asked when the program is to quit.
    void MarkAsWindow(BWindow* window);
    bool IsWindow() const { return fIsWindow.load(std::memory_order_acquire); }
    BWindow* Window() const { return fWindow.load(std::memory_order_acquire); }

    // For the guards

    void SetLongRunning(bool isLongRunning) { fIsLongRunning = isLongRunning; }
    bool IsLongRunning() const { return fIsLongRunning; }
    /// Counts the LongWork objects of the looper's thread.
    void AddLongWorks(int32 change) { fLongWorks += change; }
    bool IsAtLongWork() const { return fIsLongRunning || fLongWorks > 0; }
    /// How many messages were taken from the queue.
    int64 TakenCount() const { return fTakenCount.load(std::memory_order_relaxed); }
    /// The token of the looper whose lock was held when this one was made; 0 for none.
    int32 Maker() const { return fMaker; }

private:
    static status_t ThreadEntry(void* data);
    bigtime_t Idle();
    void SayEnded();

    const int32 fToken;
    std::atomic<BLooper*> fLooper;
    std::atomic<BWindow*> fWindow{nullptr};
    std::atomic<bool> fIsWindow{false};
    LooperLock fLock;
    BMessageQueue fQueue;
    std::unique_ptr<BMessage> fCurrent; // the looper's thread only
    std::atomic<thread_id> fThread{-1};
    std::atomic<bool> fIsEnding{false};

    Mutex fEndMutex;
    Condition fEnd;
    bool fHasEnded GUARDED_BY(fEndMutex) = false;
    std::shared_ptr<LooperCore> fEndListener GUARDED_BY(fEndMutex);

    std::atomic<bool> fIsLongRunning{false};
    std::atomic<int32> fLongWorks{0};
    std::atomic<int64> fTakenCount{0};
    const int32 fMaker;
};

} // namespace kits
