#include "fileops/engine/CopyQueue.h"

#include <Autolock.h>

#include "fileops/engine/FileCopier.h"

namespace norvane {

namespace {

// Each holds two open files.
constexpr size_t kMostWaiting = 16;
// To wake the thread for less would cost more than it does meanwhile.
constexpr size_t kWorthWaking = 4;

} // namespace

CopyQueue::CopyQueue() = default;

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

void CopyQueue::Add(std::unique_ptr<FileCopier> copier, ItemCopy* item)
{
    ++item->queued;
    {
        BAutolock lock(fLocker);
        fTasks.push_back({std::move(copier), item, State::kWaiting});
        ++fWaiting;
        if (fWaiting >= kWorthWaking && fThread == 0) {
            StartThread();
        }
        if (fWaiting >= kWorthWaking && fIsSleeping) {
            fIsSleeping = false;
            fHasWork.Signal();
        }
        if (fWaiting > kMostWaiting) {
            Fill(FirstWaiting());
        }
    }
    EndFilled();
}

void CopyQueue::Drain()
{
    {
        BAutolock lock(fLocker);
        while (Task* task = FirstWaiting()) {
            Fill(task);
        }
        while (fIsFilling) {
            fHasFilled.Wait(fLocker);
        }
    }
    EndFilled();
}

// Tasks stay where they are in the deque while others are added or removed at its ends.
CopyQueue::Task* CopyQueue::FirstWaiting()
{
    if (fWaiting == 0) {
        return nullptr;
    }
    for (Task& task : fTasks) {
        if (task.state == State::kWaiting) {
            return &task;
        }
    }
    return nullptr;
}

void CopyQueue::Fill(Task* task)
{
    task->state = State::kBeingFilled;
    --fWaiting;
    fLocker.Unlock();
    task->copier->Fill();
    fLocker.Lock();
    task->state = State::kFilled;
}

void CopyQueue::EndFilled()
{
    for (;;) {
        std::unique_ptr<FileCopier> copier;
        ItemCopy* item = nullptr;
        {
            BAutolock lock(fLocker);
            if (fTasks.empty() || fTasks.front().state != State::kFilled) {
                return;
            }
            copier = std::move(fTasks.front().copier);
            item = fTasks.front().item;
            fTasks.pop_front();
        }
        // What End() tells may wait for the person, and look at this item.
        item->EndQueued(copier->End());
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

status_t CopyQueue::ThreadEntry(void* queue)
{
    static_cast<CopyQueue*>(queue)->Run();
    return B_OK;
}

void CopyQueue::Run()
{
    BAutolock lock(fLocker);
    for (;;) {
        Task* task = FirstWaiting();
        if (task != nullptr) {
            fIsFilling = true;
            Fill(task);
            fIsFilling = false;
            fHasFilled.Signal();
            continue;
        }
        fIsSleeping = true;
        while (!fIsOver && fIsSleeping) {
            fHasWork.Wait(fLocker);
        }
        if (fIsOver) {
            return;
        }
    }
}

} // namespace norvane
