#include "fileops/engine/PatientWork.h"

#include "fileops/engine/OperationUI.h"

#include <Autolock.h>
#include <Condition.h>
#include <Errors.h>
#include <Locker.h>
#include <OS.h>

namespace norvane {

namespace {

constexpr bigtime_t kGlance = 20'000;

} // namespace

struct PatientWork::Work
{
    std::function<status_t()> call;
    BLocker lock{"patient work"};
    BCondition ended;
    bool isOver GUARDED_BY(lock) = false;
    status_t status GUARDED_BY(lock) = B_OK;
};

PatientWork::PatientWork(std::function<status_t()> call, int32 priority)
    : fWork(std::make_shared<Work>())
{
    fWork->call = std::move(call);
    auto handed = std::make_unique<std::shared_ptr<Work>>(fWork);
    const thread_id thread = spawn_thread(&Run, "patient work", priority, handed.get());
    fHasThread = thread >= B_OK && resume_thread(thread) == B_OK;
    if (fHasThread) {
        [[maybe_unused]] const auto* adopted = handed.release(); // by the thread
    }
}

PatientWork::~PatientWork() = default;

status_t PatientWork::Run(void* data)
{
    const std::unique_ptr<std::shared_ptr<Work>> handed(static_cast<std::shared_ptr<Work>*>(data));
    Work& work = **handed;
    const status_t status = work.call();
    {
        BAutolock lock(work.lock);
        work.isOver = true;
        work.status = status;
    }
    work.ended.Signal();
    return B_OK;
}

status_t PatientWork::Wait(OperationUI& ui, bigtime_t patience)
{
    if (!fHasThread) {
        return fWork->call();
    }
    const bigtime_t begin = system_time();
    for (;;) {
        {
            BAutolock lock(fWork->lock);
            if (!fWork->isOver) {
                fWork->ended.WaitUntil(fWork->lock, system_time() + kGlance);
            }
            if (fWork->isOver) {
                return fWork->status;
            }
        }
        ui.EntriesVisited(0);
        if (ui.IsStopped()) {
            return B_CANCELED;
        }
        if (system_time() - begin > patience) {
            return B_TIMED_OUT;
        }
    }
}

status_t DoPatiently(OperationUI& ui, std::function<status_t()> call, bigtime_t patience)
{
    return PatientWork(std::move(call)).Wait(ui, patience);
}

} // namespace norvane
