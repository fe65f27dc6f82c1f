#include "app/LooperCore.h"

#include <Message.h>

#include "app/Deadline.h"
#include "app/Guards.h"
#include "app/MessageAccess.h"
#include "app/MessageDelivery.h"

#include <utility>

namespace kits {

namespace {

thread_local std::shared_ptr<LooperCore> tCore; // of the looper that the thread runs

} // namespace

std::shared_ptr<LooperCore> LooperCore::OfThisThread()
{
    return tCore;
}

LooperCore::LooperCore(BLooper* looper, int32 token)
    : LooperFacts(looper, token, InnermostLockedLooper())
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

std::unique_ptr<BMessage> LooperCore::DetachCurrent()
{
    return std::move(fCurrent);
}

void LooperCore::AdoptThisThread()
{
    tCore = shared_from_this();
    NoteThread(ThisThread());
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
    tCore = nullptr;
    std::shared_ptr<LooperCore> listener;
    {
        MutexLock lock(fEndMutex);
        fHasEnded = true;
        listener = std::move(fEndListener);
    }
    fEnd.Broadcast();
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
    NoteDeath();
    CloseQueue();
    UnlockAll();
}

} // namespace kits
