#include "Driver.h"

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
    BApplication* application GUARDED_BY(mutex) = nullptr; // once it is ready
    std::thread thread;
};

HeadlessApplication::HeadlessApplication()
    : HeadlessApplication([] { return new BApplication("application/x-vnd.kits-test"); })
{
}

HeadlessApplication::HeadlessApplication(const std::function<BApplication*()>& make)
    : fState(std::make_unique<State>())
{
    State& state = *fState;
    state.thread = std::thread([&state, make] {
        BApplication* application = make();
        {
            MutexLock lock(state.mutex);
            state.application = application;
        }
        state.changed.Signal();
        application->Run();
        delete application;
    });
    MutexLock lock(state.mutex);
    while (state.application == nullptr) {
        state.changed.Wait(state.mutex);
    }
}

HeadlessApplication::~HeadlessApplication()
{
    // The toolkit frees a thread's fonts as the thread ends, which the test's own never does.
    FontAccess::ForgetThisThreads();
    QFontCache::cleanup();
    // A test that failed may leave a window that would refuse: the end comes without asking.
    BApplication* application = nullptr;
    {
        MutexLock lock(fState->mutex);
        application = fState->application;
    }
    if (application->Lock()) {
        application->Quit();
    }
    fState->thread.join();
}

} // namespace kits::testing
