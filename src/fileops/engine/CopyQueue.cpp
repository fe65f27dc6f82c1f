#include "fileops/engine/CopyQueue.h"

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
            std::lock_guard lock(fMutex);
            fIsOver = true;
        }
        fHasWork.notify_one();
        wait_for_thread(fThread, nullptr);
    }
}

void CopyQueue::Add(std::unique_ptr<FileCopier> copier)
{
    std::unique_lock lock(fMutex);
    fTasks.push_back({std::move(copier), State::kWaiting});
    ++fWaiting;
    if (fWaiting >= kWorthWaking && fThread == 0) {
        StartThread();
    }
    if (fWaiting >= kWorthWaking && fIsSleeping) {
        fIsSleeping = false;
        fHasWork.notify_one();
    }
    if (fWaiting > kMostWaiting) {
        Fill(FirstWaiting(), lock);
    }
    lock.unlock();
    EndFilled();
}

bool CopyQueue::Drain()
{
    std::unique_lock lock(fMutex);
    while (Task* task = FirstWaiting()) {
        Fill(task, lock);
    }
    fHasFilled.wait(lock, [this] { return !fIsFilling; });
    lock.unlock();
    EndFilled();
    const bool areWhole = fAreWhole;
    fAreWhole = true;
    return areWhole;
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

void CopyQueue::Fill(Task* task, std::unique_lock<std::mutex>& lock)
{
    task->state = State::kBeingFilled;
    --fWaiting;
    lock.unlock();
    task->copier->Fill();
    lock.lock();
    task->state = State::kFilled;
}

void CopyQueue::EndFilled()
{
    for (;;) {
        std::unique_ptr<FileCopier> copier;
        {
            std::lock_guard lock(fMutex);
            if (fTasks.empty() || fTasks.front().state != State::kFilled) {
                return;
            }
            copier = std::move(fTasks.front().copier);
            fTasks.pop_front();
        }
        fAreWhole &= copier->End().isWhole;
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
    std::unique_lock lock(fMutex);
    for (;;) {
        Task* task = FirstWaiting();
        if (task != nullptr) {
            fIsFilling = true;
            Fill(task, lock);
            fIsFilling = false;
            fHasFilled.notify_one();
            continue;
        }
        fIsSleeping = true;
        fHasWork.wait(lock, [this] { return fIsOver || !fIsSleeping; });
        if (fIsOver) {
            return;
        }
    }
}

} // namespace norvane
