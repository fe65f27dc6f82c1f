#include "Driver.h"
#include "Native.h"

#include "interface/graphics/FontAccess.h"
#include "kernel/Mutex.h"

#include <Application.h>

#include <private/qfont_p.h>

#include <thread>

namespace kits::testing {

struct HeadlessApplication::State
{
    Mutex mutex;
    Condition changed;
    BApplication* application GUARDED_BY(mutex) = nullptr; // from when it is ready until it ends
    bool hasEnded GUARDED_BY(mutex) = false;
    std::thread thread;
};

HeadlessApplication::HeadlessApplication()
    : HeadlessApplication([] { return new BApplication("application/x-vnd.kits-test"); })
{
}

HeadlessApplication::HeadlessApplication(const std::function<BApplication*()>& make)
    : fState(std::make_unique<State>())
{
    UseSyntheticDrags();
    State& state = *fState;
    state.thread = std::thread([&state, make] {
        BApplication* application = make();
        {
            MutexLock lock(state.mutex);
            state.application = application;
        }
        state.changed.Signal();
        application->Run();
        {
            // Without a display it comes back at once, and nobody may ask it to quit any more.
            MutexLock lock(state.mutex);
            state.application = nullptr;
            state.hasEnded = true;
        }
        delete application;
    });
    MutexLock lock(state.mutex);
    while (state.application == nullptr && !state.hasEnded) {
        state.changed.Wait(state.mutex);
    }
}

HeadlessApplication::~HeadlessApplication()
{
    // The toolkit frees a thread's fonts as the thread ends, which the test's own never does.
    FontAccess::ForgetThisThreads();
    QFontCache::cleanup();
    // A test that failed may leave a window that would refuse: the end comes without asking.
    {
        MutexLock lock(fState->mutex);
        if (fState->application != nullptr && fState->application->Lock()) {
            fState->application->Quit();
        }
    }
    fState->thread.join();
}

} // namespace kits::testing
