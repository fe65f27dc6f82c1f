// Records what each job of the program does to the disk, and asks of every state in which the
// medium can be when the power goes whether something lies nowhere. The script `run` beside this
// tells of the options.

#include "Controls.h"
#include "PowerJudgement.h"
#include "Stage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Arguments
{
    std::string job;
    int combinations = 1000; // chosen by chance, of each job
    bool isControl = false;
    bool isVerbose = false; // lists the steps, and every kind of loss
};

/// How a job went.
struct Outcome
{
    int calls = 0;
    int steps = 0;
    int syncs = 0;
    long long states = 0;
    long long wrong = 0;
};

/// Goes through the states that one recording allows.
class Outage
{
public:
    Outage(const Arguments& arguments, const Job& job, const Recording& recording)
        : fArguments(arguments), fJob(job), fRecording(recording), fDisk(recording),
          fJudgement(job.task, recording.before, fDisk)
    {
        fOutcome.calls = recording.calls;
        fOutcome.steps = static_cast<int>(recording.steps.size());
        fOutcome.syncs = recording.syncs;
    }

    Outcome Run()
    {
        for (size_t steps = 0; steps <= fDisk.Steps(); ++steps) {
            LoseAtMostTwo(steps);
        }
        std::mt19937 random(static_cast<unsigned>(std::hash<std::string>()(fJob.name)));
        for (int i = 0; i < fArguments.combinations; ++i) {
            LoseByChance(&random);
        }
        return fOutcome;
    }

private:
    /// One thing to lose: what one write wrote, or the end of a volume's order from a step on.
    struct Loss
    {
        int volume = -1; // of the order; a write's is negative
        size_t step = 0;
    };

    std::vector<Loss> LossesAt(size_t steps) const;
    void LoseAtMostTwo(size_t steps);
    void LoseByChance(std::mt19937* random);
    static void Lose(const Loss& loss, Disk::State* state);
    void Judge(const Disk::State& state);
    void Describe(const Disk::State& state, const std::string& lost) const;

    const Arguments& fArguments;
    const Job& fJob;
    const Recording& fRecording;
    const Disk fDisk;
    const PowerJudgement fJudgement;
    Outcome fOutcome;
};

std::vector<Outage::Loss> Outage::LossesAt(size_t steps) const
{
    std::vector<Loss> losses;
    for (const size_t write : fDisk.Unsynced(steps)) {
        losses.push_back({-1, write});
    }
    for (int volume = 0; volume < 2; ++volume) {
        for (size_t step = fDisk.Floor(volume, steps); step < steps; ++step) {
            if (fDisk.Changes(volume, step)) {
                losses.push_back({volume, step});
            }
        }
    }
    return losses;
}

void Outage::Lose(const Loss& loss, Disk::State* state)
{
    if (loss.volume < 0) {
        state->lost.push_back(loss.step);
    } else {
        state->committed[loss.volume] = std::min(state->committed[loss.volume], loss.step);
    }
}

void Outage::LoseAtMostTwo(size_t steps)
{
    const Disk::State all{steps, {steps, steps}, {}};
    Judge(all);
    const std::vector<Loss> losses = LossesAt(steps);
    for (const Loss& loss : losses) {
        Disk::State one = all;
        Lose(loss, &one);
        Judge(one);
    }
    for (size_t i = 0; i < losses.size(); ++i) {
        for (size_t j = i + 1; j < losses.size(); ++j) {
            // Two ends of one order are the longer one alone.
            if (losses[i].volume < 0 || losses[i].volume != losses[j].volume) {
                Disk::State two = all;
                Lose(losses[i], &two);
                Lose(losses[j], &two);
                Judge(two);
            }
        }
    }
}

void Outage::LoseByChance(std::mt19937* random)
{
    const auto upTo = [random](size_t most) {
        return std::uniform_int_distribution<size_t>(0, most)(*random);
    };
    const size_t steps = upTo(fDisk.Steps());
    Disk::State state{steps, {steps, steps}, {}};
    for (int volume = 0; volume < 2; ++volume) {
        const size_t floor = fDisk.Floor(volume, steps);
        state.committed[volume] = floor + upTo(steps - floor);
    }
    const size_t share = 1 + upTo(9); // of ten
    for (const size_t write : fDisk.Unsynced(steps)) {
        if (upTo(9) < share) {
            state.lost.push_back(write);
        }
    }
    Judge(state);
}

void Outage::Judge(const Disk::State& state)
{
    ++fOutcome.states;
    const std::string lost = fJudgement.WhatIsLost(state);
    if (lost.empty()) {
        return;
    }
    if (fOutcome.wrong == 0) {
        Describe(state, lost);
    }
    ++fOutcome.wrong;
}

void Outage::Describe(const Disk::State& state, const std::string& lost) const
{
    const auto& steps = fRecording.steps;
    std::printf("tests/power/run --job \"%s\"\n", fJob.name.c_str());
    for (size_t i = 0; fArguments.isVerbose && i < steps.size(); ++i) {
        std::printf("%8zu %s\n", i + 1, steps[i].what.c_str());
    }
    std::printf("    %s lies nowhere when the power goes after \"%s\"", lost.c_str(),
                state.steps == 0 ? "nothing" : steps[state.steps - 1].what.c_str());
    for (int volume = 0; volume < 2; ++volume) {
        if (state.committed[volume] < state.steps) {
            std::printf("; of volume %s the names and records are lost from \"%s\" on",
                        volume == 0 ? "one" : "two", steps[state.committed[volume]].what.c_str());
        }
    }
    for (const size_t write : state.lost) {
        std::printf("; what \"%s\" wrote is lost", steps[write].what.c_str());
    }
    std::printf("\n");
}

[[noreturn]] void GiveUp(const char* what)
{
    std::fprintf(stderr, "power: %s\n", what);
    std::exit(2);
}

/// In a process of its own: what the operation leaves in it is gone with it.
Outcome RunJob(const Arguments& arguments, const Job& job, const Scene& scene)
{
    scene.Clear();
    job.Prepare(scene);
    int channel[2];
    if (pipe(channel) != 0) {
        GiveUp("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        Recording recording;
        if (chdir(scene.Path("one/foreign").c_str()) != 0 || !Record(job, scene, &recording)) {
            GiveUp("preload the library of watched calls (LD_PRELOAD)");
        }
        const Outcome outcome = Outage(arguments, job, recording).Run();
        std::fflush(nullptr);
        _exit(write(channel[1], &outcome, sizeof(outcome)) == sizeof(outcome) ? 0 : 2);
    }
    close(channel[1]);
    Outcome outcome;
    const bool isTold = read(channel[0], &outcome, sizeof(outcome)) == sizeof(outcome);
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!isTold || status != 0) {
        GiveUp("a job did not come to its end");
    }
    return outcome;
}

bool ReachesDisk(const Job& job)
{
    return job.task.kind != Task::kMakeFolder && job.task.kind != Task::kSettings;
}

int RunAll(const Arguments& arguments, const std::string& root, bool hasVolumes)
{
    const auto start = std::chrono::steady_clock::now();
    const Scene scene(root);
    std::vector<std::pair<std::string, Outcome>> rows;
    Outcome all;
    const bool isControl = arguments.isControl;
    for (const Job& job : isControl ? std::vector<Job>{CarefulMove(), CarelessMove()} : AllJobs()) {
        const bool isMeant = arguments.job.empty() || arguments.job == job.name;
        if (!isMeant || !ReachesDisk(job) || (!hasVolumes && job.NeedsTwoVolumes())) {
            continue;
        }
        const Outcome outcome = RunJob(arguments, job, scene);
        rows.emplace_back(job.name, outcome);
        all.calls += outcome.calls;
        all.steps += outcome.steps;
        all.syncs += outcome.syncs;
        all.states += outcome.states;
        all.wrong += outcome.wrong;
    }
    if (rows.empty()) {
        GiveUp("there is no such job");
    }
    rows.emplace_back("all", all);
    std::printf("\n%-24s %8s %8s %8s %10s %10s\n", "job", "calls", "steps", "syncs", "states",
                "wrong");
    for (const auto& [name, row] : rows) {
        std::printf("%-24s %8d %8d %8d %10lld %10lld\n", name.c_str(), row.calls, row.steps,
                    row.syncs, row.states, row.wrong);
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%.1f s\n", took.count());
    scene.Clear();
    if (isControl) {
        return rows[0].second.wrong == 0 && rows[1].second.wrong > 0 ? 0 : 1;
    }
    return all.wrong == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--verbose") {
            arguments.isVerbose = true;
        } else if (word == "--control") {
            arguments.isControl = true;
        } else if (word == "--job" && i + 1 < count) {
            arguments.job = words[++i];
        } else if (word == "--combinations" && i + 1 < count) {
            arguments.combinations = std::atoi(words[++i]);
        } else {
            std::fprintf(stderr,
                         "usage: %s [--job NAME] [--combinations COUNT] [--control] [--verbose]\n",
                         words[0]);
            return 2;
        }
    }
    return OnStage("", [&](const std::string& root, bool hasVolumes) {
        return RunAll(arguments, root, hasVolumes);
    });
}
