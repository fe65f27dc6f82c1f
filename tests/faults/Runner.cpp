#include "Runner.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kMostSeconds = 20; // of one operation: it takes milliseconds
constexpr long kTimeToForkUs = 3000;

long NowUs()
{
    struct timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1'000'000L + now.tv_nsec / 1000;
}

void SleepUntil(long momentUs)
{
    const struct timespec moment = {momentUs / 1'000'000, momentUs % 1'000'000 * 1000};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr);
}

} // namespace

bool Run::WasKilled() const
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

bool Run::WasHanging() const
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
}

bool Run::HasCrashed() const
{
    return WIFSIGNALED(status) || !isTold || WEXITSTATUS(status) != 0;
}

bool Runner::FindLibrary()
{
    fArm = reinterpret_cast<FaultsArm>(dlsym(RTLD_DEFAULT, "faults_arm"));
    fCount = reinterpret_cast<FaultsCount>(dlsym(RTLD_DEFAULT, "faults_count"));
    fFired = reinterpret_cast<FaultsFired>(dlsym(RTLD_DEFAULT, "faults_fired"));
    return fArm != nullptr && fCount != nullptr && fFired != nullptr;
}

/// In the child: at the moment `beginUs`.
Run Runner::CarryHere(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
                      long beginUs) const
{
    alarm(kMostSeconds);
    // What is done by a bare name, its folder forgotten, shows among the foreign files.
    if (chdir(scene.Path("one/foreign").c_str()) != 0) {
        _exit(2);
    }
    fArm(&plan);
    SleepUntil(beginUs);
    Run own;
    const long startUs = NowUs();
    own.result = job.run(scene, answer);
    own.tookUs = NowUs() - startUs;
    own.fired = fFired();
    for (int kind = 0; kind < kFaultKinds; ++kind) {
        own.counts[kind] = fCount(static_cast<FaultKind>(kind));
    }
    return own;
}

Run Runner::Carry(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
                  int killAfterUs) const
{
    int channel[2];
    if (pipe(channel) != 0) {
        std::perror("faults: pipe");
        std::exit(2);
    }
    // Both know the moment when it begins, whoever of them is late.
    const bool willBeKilled = killAfterUs >= 0;
    const long beginUs = willBeKilled ? NowUs() + kTimeToForkUs : 0;
    const pid_t child = fork();
    if (child < 0) {
        std::perror("faults: fork");
        std::exit(2);
    }
    if (child == 0) {
        close(channel[0]);
        const Run own = CarryHere(job, scene, answer, plan, beginUs);
        [[maybe_unused]] const ssize_t written = write(channel[1], &own, sizeof(own));
        _exit(0);
    }
    close(channel[1]);
    if (willBeKilled) {
        SleepUntil(beginUs + killAfterUs);
        kill(child, SIGKILL);
    }
    Run run;
    const bool isTold = read(channel[0], &run, sizeof(run)) == sizeof(run);
    run = isTold ? run : Run();
    run.isTold = isTold;
    close(channel[0]);
    waitpid(child, &run.status, 0);
    return run;
}
