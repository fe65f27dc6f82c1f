#pragma once

#include <Handler.h>
#include <OS.h>

#include <memory>
#include <unordered_map>
#include <vector>

class BList;
class BMessage;
class BMessageFilter;
class BMessageQueue;

namespace kits {
class LooperCore;
class MessageLoop;
} // namespace kits

/// The default of an argument that has no meaning here.
constexpr int32 B_LOOPER_PORT_DEFAULT_CAPACITY = 200;

/// A thread with a message queue and a lock; hands each message to a handler, one at a time.
///
/// Thread: call with the looper locked, unless a function says "any thread". Hooks run locked. The
/// calls marked "any thread" are safe on a looper that is gone: they fail and touch none of its
/// memory. Ownership: create with `new`; it deletes itself in Quit(). Never `delete` it once it
/// runs.
class BLooper : public BHandler
{
public:
    /// The looper is made locked; Run() gives that lock back. `portCapacity` has no meaning here:
    /// queues are unbounded, so that posting never waits.
    explicit BLooper(const char* name = nullptr, int32 priority = B_NORMAL_PRIORITY,
                     int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
    ~BLooper() override;

    /// Queues a message without data for the looper itself. Returns without waiting for anything.
    /// Thread: any thread.
    /// Errors: B_BAD_PORT_ID when the looper is gone or about to end.
    status_t PostMessage(uint32 what);
    /// Queues a message for `handler` (null: the preferred handler); answers go to `replyTo`.
    /// Errors: also B_MISMATCHED_VALUES when the handler belongs to another looper.
    status_t PostMessage(uint32 what, BHandler* handler, BHandler* replyTo = nullptr);
    /// Queues a copy of `message`. Ownership: borrows `message`.
    status_t PostMessage(BMessage* message);
    status_t PostMessage(BMessage* message, BHandler* handler, BHandler* replyTo = nullptr);

    /// Hands one message to the handler it is for, once the filters have passed it.
    /// B_QUIT_REQUESTED for the looper itself is answered by QuitRequested() and, when that agrees,
    /// Quit().
    virtual void DispatchMessage(BMessage* message, BHandler* target);
    /// Lends the message being handled, null outside the handling of one.
    BMessage* CurrentMessage() const;
    /// Returns the message being handled to the caller, who may answer and delete it later.
    BMessage* DetachCurrentMessage();
    /// Lends the queue. Thread: any thread, while the looper lives.
    BMessageQueue* MessageQueue() const;

    /// Makes `handler` one of the looper's and the looper its next handler. Nothing happens to one
    /// that belongs to a looper already.
    void AddHandler(BHandler* handler);
    /// Takes `handler` out; messages that wait for it are dropped. Handlers whose next one it was
    /// go on to the one after it. False when it was not there.
    bool RemoveHandler(BHandler* handler);
    /// The looper itself counts as the first of its handlers.
    int32 CountHandlers() const;
    /// Null beyond the end.
    BHandler* HandlerAt(int32 index) const;
    /// -1 when `handler` is none of them.
    int32 IndexOf(BHandler* handler) const;

    /// The handler that gets what is posted to none in particular: a window's focus view.
    BHandler* PreferredHandler() const { return fPreferredHandler; }
    /// Null: the looper itself. Nothing happens for a handler of another looper.
    void SetPreferredHandler(BHandler* handler);

    /// Starts the thread, returns its number, and gives back the lock of the constructor. Call
    /// once. Errors: B_BAD_VALUE when it runs already; those of spawn_thread().
    virtual thread_id Run();
    /// Ends the looper and deletes it. From its own thread the waiting messages are dropped, and
    /// the object goes when the hook that called returns to the loop; the caller should return at
    /// once. From another thread the waiting messages are handled first, and it waits until the
    /// thread has ended. A looper that never ran is deleted at once. The caller's lock is gone in
    /// each case.
    virtual void Quit();
    /// Whether the looper agrees to end; this one does.
    virtual bool QuitRequested();

    /// Takes the lock. Locks of one thread nest. False when the looper is gone.
    /// Thread: any thread.
    bool Lock();
    /// Thread: any thread that has locked; nothing happens when the looper has gone meanwhile.
    void Unlock();
    /// Whether the calling thread holds the lock.
    /// Thread: any thread.
    bool IsLocked() const;
    /// Takes the lock, waiting at most `timeout`.
    /// Thread: any thread.
    /// Units: microseconds; B_INFINITE_TIMEOUT waits for ever.
    /// Errors: B_TIMED_OUT; B_BAD_VALUE when the looper is gone. Nothing is locked then.
    status_t LockWithTimeout(bigtime_t timeout);
    /// The looper's thread, B_ERROR before Run(). Thread: any thread, while the looper lives.
    thread_id Thread() const;
    /// The thread that holds the lock, B_ERROR when none does. Thread: as Thread().
    thread_id LockingThread() const;
    /// How often the holder has locked. Thread: as Thread().
    int32 CountLocks() const;
    /// How many threads hold or wait for the lock, nesting counted. Thread: as Thread().
    int32 CountLockRequests() const;

    /// Lends the looper of a thread, null when it is none. Not locked.
    static BLooper* LooperForThread(thread_id thread);

    // Filters for the messages of all handlers, asked before a handler's own.

    /// Ownership: adopts `filter`.
    virtual void AddCommonFilter(BMessageFilter* filter);
    /// Returns `filter` to the caller; false when it was not there.
    virtual bool RemoveCommonFilter(BMessageFilter* filter);
    /// Ownership: adopts the list and its BMessageFilters, deletes the former ones.
    virtual void SetCommonFilterList(BList* filters);
    BList* CommonFilterList() const;

    /// An extension of the platform: says that this looper's thread may be busy for long, holding
    /// its own lock, as an operation's window is. Development builds then take its silence for
    /// work, and let it lock loopers that it made itself while it was working (the questions it
    /// asks). Thread: any thread, while the looper lives.
    void SetLongRunning(bool isLongRunning);

protected:
    // Extensions of the platform, which windows build upon

    /// Called, locked, whenever the queue has run empty, before the looper waits for the next
    /// message.
    virtual void QueueEmpty();
    /// The latest time (of system_time()) at which QueueEmpty() is to be called again though no
    /// message came; B_INFINITE_TIMEOUT when there is nothing to do. Asked, locked, after each
    /// QueueEmpty(). A time that is past calls again at once.
    virtual bigtime_t NextWakeUp();
    /// Finds who gets `message`, addressed to `target`, before the filters are asked. This one
    /// returns `target`.
    virtual BHandler* TargetOf(BMessage* message, BHandler* target);
    /// Asks the common filters, then the target's, then those of whom they redirect to. False when
    /// the message is not to be handled.
    bool PassesFilters(BMessage* message, BHandler** target);

private:
    friend class kits::MessageLoop; // which runs it

    void AnswerQuitRequest(BMessage* message);
    void HandleMessage(BMessage* message);

    const std::shared_ptr<kits::LooperCore> fCore; // outlives the looper for those who wait for it
    std::vector<BHandler*> fHandlers;              // the looper itself first
    std::unordered_map<int32, BHandler*> fHandlerOfToken;
    BHandler* fPreferredHandler = nullptr;
    std::unique_ptr<BList> fCommonFilters;
    const int32 fPriority;
};
