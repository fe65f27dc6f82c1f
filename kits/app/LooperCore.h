#pragma once

#include <MessageQueue.h>
#include <OS.h>
#include <SupportDefs.h>

#include "app/LooperFacts.h"
#include "app/LooperLock.h"
#include "kernel/Mutex.h"

#include <atomic>
#include <memory>
#include <vector>

class BLooper;
class BMessage;

namespace kits {

/// The part of a looper that outlives it: its lock, its queue, and whether it still lives.
///
/// Whoever waits for a looper holds its core, so that the looper may go meanwhile. LooperRegistry
/// finds it by the looper's pointer or by the token of a handler. It knows nothing of what a looper
/// does with its messages: that is MessageLoop's. Thread: any thread, unless a function says
/// otherwise.
class LooperCore : public LooperFacts, public std::enable_shared_from_this<LooperCore>
{
public:
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

    /// How many messages were taken from the queue.
    int64 TakenCount() const { return fTakenCount.load(std::memory_order_relaxed); }

    // The messages in work. Thread: the looper's own.

    /// Takes the next message, waiting until `deadline` (of system_time()) at most. Null: the time
    /// is over, or the looper is about to end.
    std::unique_ptr<BMessage> NextMessage(bigtime_t deadline);
    /// The message being handled.
    BMessage* Current() const { return fCurrent.get(); }
    /// Makes `message` the one being handled, and hands back in it the one that was.
    void SwapCurrent(std::unique_ptr<BMessage>& message) { fCurrent.swap(message); }
    std::unique_ptr<BMessage> DetachCurrent();

    // Life

    /// Says that the calling thread runs the loop.
    void AdoptThisThread();
    /// Says which thread is about to run the loop; B_ERROR when it could not be started.
    void SetThread(thread_id thread) { NoteThread(thread); }
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
    /// Says that the calling thread, the looper's, is about to end; wakes those who wait for it.
    void SayEnded();
    /// Makes NextMessage() return, without a message if none waits.
    void Wake();
    /// Deletes the messages that wait and takes no more: senders that wait for answers are told.
    void CloseQueue();
    /// Called by the looper's destructor, locked, once the tables know it no more: closes its queue
    /// and gives back the lock.
    void Die();

private:
    LooperLock fLock;
    BMessageQueue fQueue;
    std::unique_ptr<BMessage> fCurrent; // the looper's thread only
    std::atomic<bool> fIsEnding{false};
    std::atomic<int64> fTakenCount{0};

    Mutex fEndMutex;
    Condition fEnd;
    bool fHasEnded GUARDED_BY(fEndMutex) = false;
    std::shared_ptr<LooperCore> fEndListener GUARDED_BY(fEndMutex);
};

} // namespace kits
