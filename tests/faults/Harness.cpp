// Runs each job of the program with each of its system calls failing in each way, or killed there,
// and judges what is on the disk then.
//
//     LD_PRELOAD=libfaults.so faults-run [--sample COUNT] [--job NAME] [--call KIND] [--kills
//     COUNT] [--verbose]
//
// With --kills the jobs are killed at random moments instead, so many times each.
//
// Needs two memory file systems of its own where the system allows it (a user namespace); with one
// volume alone the jobs between volumes are left out, and it says so.

#include "Points.h"

#include "../kits/storage/OwnVolume.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr unsigned kMostSeconds = 20; // of one operation: it takes milliseconds

struct Arguments
{
    size_t sample = 0; // 0: all
    std::string job;
    std::string call;
    int kills = 0;
    bool isVerbose = false;
};

/// What is preloaded.
struct Library
{
    FaultsArm arm = nullptr;
    FaultsCount count = nullptr;
    FaultsFired fired = nullptr;

    bool Find()
    {
        arm = reinterpret_cast<FaultsArm>(dlsym(RTLD_DEFAULT, "faults_arm"));
        count = reinterpret_cast<FaultsCount>(dlsym(RTLD_DEFAULT, "faults_count"));
        fired = reinterpret_cast<FaultsFired>(dlsym(RTLD_DEFAULT, "faults_fired"));
        return arm != nullptr && count != nullptr && fired != nullptr;
    }
};

/// What the process that ran the operation tells of it.
struct Report
{
    int counts[kFaultKinds] = {};
    int fired = 0;
    bool saysWhole = false;
};

struct Tally
{
    size_t points = 0;
    size_t killed = 0;
    size_t faults = 0;
};

class Harness
{
public:
    Harness(const Scene& scene, const Library& library, bool isVerbose)
        : fScene(scene), fLibrary(library), fIsVerbose(isVerbose)
    {
    }

    /// Counts the calls of a job that meets no fault.
    bool Count(const Job& job, int (&counts)[kFaultKinds]);
    void Run(const Point& point);
    /// Kills the job at `count` random moments.
    void KillAtRandom(const Job& job, int count);
    void PrintTable() const;
    size_t Faults() const { return fFaults; }

private:
    /// `killAfter` is in microseconds; negative: not at all.
    int RunJob(const Job& job, const FaultPlan& plan, Report* report, int killAfter = -1);
    std::vector<std::string> JudgeEnd(const Point& point, int status, const Report& report,
                                      const Snapshot& before);

    const Scene& fScene;
    const Library& fLibrary;
    const bool fIsVerbose;
    std::map<std::string, std::map<FaultKind, Tally>> fTallies; // by job
    std::vector<std::string> fOrder;
    size_t fFaults = 0;
};

/// Runs the operation in a child; returns how that ended.
int Harness::RunJob(const Job& job, const FaultPlan& plan, Report* report, int killAfter)
{
    int channel[2];
    if (pipe(channel) != 0) {
        std::perror("faults: pipe");
        std::exit(2);
    }
    const pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        alarm(kMostSeconds);
        fLibrary.arm(&plan);
        Report own;
        own.saysWhole = job.run(fScene);
        own.fired = fLibrary.fired();
        for (int kind = 0; kind < kFaultKinds; ++kind) {
            own.counts[kind] = fLibrary.count(static_cast<FaultKind>(kind));
        }
        [[maybe_unused]] const ssize_t written = write(channel[1], &own, sizeof(own));
        _exit(0);
    }
    close(channel[1]);
    if (killAfter >= 0) {
        usleep(static_cast<useconds_t>(killAfter));
        kill(child, SIGKILL);
    }
    const bool isTold = read(channel[0], report, sizeof(*report)) == sizeof(*report);
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return isTold || WIFSIGNALED(status) ? status : W_EXITCODE(99, 0);
}

bool Harness::Count(const Job& job, int (&counts)[kFaultKinds])
{
    fOrder.push_back(job.name);
    fScene.Clear();
    job.prepare(fScene);
    const Snapshot before = fScene.Look();
    const FaultPlan plan{fScene.Root().c_str(), kFaultOpen, kFaultNone, 0, false};
    Report report;
    const int status = RunJob(job, plan, &report);
    const std::vector<std::string> faults = JudgeEnd({&job, plan}, status, report, before);
    for (const std::string& fault : faults) {
        std::printf("%s without any fault: %s\n", job.name.c_str(), fault.c_str());
        ++fFaults;
    }
    std::memcpy(counts, report.counts, sizeof(report.counts));
    return faults.empty();
}

std::vector<std::string> Harness::JudgeEnd(const Point& point, int status, const Report& report,
                                           const Snapshot& before)
{
    const bool isKillPlanned = point.plan.action <= kFaultKillBefore;
    Ending ending;
    ending.wasKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL && isKillPlanned;
    ending.saysWhole = !ending.wasKilled && report.saysWhole;
    ending.hadFault = ending.wasKilled || report.fired > 0;
    ending.canLeaveParts = report.fired > 0 && point.plan.kind == kFaultUnlink;
    std::vector<std::string> faults = Judge(point.job->task, ending, fScene, before, fScene.Look());
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) {
        faults.push_back("it did not come to its end");
    } else if (!ending.wasKilled && (!WIFEXITED(status) || WEXITSTATUS(status) != 0)) {
        faults.push_back("it crashed, with status " + std::to_string(status));
    }
    return faults;
}

void Harness::Run(const Point& point)
{
    fScene.Clear();
    point.job->prepare(fScene);
    const Snapshot before = fScene.Look();
    Report report;
    const int status = RunJob(*point.job, point.plan, &report);
    const std::vector<std::string> faults = JudgeEnd(point, status, report, before);

    Tally& tally = fTallies[point.job->name][point.plan.kind];
    ++tally.points;
    tally.killed += WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL ? 1 : 0;
    tally.faults += faults.empty() ? 0 : 1;
    fFaults += faults.empty() ? 0 : 1;
    if (!faults.empty() || fIsVerbose) {
        std::printf("%s: %s %d %s%s%s\n", point.job->name.c_str(), kFaultNames[point.plan.kind],
                    point.plan.nth, ActionName(point.plan.action),
                    point.plan.isLasting ? " from there on" : "",
                    report.fired == 0 && !WIFSIGNALED(status) ? " (not met)" : "");
        for (const std::string& fault : faults) {
            std::printf("    %s\n", fault.c_str());
        }
    }
}

void Harness::KillAtRandom(const Job& job, int count)
{
    using Clock = std::chrono::steady_clock;
    const FaultPlan plan{fScene.Root().c_str(), kFaultOpen, kFaultNone, 0, false};
    constexpr int kRuns = 3;
    int shortest = 1'000'000;
    int killed = 0;
    int faulty = 0;
    for (int i = -kRuns; killed < count && i < count * 20; ++i) {
        fScene.Clear();
        job.prepare(fScene);
        const Snapshot before = fScene.Look();
        Report report;
        const auto start = Clock::now();
        // The first ones run to their ends, to tell how long it takes.
        const int status =
            RunJob(job, plan, &report, i < 0 ? -1 : static_cast<int>(random() % (shortest + 1)));
        if (i < 0) {
            const auto took =
                std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
            shortest = std::min(shortest, static_cast<int>(took.count()));
        }
        const bool wasKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        killed += wasKilled ? 1 : 0;
        const Ending ending{wasKilled, !wasKilled && report.saysWhole, wasKilled, false};
        const auto faults = Judge(job.task, ending, fScene, before, fScene.Look());
        faulty += faults.empty() ? 0 : 1;
        for (const std::string& fault : faults) {
            std::printf("%s, killed at random: %s\n", job.name.c_str(), fault.c_str());
        }
    }
    fFaults += static_cast<size_t>(faulty);
    std::printf("%-22s killed %d times, within %d us: %d faults\n", job.name.c_str(), killed,
                shortest, faulty);
}

void Harness::PrintTable() const
{
    std::printf("\n%-22s", "points");
    for (const char* name : kFaultNames) {
        std::printf(" %8.8s", name);
    }
    std::printf(" %8s %8s %8s\n", "all", "killed", "faults");
    Tally all;
    for (const std::string& job : fOrder) {
        std::printf("%-22s", job.c_str());
        Tally row;
        for (int kind = 0; kind < kFaultKinds; ++kind) {
            Tally cell;
            const auto tallies = fTallies.find(job);
            if (tallies != fTallies.end()) {
                const auto found = tallies->second.find(static_cast<FaultKind>(kind));
                cell = found == tallies->second.end() ? Tally() : found->second;
            }
            std::printf(" %8zu", cell.points);
            row.points += cell.points;
            row.killed += cell.killed;
            row.faults += cell.faults;
        }
        std::printf(" %8zu %8zu %8zu\n", row.points, row.killed, row.faults);
        all.points += row.points;
        all.killed += row.killed;
        all.faults += row.faults;
    }
    std::printf("%zu points, %zu of them killed, %zu with faults\n", all.points, all.killed,
                fFaults);
}

/// Two file systems in memory at the scene's folders; false where the system allows none.
bool MountVolumes(const std::string& root)
{
    if (!EnterOwnMounts()) {
        return false;
    }
    for (const char* name : {"/one", "/two"}) {
        if (mount("tmpfs", (root + name).c_str(), "tmpfs", 0, "size=64m,mode=755") != 0) {
            return false;
        }
    }
    return true;
}

bool Read(int count, char** words, Arguments* arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        const bool hasValue = i + 1 < count;
        if (word == "--sample" && hasValue) {
            arguments->sample = std::strtoul(words[++i], nullptr, 10);
        } else if (word == "--job" && hasValue) {
            arguments->job = words[++i];
        } else if (word == "--call" && hasValue) {
            arguments->call = words[++i];
        } else if (word == "--kills" && hasValue) {
            arguments->kills = std::atoi(words[++i]);
        } else if (word == "--verbose") {
            arguments->isVerbose = true;
        } else {
            std::fprintf(stderr,
                         "usage: %s [--sample COUNT] [--job NAME] [--call KIND] [--kills COUNT] "
                         "[--verbose]\n",
                         words[0]);
            return false;
        }
    }
    return true;
}

int RunAll(const Arguments& arguments, const std::string& root, const Library& library)
{
    const bool hasVolumes = MountVolumes(root);
    if (!hasVolumes) {
        std::printf(
            "This system allows no mounts of our own: jobs between volumes are left out.\n");
    }
    const Scene scene(root);
    setenv("HOME", scene.Path("one/home").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_CONFIG_HOME");

    const auto start = std::chrono::steady_clock::now();
    const std::vector<Job> jobs = AllJobs();
    Harness harness(scene, library, arguments.isVerbose);
    std::vector<Point> points;
    for (const Job& job : jobs) {
        if ((job.needsTwoVolumes && !hasVolumes) ||
            (!arguments.job.empty() && arguments.job != job.name)) {
            continue;
        }
        if (arguments.kills > 0) {
            harness.KillAtRandom(job, arguments.kills);
            continue;
        }
        int counts[kFaultKinds] = {};
        harness.Count(job, counts);
        const auto more = PointsOf(job, counts, arguments.call, root.c_str());
        points.insert(points.end(), more.begin(), more.end());
    }
    std::printf("%zu points in all\n", points.size());
    // A sample is spread evenly over all.
    const size_t wanted = arguments.sample == 0 ? points.size() : arguments.sample;
    for (size_t i = 0; i < std::min(wanted, points.size()); ++i) {
        harness.Run(points[i * points.size() / std::min(wanted, points.size())]);
    }
    if (arguments.kills == 0) {
        harness.PrintTable();
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%.1f s\n", took.count());
    scene.Clear();
    return harness.Faults() == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    Arguments arguments;
    Library library;
    if (!Read(count, words, &arguments)) {
        return 2;
    }
    if (!library.Find()) {
        std::fprintf(stderr, "faults: preload the library of faults (LD_PRELOAD)\n");
        return 2;
    }
    umask(022);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const char* base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string root = std::string(base) + "/norvane-faults-XXXXXX";
    if (mkdtemp(root.data()) == nullptr) {
        std::perror("faults: mkdtemp");
        return 2;
    }
    mkdir((root + "/one").c_str(), 0755);
    mkdir((root + "/two").c_str(), 0755);
    // The mounts are of a child's, so that the folder can be removed after it.
    const pid_t child = fork();
    if (child == 0) {
        const int result = RunAll(arguments, root, library);
        std::fflush(nullptr);
        _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    for (const char* name : {"/one/source", "/one/target", "/one/foreign", "/one", "/two/source",
                             "/two/target", "/two/foreign", "/two", ""}) {
        rmdir((root + name).c_str());
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}
