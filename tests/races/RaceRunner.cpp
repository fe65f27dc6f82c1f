#include "RaceRunner.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kMostSeconds = 20; // of one operation: it takes milliseconds

/// In the process of the operation.
struct Race
{
    const Scene* scene;
    const Places* places;
    const Adversary::Deed* deed;
    int nth;
    int channel;
    Report report;

    void Save(const std::string& bytes) const
    {
        if (write(channel, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            _exit(2);
        }
    }

    void Act()
    {
        report.atAct = scene->Look();
        const bool isDone = Adversary(*scene, *places).Act(*deed);
        report.afterAct = scene->Look();
        report.hasActed = isDone || report.atAct != report.afterAct;
        report.actedBefore = nth;
        Save(report.FlattenedAct());
    }

    void Before(const WatchedCall& call)
    {
        report.calls.push_back({call.kind, std::string(call.path + scene->Root().size())});
        std::string& path = report.calls.back().path;
        path.erase(0, path.starts_with("/") ? 1 : 0);
        if (deed != nullptr && call.number == nth) {
            Act();
        }
    }
};

Race* gRace = nullptr;

void Before(const WatchedCall& call)
{
    gRace->Before(call);
}

std::string ReadAll(int file)
{
    std::string bytes;
    char buffer[64 * 1024];
    off_t at = 0;
    for (ssize_t count = pread(file, buffer, sizeof(buffer), at); count > 0;
         count = pread(file, buffer, sizeof(buffer), at)) {
        bytes.append(buffer, static_cast<size_t>(count));
        at += count;
    }
    return bytes;
}

[[noreturn]] void GiveUp(const char* what)
{
    std::perror(what);
    std::exit(2);
}

} // namespace

bool RaceRun::WasHanging() const
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
}

bool RaceRun::HasCrashed() const
{
    return WIFSIGNALED(status) || WEXITSTATUS(status) != 0 || !report.isFinished;
}

bool RaceRunner::FindLibrary()
{
    fArm = reinterpret_cast<WatchArm>(dlsym(RTLD_DEFAULT, "watch_arm"));
    return fArm != nullptr;
}

RaceRun RaceRunner::Carry(const Job& job, const Scene& scene, const Places& places,
                          const Adversary::Deed* deed, int nth) const
{
    const int channel = memfd_create("race", MFD_CLOEXEC);
    if (channel < 0) {
        GiveUp("memfd_create");
    }
    const pid_t child = fork();
    if (child < 0) {
        GiveUp("fork");
    }
    if (child == 0) {
        alarm(kMostSeconds);
        // What is done by a bare name, its folder forgotten, shows among the foreign files.
        if (chdir(scene.Path("one/foreign").c_str()) != 0) {
            _exit(2);
        }
        Race race{&scene, &places, deed, nth, channel, {}};
        gRace = &race;
        fArm(scene.Root().c_str(), Before, nullptr);
        race.report.result = job.run(scene, job.answer);
        fArm("/-", nullptr, nullptr);
        race.report.shown = ShownByQuestions();
        race.report.isFinished = true;
        if (race.report.actedBefore == 0) {
            race.Save(race.report.FlattenedAct());
        }
        race.Save(race.report.FlattenedEnd());
        _exit(0);
    }
    RaceRun run;
    waitpid(child, &run.status, 0);
    run.report.Unflatten(ReadAll(channel));
    close(channel);
    return run;
}
