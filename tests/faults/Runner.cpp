#include "Runner.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kMostSeconds = 20; // of one operation: it takes milliseconds

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

void Runner::RunInChild(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
                        int channel) const
{
    alarm(kMostSeconds);
    // What is done by a bare name, its folder forgotten, shows among the foreign files.
    if (chdir(scene.Path("one/foreign").c_str()) != 0) {
        _exit(2);
    }
    fArm(&plan);
    Run own;
    [[maybe_unused]] const ssize_t begun = write(channel, "", 1);
    own.result = job.run(scene, answer);
    own.fired = fFired();
    for (int kind = 0; kind < kFaultKinds; ++kind) {
        own.counts[kind] = fCount(static_cast<FaultKind>(kind));
    }
    [[maybe_unused]] const ssize_t written = write(channel, &own, sizeof(own));
}

Run Runner::Carry(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
                  int killAfterUs) const
{
    int channel[2];
    if (pipe(channel) != 0) {
        std::perror("faults: pipe");
        std::exit(2);
    }
    const pid_t child = fork();
    if (child < 0) {
        std::perror("faults: fork");
        std::exit(2);
    }
    if (child == 0) {
        close(channel[0]);
        RunInChild(job, scene, answer, plan, channel[1]);
        _exit(0);
    }
    close(channel[1]);
    char begun = 0;
    [[maybe_unused]] const ssize_t hasBegun = read(channel[0], &begun, 1);
    const auto start = std::chrono::steady_clock::now();
    if (killAfterUs >= 0) {
        usleep(static_cast<useconds_t>(killAfterUs));
        kill(child, SIGKILL);
    }
    Run run;
    const bool isTold = read(channel[0], &run, sizeof(run)) == sizeof(run);
    run = isTold ? run : Run();
    run.isTold = isTold;
    run.tookUs = static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(
                                      std::chrono::steady_clock::now() - start)
                                      .count());
    close(channel[0]);
    waitpid(child, &run.status, 0);
    return run;
}
