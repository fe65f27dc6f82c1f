#include "Driver.h"

#include "interface/graphics/FontAccess.h"

#include <Application.h>

#include <private/qfont_p.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace kits::testing {

struct HeadlessApplication::State
{
    std::mutex lock;
    std::condition_variable changed;
    bool isReady = false; // guarded by lock
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
            std::lock_guard<std::mutex> lock(state.lock);
            state.isReady = true;
        }
        state.changed.notify_one();
        application->Run();
        delete application;
    });
    std::unique_lock<std::mutex> lock(state.lock);
    state.changed.wait(lock, [&state] { return state.isReady; });
}

HeadlessApplication::~HeadlessApplication()
{
    // The toolkit frees a thread's fonts as the thread ends, which the test's own never does.
    FontAccess::ForgetThisThreads();
    QFontCache::cleanup();
    // A test that failed may leave a window that would refuse: the end comes without asking.
    if (be_app->Lock()) {
        be_app->Quit();
    }
    fState->thread.join();
}

} // namespace kits::testing
