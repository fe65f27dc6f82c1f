// Runs each job of the program with each of its system calls failing in each way, or killed there,
// and judges what is on the disk then. The script `run` beside this tells of the options.
//
// Needs two memory file systems of its own where the system allows it (a user namespace); with one
// volume alone the jobs between volumes are left out, and it says so.

#include "Harness.h"

#include "../kits/storage/OwnVolume.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

namespace {

struct Arguments
{
    size_t sample = 0; // 0: all
    std::string job;
    std::string call;
    int kills = 0;
    // Of several that share the points, which one this is.
    size_t share = 0;
    size_t shares = 1;
    bool isVerbose = false;
};

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

/// "1/2" is the first of two.
bool ReadShare(const std::string& word, Arguments* arguments)
{
    const size_t slash = word.find('/');
    const size_t number = std::strtoul(word.c_str(), nullptr, 10);
    arguments->share = number - 1;
    arguments->shares =
        slash == std::string::npos ? 0 : std::strtoul(word.c_str() + slash + 1, nullptr, 10);
    return number > 0 && number <= arguments->shares;
}

bool ReadOption(const std::string& word, const char* value, Arguments* arguments)
{
    if (word == "--sample") {
        arguments->sample = std::strtoul(value, nullptr, 10);
    } else if (word == "--job") {
        arguments->job = value;
    } else if (word == "--call") {
        arguments->call = value;
    } else if (word == "--kills") {
        arguments->kills = std::atoi(value);
    } else {
        return word == "--share" && ReadShare(value, arguments);
    }
    return true;
}

bool Read(int count, char** words, Arguments* arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--verbose") {
            arguments->isVerbose = true;
        } else if (i + 1 == count || !ReadOption(word, words[++i], arguments)) {
            std::fprintf(stderr,
                         "usage: %s [--sample COUNT] [--job NAME] [--call KIND] [--kills COUNT] "
                         "[--share N/M] [--verbose]\n",
                         words[0]);
            return false;
        }
    }
    return true;
}

std::vector<Job> JobsFor(const Arguments& arguments, bool hasVolumes)
{
    std::vector<Job> jobs;
    for (Job& job : AllJobs()) {
        if ((hasVolumes || !job.NeedsTwoVolumes()) &&
            (arguments.job.empty() || arguments.job == job.name)) {
            jobs.push_back(std::move(job));
        }
    }
    return jobs;
}

void RunPoints(const Arguments& arguments, const std::vector<Job>& jobs, const std::string& root,
               Harness* harness)
{
    std::vector<Point> points;
    for (const Job& job : jobs) {
        int counts[kFaultKinds] = {};
        harness->Count(job, counts);
        const auto more = PointsOf(job, counts, arguments.call, root.c_str());
        points.insert(points.end(), more.begin(), more.end());
    }
    std::printf("%zu points in all\n", points.size());
    // A sample is spread evenly over all, and so is a share.
    const size_t wanted =
        arguments.sample == 0 ? points.size() : std::min(arguments.sample, points.size());
    for (size_t i = arguments.share; i < wanted; i += arguments.shares) {
        harness->RunPoint(points[i * points.size() / wanted]);
    }
}

int RunAll(const Arguments& arguments, const std::string& root, const Runner& runner)
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
    Harness harness(scene, runner, arguments.isVerbose);
    const std::vector<Job> jobs = JobsFor(arguments, hasVolumes);
    if (jobs.empty()) {
        std::fprintf(stderr, "faults: there is no such job\n");
        return 2;
    }
    if (arguments.kills > 0) {
        for (const Job& job : jobs) {
            harness.KillAtRandom(job, arguments.kills);
        }
    } else {
        RunPoints(arguments, jobs, root, &harness);
    }
    harness.PrintTables();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%.1f s\n", took.count());
    scene.Clear();
    return harness.Faults() == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    Arguments arguments;
    Runner runner;
    if (!Read(count, words, &arguments)) {
        return 2;
    }
    if (!runner.FindLibrary()) {
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
        const int result = RunAll(arguments, root, runner);
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
