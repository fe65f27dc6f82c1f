#include "fileops/engine/PatientWork.h"

#include "fileops/engine/OperationUI.h"

#include <Autolock.h>
#include <Condition.h>
#include <Errors.h>
#include <Locker.h>
#include <OS.h>

#include <memory>

namespace norvane {

namespace {

constexpr bigtime_t kGlance = 20'000;

struct Work
{
    std::function<status_t()> call;
    BLocker lock{"patient work"};
    BCondition ended;
    bool isOver GUARDED_BY(lock) = false;
    status_t status GUARDED_BY(lock) = B_OK;
};

status_t Run(void* data)
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

} // namespace

status_t DoPatiently(OperationUI& ui, std::function<status_t()> call, bigtime_t patience)
{
    const bigtime_t begin = system_time();
    auto work = std::make_shared<Work>();
    work->call = std::move(call);
    auto handed = std::make_unique<std::shared_ptr<Work>>(work);
    const thread_id thread = spawn_thread(&Run, "patient work", B_NORMAL_PRIORITY, handed.get());
    if (thread < B_OK || resume_thread(thread) != B_OK) {
        return work->call();
    }
    [[maybe_unused]] const auto* adopted = handed.release(); // by the thread
    for (;;) {
        {
            BAutolock lock(work->lock);
            if (!work->isOver) {
                work->ended.WaitUntil(work->lock, system_time() + kGlance);
            }
            if (work->isOver) {
                return work->status;
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

} // namespace norvane
