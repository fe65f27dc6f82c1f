// Runs each job of the program while somebody else does one thing to its files, between any two of
// its system calls, and judges what is on the disk then. The script `run` beside this tells of the
// options, of what is wrong, and of what is left out.

#include "Controls.h"
#include "RaceJudgement.h"
#include "RaceTable.h"
#include "Stage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

namespace {

struct Arguments
{
    size_t sample = 0; // 0: all
    std::string job;
    std::string deed;
    int call = 0; // 0: all
    Share share;
    std::string folder; // with the two volumes; empty: ours
    bool isControl = false;
    bool isVerbose = false;
    bool showsCalls = false;
};

/// One point: a job, and what somebody else does before which call.
struct RacePoint
{
    const Job* job;
    const Adversary::Deed* deed;
    int nth;
};

class Races
{
public:
    Races(const Arguments& arguments, const Scene& scene, const RaceRunner& runner)
        : fArguments(arguments), fScene(scene), fRunner(runner)
    {
    }

    int Run(const std::vector<Job>& jobs)
    {
        const std::vector<RacePoint> points = PointsOf(jobs);
        std::printf("%zu points in all\n", points.size());
        // A sample is spread evenly over all, and so is a share.
        const size_t wanted =
            fArguments.sample == 0 ? points.size() : std::min(fArguments.sample, points.size());
        for (size_t i = fArguments.share.number; i < wanted; i += fArguments.share.count) {
            RunPoint(points[i * points.size() / wanted]);
        }
        fTable.Print();
        return fWrong == 0 ? 0 : 1;
    }

private:
    std::vector<RacePoint> PointsOf(const std::vector<Job>& jobs);
    bool RunOnce(const RacePoint& point, RaceRun* run,
                 std::vector<RaceJudgement::Fault>* faults) const;
    void RunPoint(const RacePoint& point);
    void Complain(const RacePoint& point, const RaceRun& run,
                  const std::vector<RaceJudgement::Fault>& faults);

    const Arguments& fArguments;
    const Scene& fScene;
    const RaceRunner& fRunner;
    RaceTable fTable;
    size_t fWrong = 0;
};

bool Races::RunOnce(const RacePoint& point, RaceRun* run,
                    std::vector<RaceJudgement::Fault>* faults) const
{
    fScene.Clear();
    point.job->Prepare(fScene);
    const Snapshot before = fScene.Look();
    const bool isFile = before.at(point.job->task.source).kind == 'f';
    const Places places(point.job->task, isFile);
    *run = fRunner.Carry(*point.job, fScene, places, point.deed, point.nth);
    *faults = RaceJudgement(fScene, *point.job, places, before, *run, fScene.Look()).Result();
    return faults->empty();
}

/// Before any call, and before none: nobody else is there then, and all has to be well.
std::vector<RacePoint> Races::PointsOf(const std::vector<Job>& jobs)
{
    std::vector<RacePoint> points;
    for (const Job& job : jobs) {
        RaceRun run;
        std::vector<RaceJudgement::Fault> faults;
        const RacePoint alone{&job, nullptr, 0};
        if (!RunOnce(alone, &run, &faults)) {
            Complain(alone, run, faults);
        }
        for (const Adversary::Deed& deed : Adversary::Deeds()) {
            if (!fArguments.deed.empty() && fArguments.deed != deed.name) {
                continue;
            }
            for (int nth = 1; nth <= static_cast<int>(run.report.calls.size()); ++nth) {
                if (fArguments.call == 0 || fArguments.call == nth) {
                    points.push_back({&job, &deed, nth});
                }
            }
        }
    }
    return points;
}

void Races::RunPoint(const RacePoint& point)
{
    RaceRun run;
    std::vector<RaceJudgement::Fault> faults;
    RunOnce(point, &run, &faults);
    RaceTable::Tally& tally = fTable.At(point.job->name, point.deed->name);
    ++tally.points;
    tally.acted += run.report.hasActed ? 1 : 0;
    tally.wrong += faults.empty() ? 0 : 1;
    if (!faults.empty() || fArguments.isVerbose) {
        Complain(point, run, faults);
    }
}

void Races::Complain(const RacePoint& point, const RaceRun& run,
                     const std::vector<RaceJudgement::Fault>& faults)
{
    const std::string deed = point.deed == nullptr ? "nobody else" : point.deed->name;
    const std::string where = "tests/races/run --job \"" + point.job->name + "\" --action \"" +
                              deed + "\" --call " + std::to_string(point.nth);
    fWrong += faults.empty() ? 0 : 1;
    bool isNew = false;
    for (const RaceJudgement::Fault& fault : faults) {
        isNew = fTable.Note(deed, fault.what, where) || isNew;
    }
    // One of each kind tells enough.
    if (!isNew && !fArguments.isVerbose && fArguments.call == 0) {
        return;
    }
    std::printf("%s%s\n", where.c_str(), run.report.hasActed ? "" : " (nothing to do it to)");
    for (const RaceJudgement::Fault& fault : faults) {
        std::printf("    %s: %s\n", fault.path.c_str(), fault.what.c_str());
    }
    for (size_t i = 0; fArguments.showsCalls && i < run.report.calls.size(); ++i) {
        const Report::Call& call = run.report.calls[i];
        std::printf("%8zu %s%-9s %s\n", i + 1,
                    run.report.hasActed && static_cast<int>(i) + 1 == point.nth ? "* " : "  ",
                    kFaultNames[call.kind], call.path.c_str());
    }
}

bool ReadOption(const std::string& word, const char* value, Arguments* arguments)
{
    if (word == "--sample") {
        arguments->sample = std::strtoul(value, nullptr, 10);
    } else if (word == "--job") {
        arguments->job = value;
    } else if (word == "--action") {
        arguments->deed = value;
    } else if (word == "--call") {
        arguments->call = std::atoi(value);
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
        } else if (word == "--control") {
            arguments->isControl = true;
        } else if (word == "--calls") {
            arguments->showsCalls = true;
        } else if (i + 1 == count || !ReadOption(word, words[++i], arguments)) {
            std::fprintf(stderr,
                         "usage: %s [--sample COUNT] [--job NAME] [--action NAME] [--call NUMBER] "
                         "[--share N/M] [--at FOLDER] [--control] [--verbose] [--calls]\n",
                         words[0]);
            return false;
        }
    }
    return true;
}

bool IsRaced(const Job& job)
{
    switch (job.task.kind) {
    case Task::kCopy:
    case Task::kMove:
    case Task::kTrash:
    case Task::kDelete:
        return true;
    default:
        return false;
    }
}

/// Whether the judge sees what is wrong, and only that.
int RunControl(const Arguments& arguments, const Scene& scene, const RaceRunner& runner)
{
    const bool isCarefulRight = Races(arguments, scene, runner).Run({CarefulMove()}) == 0;
    const bool isCarelessWrong = Races(arguments, scene, runner).Run({CarelessMove()}) != 0;
    std::printf("the careful move: %s; the careless one: %s\n", isCarefulRight ? "right" : "WRONG",
                isCarelessWrong ? "wrong, as it has to be" : "NOT SEEN");
    return isCarefulRight && isCarelessWrong ? 0 : 1;
}

int RunAll(const Arguments& arguments, const std::string& root, bool hasVolumes,
           const RaceRunner& runner)
{
    const auto start = std::chrono::steady_clock::now();
    const Scene scene(root);
    if (arguments.isControl) {
        return RunControl(arguments, scene, runner);
    }
    std::vector<Job> jobs;
    for (Job& job : AllJobs()) {
        const bool isMeant = arguments.job.empty() || arguments.job == job.name;
        if (isMeant && IsRaced(job) && (hasVolumes || !job.NeedsTwoVolumes())) {
            jobs.push_back(std::move(job));
        }
    }
    if (jobs.empty()) {
        std::fprintf(stderr, "races: there is no such job\n");
        return 2;
    }
    const int result = Races(arguments, scene, runner).Run(jobs);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%.1f s\n", took.count());
    scene.Clear();
    return result;
}

} // namespace

int main(int count, char** words)
{
    Arguments arguments;
    RaceRunner runner;
    if (!Read(count, words, &arguments)) {
        return 2;
    }
    if (!runner.FindLibrary()) {
        std::fprintf(stderr, "races: preload the library of watched calls (LD_PRELOAD)\n");
        return 2;
    }
    // The contents of whole scenes come and go all the time.
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
    mallopt(M_TOP_PAD, 16 * 1024 * 1024);
    return OnStage(arguments.folder, [&](const std::string& root, bool hasVolumes) {
        return RunAll(arguments, root, hasVolumes, runner);
    });
}
