#include "fileops/engine/CopyQueue.h"

#include <Autolock.h>

#include "fileops/engine/FileCopier.h"
#include "fileops/engine/OperationUI.h"

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

// Each may hold two open files.
constexpr int32 kMostWaiting = 16;
// To wake the thread for less would cost more than it does meanwhile.
constexpr int32 kWorthWaking = 4;
// So many are copied before a folder is entered while the files of another are under way.
constexpr size_t kFew = 32;

} // namespace

CopyQueue::CopyQueue(const OperationUI& ui) : fUI(ui) {}

CopyQueue::~CopyQueue()
{
    Drain();
    if (fThread > 0) {
        {
            BAutolock lock(fLocker);
            fIsOver = true;
        }
        fHasWork.Signal();
        wait_for_thread(fThread, nullptr);
    }
}

// The operation's thread

void CopyQueue::Add(std::unique_ptr<FileCopier> copier, ItemCopy* item)
{
    ++item->queued;
    Task& task = TakeSlot();
    task.copier = std::move(copier);
    task.item = item;
    task.state = State::kWaiting;
    ++fWaiting;
    ++fBack;
    if (fWaiting >= kWorthWaking) {
        WakeThread();
    }
    if (fWaiting > kMostWaiting) {
        FillNewest();
    }
    EndFilled();
}

void CopyQueue::AddAfter(std::function<void()> step, ItemCopy* item)
{
    ++item->queued;
    Task& task = TakeSlot();
    task.after = std::move(step);
    task.item = item;
    task.state = State::kFilled;
    ++fBack;
    EndFilled();
}

void CopyQueue::DrainFew()
{
    if (fBack < kFew) {
        Drain();
    }
}

void CopyQueue::Drain()
{
    while (fFront != fBack) {
        if (!FillFirst()) {
            AwaitFront();
        }
        EndFilled();
    }
}

/// A free one behind the last.
CopyQueue::Task& CopyQueue::TakeSlot()
{
    while (fBack - fFront == kSlots) {
        if (!FillNewest()) {
            AwaitFront();
        }
        EndFilled();
    }
    return At(fBack);
}

bool CopyQueue::Claim(Task* task)
{
    State waiting = State::kWaiting;
    const bool isClaimed = task->state.compare_exchange_strong(waiting, State::kBeingFilled);
    if (isClaimed) {
        --fWaiting;
    }
    return isClaimed;
}

void CopyQueue::Fill(Task* task)
{
    task->copier->Fill(fIsStopped);
    task->state = State::kFilled;
}

bool CopyQueue::FillNewest()
{
    for (size_t index = fBack; fWaiting > 0 && index != fFront; --index) {
        Task& task = At(index - 1);
        if (Claim(&task)) {
            Fill(&task);
            return true;
        }
    }
    return false;
}

/// The one that all others wait for; false when it is nobody's to fill.
bool CopyQueue::FillFirst()
{
    Task& task = At(fFront);
    const bool isMine = Claim(&task);
    if (isMine) {
        Fill(&task);
    }
    return isMine;
}

void CopyQueue::EndFilled()
{
    fIsStopped = fUI.IsStopped();
    while (fFront != fBack && At(fFront).state == State::kFilled) {
        Task& task = At(fFront);
        const std::unique_ptr<FileCopier> copier = std::move(task.copier);
        const std::function<void()> after = std::exchange(task.after, nullptr);
        ItemCopy* item = task.item;
        task.state = State::kFree;
        ++fFront;
        if (copier == nullptr) {
            after();
            --item->queued;
        } else {
            // What End() tells may wait for the person, and look at this item.
            item->EndQueued(copier->End());
            fIsStopped = fUI.IsStopped();
        }
    }
}

/// Waits until the first one is filled, which the thread is about.
void CopyQueue::AwaitFront()
{
    BAutolock lock(fLocker);
    fIsAwaited = true;
    while (At(fFront).state == State::kBeingFilled) {
        fHasFilled.Wait(fLocker);
    }
    fIsAwaited = false;
}

void CopyQueue::WakeThread()
{
    if (fThread == 0) {
        StartThread();
    }
    if (fIsSleeping.exchange(false)) {
        BAutolock lock(fLocker);
        fHasWork.Signal();
    }
}

// Without a thread the operation's own fills all: some when too many wait, the rest at the end.
void CopyQueue::StartThread()
{
    fThread = spawn_thread(&ThreadEntry, "small files", B_NORMAL_PRIORITY, this);
    const status_t status = fThread < B_OK ? fThread : resume_thread(fThread);
    if (status != B_OK) {
        fThread = status;
    }
}

// Its own thread

status_t CopyQueue::ThreadEntry(void* queue)
{
    static_cast<CopyQueue*>(queue)->Run();
    return B_OK;
}

void CopyQueue::Run()
{
    while (!fIsOver) {
        if (!FillOldest()) {
            Sleep();
        }
    }
}

bool CopyQueue::FillOldest()
{
    const size_t back = fBack;
    // Slots that are far behind have been used again; all that is before the last one taken has
    // been taken.
    fNext = std::max(fNext, back < kSlots ? 0 : back - kSlots);
    while (fWaiting > 0 && fNext < back) {
        Task& task = At(fNext++);
        if (Claim(&task)) {
            Fill(&task);
            if (fIsAwaited) {
                BAutolock lock(fLocker);
                fHasFilled.Signal();
            }
            return true;
        }
    }
    return false;
}

void CopyQueue::Sleep()
{
    BAutolock lock(fLocker);
    fIsSleeping = true;
    // Whoever adds looks at the flag afterwards.
    while (fIsSleeping && fWaiting == 0 && !fIsOver) {
        fHasWork.Wait(fLocker);
    }
    fIsSleeping = false;
}

} // namespace norvane
