#include "Harness.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Numbers states of the disk, but for what is different each time: names made by chance, and
/// dates.
size_t NumberOf(const Snapshot& state)
{
    size_t number = 0;
    const auto add = [&number](size_t hash) {
        number = number * 1'000'003 + hash;
    };
    for (const auto& [path, item] : state) {
        const size_t chance = path.find("/.norvane-");
        const bool isRecord = path.ends_with(".trashinfo");
        add(std::hash<std::string>()(path.substr(0, chance)));
        add(isRecord ? item.text.size() : std::hash<std::string>()(item.text));
        add(item.mode);
    }
    return number;
}

} // namespace

Snapshot Harness::Prepare(const Job& job) const
{
    fScene.Clear();
    job.Prepare(fScene);
    return fScene.Look();
}

FaultPlan Harness::NoFault() const
{
    return {fScene.Root().c_str(), kFaultOpen, kFaultNone, 0, false};
}

Harness::Complaints Harness::JudgeRun(const Point& point, const Run& run,
                                      const Snapshot& before) const
{
    const FaultPlan& plan = point.plan;
    Ending ending;
    ending.wasKilled = run.WasKilled();
    ending.saysWhole = !ending.wasKilled && run.result.isWhole;
    ending.wasTold = run.result.wasTold;
    ending.hadFault = ending.wasKilled || run.fired > 0;
    // When nothing can be looked into any more, nothing can be cleaned up either.
    const bool isBlind = plan.isLasting && (plan.kind == kFaultOpen || plan.kind == kFaultStat ||
                                            plan.kind == kFaultList);
    ending.canLeaveParts = run.fired > 0 && (plan.kind == kFaultUnlink || isBlind);
    ending.losesAllWritten = plan.kind == kFaultClose && plan.isLasting;
    ending.canSeemGone = plan.action == ENOENT;
    ending.canLoseAttributes = plan.kind == kFaultAttributes && plan.action == EOPNOTSUPP;
    Complaints complaints = Judge(point.job->task, ending, fScene, before, fScene.Look());
    if (run.WasHanging()) {
        complaints.push_back("it did not come to its end");
    } else if (!ending.wasKilled && run.HasCrashed()) {
        complaints.push_back("it crashed, with status " + std::to_string(run.status));
    }
    return complaints;
}

Harness::Complaints Harness::DoOnceMore(const Job& job, const Snapshot& before) const
{
    Snapshot left = fScene.Look();
    if (left.count(job.task.source) == 0) {
        job.makeItem(fScene); // it was all done: the next one of that name
        left = fScene.Look();
    }
    Job again = job;
    again.task = OnceMore(job.task, left);
    const Run run = fRunner.Carry(again, fScene, AnswerOfSecondTime(), NoFault());
    Complaints complaints = JudgeRun({&again, NoFault()}, run, left);
    const Complaints lost = WhatIsLost(job.task, before, fScene.Look());
    complaints.insert(complaints.end(), lost.begin(), lost.end());
    for (std::string& complaint : complaints) {
        complaint = "once more: " + complaint;
    }
    return complaints;
}

void Harness::Complain(const std::string& where, const Complaints& complaints)
{
    if (!complaints.empty() || fIsVerbose) {
        std::printf("%s\n", where.c_str());
    }
    for (const std::string& complaint : complaints) {
        std::printf("    %s\n", complaint.c_str());
    }
    fFaults += complaints.empty() ? 0 : 1;
}

void Harness::Count(const Job& job, int (&counts)[kFaultKinds])
{
    fHasPoints = true;
    fTable.AddJob(job.name);
    const Snapshot before = Prepare(job);
    const Run run = fRunner.Carry(job, fScene, job.answer, NoFault());
    Complain(job.name + " without any fault", JudgeRun({&job, NoFault()}, run, before));
    std::memcpy(counts, run.counts, sizeof(run.counts));
}

void Harness::RunPoint(const Point& point)
{
    const FaultPlan& plan = point.plan;
    const Snapshot before = Prepare(*point.job);
    const Run run = fRunner.Carry(*point.job, fScene, point.job->answer, plan);
    Complaints complaints = JudgeRun(point, run, before);

    Table::Tally& tally = fTable.At(point.job->name, plan.kind);
    ++tally.points;
    if (run.WasKilled()) {
        ++tally.killed;
        ++tally.startedAgain;
        const Complaints more = DoOnceMore(*point.job, before);
        complaints.insert(complaints.end(), more.begin(), more.end());
    }
    tally.faults += complaints.empty() ? 0 : 1;
    Complain(point.job->name + ": " + kFaultNames[plan.kind] + " " + std::to_string(plan.nth) +
                 " " + ActionName(plan.action) + (plan.isLasting ? " from there on" : "") +
                 (run.fired == 0 && !run.WasKilled() ? " (not met)" : ""),
             complaints);
}

int Harness::UsualDurationUs(const Job& job) const
{
    std::vector<int> durations(7);
    for (int& duration : durations) {
        Prepare(job);
        duration = static_cast<int>(fRunner.Carry(job, fScene, job.answer, NoFault()).tookUs);
    }
    std::sort(durations.begin(), durations.end());
    return durations[durations.size() / 2];
}

void Harness::KillAtRandom(const Job& job, int count)
{
    KillTable::Row row;
    row.job = job.name;
    row.withinUs = UsualDurationUs(job);
    std::set<size_t> states;
    // Some come to their ends before they are killed.
    for (int i = 0; row.killed < count && i < count * 20; ++i) {
        const Snapshot before = Prepare(job);
        const int momentUs = static_cast<int>(random() % (row.withinUs * 3 / 2 + 1));
        const Run run = fRunner.Carry(job, fScene, job.answer, NoFault(), momentUs);
        if (!run.WasKilled()) {
            continue;
        }
        const Snapshot left = fScene.Look();
        states.insert(NumberOf(left));
        ++row.killed;
        row.unchanged += left == before ? 1 : 0;
        row.finished += run.isTold ? 1 : 0;
        Complaints complaints = JudgeRun({&job, NoFault()}, run, before);
        const Complaints more = DoOnceMore(job, before);
        complaints.insert(complaints.end(), more.begin(), more.end());
        ++row.startedAgain;
        row.faults += complaints.empty() ? 0 : 1;
        Complain(job.name + ", killed after " + std::to_string(momentUs) + " us", complaints);
    }
    row.states = states.size();
    fKills.Add(row);
}

void Harness::PrintTables() const
{
    if (fHasPoints) {
        fTable.Print();
    } else {
        fKills.Print();
    }
}
