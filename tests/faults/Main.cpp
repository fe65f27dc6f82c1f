// Runs each job of the program with each of its system calls failing in each way, or killed there,
// and judges what is on the disk then. The script `run` beside this tells of the options.
//
// Needs two memory file systems of its own where the system allows it (a user namespace); with one
// volume alone the jobs between volumes are left out, and it says so.

#include "Harness.h"
#include "Stage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

struct Arguments
{
    size_t sample = 0; // 0: all
    std::string job;
    std::string call;
    int kills = 0;
    Share share;
    std::string folder;  // with the two volumes; empty: ours
    bool isBare = false; // without faults
    bool isVerbose = false;
};

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
    } else if (word == "--at") {
        arguments->folder = value;
    } else {
        return word == "--share" && arguments->share.Read(value);
    }
    return true;
}

bool Read(int count, char** words, Arguments* arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--verbose") {
            arguments->isVerbose = true;
        } else if (word == "--bare") {
            arguments->isBare = true;
        } else if (i + 1 == count || !ReadOption(word, words[++i], arguments)) {
            std::fprintf(stderr,
                         "usage: %s [--sample COUNT] [--job NAME] [--call KIND] [--kills COUNT] "
                         "[--share N/M] [--at FOLDER] [--bare] [--verbose]\n",
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
    if (arguments.isBare) {
        return;
    }
    // A sample is spread evenly over all, and so is a share.
    const size_t wanted =
        arguments.sample == 0 ? points.size() : std::min(arguments.sample, points.size());
    for (size_t i = arguments.share.number; i < wanted; i += arguments.share.count) {
        harness->RunPoint(points[i * points.size() / wanted]);
    }
}

int RunAll(const Arguments& arguments, const std::string& root, bool hasVolumes,
           const Runner& runner)
{
    const Scene scene(root);
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
    if (arguments.isBare) {
        std::printf("%zu jobs, %zu with faults\n", jobs.size(), harness.Faults());
    } else {
        harness.PrintTables();
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
    Runner runner;
    if (!Read(count, words, &arguments)) {
        return 2;
    }
    if (!runner.FindLibrary()) {
        std::fprintf(stderr, "faults: preload the library of faults (LD_PRELOAD)\n");
        return 2;
    }
    return OnStage(arguments.folder, [&](const std::string& root, bool hasVolumes) {
        return RunAll(arguments, root, hasVolumes, runner);
    });
}
