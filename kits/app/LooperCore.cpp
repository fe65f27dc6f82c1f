#include "app/LooperCore.h"

#include <Looper.h>
#include <Message.h>

#include "app/Deadline.h"
#include "app/Guards.h"
#include "app/LooperRegistry.h"
#include "app/MessageDelivery.h"
#include "kernel/Stack.h"
#include "kernel/ThreadEnds.h"

#include <utility>

namespace kits {

namespace {

thread_local std::shared_ptr<LooperCore> tCore; // of the looper that the thread runs

} // namespace

std::shared_ptr<LooperCore> LooperCore::CoreOf(const BLooper* looper)
{
    return LooperRegistry::FindLooper(looper);
}

std::shared_ptr<LooperCore> LooperCore::CoreOfToken(int32 token)
{
    return LooperRegistry::FindHandler(token).core;
}

std::vector<std::shared_ptr<LooperCore>> LooperCore::All()
{
    return LooperRegistry::AllLoopers();
}

std::vector<std::shared_ptr<LooperCore>> LooperCore::AllRunning()
{
    return LooperRegistry::AllThreads();
}

std::shared_ptr<LooperCore> LooperCore::OfThisThread()
{
    return tCore;
}

LooperCore::LooperCore(BLooper* looper, int32 token)
    : fToken(token), fLooper(looper), fMaker(InnermostLockedLooper())
{
}

LooperCore::~LooperCore() = default;

status_t LooperCore::Lock(bigtime_t timeout)
{
    return LockUntil(timeout == B_INFINITE_TIMEOUT ? timeout : DeadlineAfter(timeout));
}

status_t LooperCore::LockUntil(bigtime_t deadline)
{
    const bool nests = fLock.IsHeld();
    if (!nests) {
        GuardBeforeLock(*this);
    }
    if (!fLock.Lock(deadline)) {
        return B_TIMED_OUT;
    }
    if (!IsAlive()) {
        fLock.Unlock();
        return B_BAD_VALUE;
    }
    if (!nests) {
        GuardAfterLock(*this);
    }
    return B_OK;
}

void LooperCore::Unlock()
{
    if (fLock.IsHeld() && fLock.CountLocks() == 1) {
        GuardAfterUnlock(*this);
    }
    fLock.Unlock();
}

int32 LooperCore::UnlockAll()
{
    if (fLock.IsHeld()) {
        GuardAfterUnlock(*this);
    }
    return fLock.UnlockAll();
}

bool LooperCore::LockAgain(int32 count)
{
    for (int32 i = 0; i < count; ++i) {
        if (Lock() != B_OK) {
            return false;
        }
    }
    return true;
}

bool LooperCore::Post(std::unique_ptr<BMessage> message)
{
    if (!IsAlive() || IsEnding()) {
        return false;
    }
    BMessageQueue::Messages one;
    one.push_back(std::move(message)); // allocated before the queue is locked
    return fQueue.Append(one);
}

bool LooperCore::PostFoldingMouseMove(std::unique_ptr<BMessage> message)
{
    if (!IsAlive() || IsEnding()) {
        return false;
    }
    BMessageQueue::Messages one;
    one.push_back(std::move(message));
    return fQueue.AppendFoldingMouseMove(one);
}

std::vector<std::unique_ptr<BMessage>> LooperCore::TakeKeyMessages()
{
    BMessageQueue::Messages taken = fQueue.TakeKeyMessages();
    return {std::make_move_iterator(taken.begin()), std::make_move_iterator(taken.end())};
}

void LooperCore::PutInFront(std::vector<std::unique_ptr<BMessage>> messages)
{
    BMessageQueue::Messages some(std::make_move_iterator(messages.begin()),
                                 std::make_move_iterator(messages.end()));
    if (!some.empty()) {
        fQueue.Prepend(some);
    }
}

std::unique_ptr<BMessage> LooperCore::NextMessage(bigtime_t deadline)
{
    if (IsEnding()) {
        return nullptr;
    }
    std::unique_ptr<BMessage> message = fQueue.TakeWithin(deadline);
    if (message == nullptr) {
        return nullptr;
    }
    fTakenCount.fetch_add(1, std::memory_order_relaxed);
    const MessageDelivery* delivery = MessageAccess::Delivery(*message).get();
    if (delivery != nullptr && delivery->endsLooper) {
        EndSoon();
        return nullptr;
    }
    return message;
}

bool LooperCore::Dispatch(std::unique_ptr<BMessage> message)
{
    std::unique_ptr<BMessage> outer = std::exchange(fCurrent, std::move(message));
    if (Lock() == B_OK) {
        const HookBoundary boundary;
        // The looper lives through this, even when a hook quits it: its thread deletes it
        // afterwards.
        Looper()->HandleMessage(fCurrent.get());
        Unlock();
    }
    fCurrent = std::move(outer); // ends the message, unless it was detached
    return !IsEnding();
}

std::unique_ptr<BMessage> LooperCore::DetachCurrent()
{
    return std::move(fCurrent);
}

void LooperCore::Loop()
{
    while (!IsEnding()) {
        std::unique_ptr<BMessage> message = NextMessage(0);
        if (message == nullptr) {
            message = NextMessage(Idle());
        }
        if (message != nullptr) {
            Dispatch(std::move(message));
        }
    }
    // Not only with the looper: its end may wait for a lock whose holder waits for somebody who
    // asks this looper.
    CloseQueue();
}

// Returns until when there is nothing to do.
bigtime_t LooperCore::Idle()
{
    if (Lock() != B_OK) {
        return 0;
    }
    const HookBoundary boundary;
    BLooper* looper = Looper();
    looper->QueueEmpty();
    const bigtime_t wakeUp = IsEnding() ? 0 : looper->NextWakeUp();
    Unlock();
    return wakeUp;
}

thread_id LooperCore::Start(const char* name, int32 priority)
{
    auto argument = std::make_unique<std::shared_ptr<LooperCore>>(shared_from_this());
    const thread_id thread =
        spawn_thread(&ThreadEntry, name != nullptr ? name : "looper", priority, argument.get());
    if (thread < B_OK) {
        return thread;
    }
    fThread.store(thread, std::memory_order_release);
    LooperRegistry::AddThread(*argument);
    const status_t status = resume_thread(thread);
    if (status != B_OK) {
        LooperRegistry::RemoveThread(this);
        fThread.store(B_ERROR, std::memory_order_release);
        return status;
    }
    static_cast<void>(argument.release()); // adopted by the thread
    return thread;
}

status_t LooperCore::ThreadEntry(void* data)
{
    const std::unique_ptr<std::shared_ptr<LooperCore>> argument(
        static_cast<std::shared_ptr<LooperCore>*>(data));
    const std::shared_ptr<LooperCore> core = *argument;
    core->AdoptThisThread();
    core->Loop();
    if (core->Lock() == B_OK) {
        delete core->Looper(); // its destructor gives the lock back
    }
    tCore = nullptr;
    core->SayEnded();
    return B_OK;
}

void LooperCore::AdoptThisThread()
{
    tCore = shared_from_this();
    fThread.store(ThisThread(), std::memory_order_release);
}

void LooperCore::EndSoon()
{
    fIsEnding.store(true, std::memory_order_release);
    Wake();
}

bool LooperCore::EndAfterQueue()
{
    auto message = std::make_unique<BMessage>();
    NewDelivery(*message).endsLooper = true;
    return Post(std::move(message));
}

void LooperCore::WaitForEnd()
{
    if (!HasRun() || Thread() == ThisThread()) {
        return;
    }
    {
        MutexLock lock(fEndMutex);
        while (!fHasEnded) {
            fEnd.Wait(fEndMutex);
        }
    }
    wait_for_thread(Thread(), nullptr); // it still has a few steps to go; fails when it is gone
}

bool LooperCore::HasEnded(const std::shared_ptr<LooperCore>& listener)
{
    MutexLock lock(fEndMutex);
    if (!fHasEnded) {
        fEndListener = listener;
    }
    return fHasEnded;
}

void LooperCore::SayEnded()
{
    std::shared_ptr<LooperCore> listener;
    {
        MutexLock lock(fEndMutex);
        fHasEnded = true;
        listener = std::move(fEndListener);
    }
    fEnd.Broadcast();
    // Before it leaves the registry: whoever finds it there no more can still wait for it.
    AnnounceThreadEnd();
    LooperRegistry::RemoveThread(this);
    if (listener != nullptr) {
        listener->Wake();
    }
}

void LooperCore::Wake()
{
    fQueue.Wake();
}

void LooperCore::CloseQueue()
{
    fQueue.Close();
}

void LooperCore::Die()
{
    fIsEnding.store(true, std::memory_order_release);
    // The tables first: who finds the looper there must be able to see that it is gone by trying
    // the lock.
    LooperRegistry::RemoveHandler(fToken);
    LooperRegistry::RemoveLooper(Looper());
    fLooper.store(nullptr, std::memory_order_release);
    fWindow.store(nullptr, std::memory_order_release);
    CloseQueue();
    UnlockAll();
}

void LooperCore::MarkAsWindow(BWindow* window)
{
    fWindow.store(window, std::memory_order_release);
    fIsWindow.store(true, std::memory_order_release);
}

} // namespace kits
