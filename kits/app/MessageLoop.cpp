#include "app/MessageLoop.h"

#include <Looper.h>
#include <Message.h>

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "kernel/Stack.h"
#include "kernel/ThreadEnds.h"

#include <utility>

namespace kits {

thread_id MessageLoop::Start(const std::shared_ptr<LooperCore>& core, const char* name,
                             int32 priority)
{
    auto argument = std::make_unique<std::shared_ptr<LooperCore>>(core);
    const thread_id thread =
        spawn_thread(&ThreadEntry, name != nullptr ? name : "looper", priority, argument.get());
    if (thread < B_OK) {
        return thread;
    }
    core->SetThread(thread);
    LooperRegistry::AddThread(core);
    const status_t status = resume_thread(thread);
    if (status != B_OK) {
        LooperRegistry::RemoveThread(core.get());
        core->SetThread(B_ERROR);
        return status;
    }
    static_cast<void>(argument.release()); // adopted by the thread
    return thread;
}

status_t MessageLoop::ThreadEntry(void* data)
{
    const std::unique_ptr<std::shared_ptr<LooperCore>> argument(
        static_cast<std::shared_ptr<LooperCore>*>(data));
    const std::shared_ptr<LooperCore> core = *argument;
    core->AdoptThisThread();
    Run(*core);
    if (core->Lock() == B_OK) {
        delete core->Looper(); // its destructor gives the lock back
    }
    core->SayEnded();
    // Before it leaves the registry: whoever finds it there no more can still wait for it.
    AnnounceThreadEnd();
    LooperRegistry::RemoveThread(core.get());
    return B_OK;
}

void MessageLoop::Run(LooperCore& core)
{
    while (!core.IsEnding()) {
        std::unique_ptr<BMessage> message = core.NextMessage(0);
        if (message == nullptr) {
            message = core.NextMessage(Idle(core));
        }
        if (message != nullptr) {
            Dispatch(core, std::move(message));
        }
    }
    // Not only with the looper: its end may wait for a lock whose holder waits for somebody who
    // asks this looper.
    core.CloseQueue();
}

bool MessageLoop::Dispatch(LooperCore& core, std::unique_ptr<BMessage> message)
{
    core.SwapCurrent(message); // a loop inside a hook takes its turn within that of another message
    if (core.Lock() == B_OK) {
        const HookBoundary boundary;
        // The looper lives through this, even when a hook quits it: its thread deletes it
        // afterwards.
        core.Looper()->HandleMessage(core.Current());
        core.Unlock();
    }
    core.SwapCurrent(message);
    message.reset(); // the one handled, unless it was detached
    return !core.IsEnding();
}

// Returns until when there is nothing to do.
bigtime_t MessageLoop::Idle(LooperCore& core)
{
    if (core.Lock() != B_OK) {
        return 0;
    }
    const HookBoundary boundary;
    BLooper* looper = core.Looper();
    looper->QueueEmpty();
    const bigtime_t wakeUp = core.IsEnding() ? 0 : looper->NextWakeUp();
    core.Unlock();
    return wakeUp;
}

} // namespace kits
