#pragma once

#include "Points.h"
#include "Runner.h"
#include "Table.h"

/// Runs jobs at their points and judges what is on the disk then.
///
/// After a kill the same is done once more without faults, over what was left, as by the program's
/// next start: that has to succeed, and nothing may be lost by both together.
class Harness
{
public:
    /// Ownership: borrows both for its own life.
    Harness(const Scene& scene, const Runner& runner, bool isVerbose)
        : fScene(scene), fRunner(runner), fIsVerbose(isVerbose)
    {
    }

    /// Counts the calls of a job that meets no fault.
    void Count(const Job& job, int (&counts)[kFaultKinds]);
    void RunPoint(const Point& point);
    /// Kills the job from outside at `count` random moments of its run.
    void KillAtRandom(const Job& job, int count);

    void PrintTables() const;
    /// How often something was wrong.
    size_t Faults() const { return fFaults; }

private:
    using Complaints = std::vector<std::string>;

    Snapshot Prepare(const Job& job) const;
    FaultPlan NoFault() const;
    Complaints JudgeRun(const Point& point, const Run& run, const Snapshot& before) const;
    Complaints DoOnceMore(const Job& job, const Snapshot& before) const;
    int UsualDurationUs(const Job& job) const;
    void Complain(const std::string& where, const Complaints& complaints);

    const Scene& fScene;
    const Runner& fRunner;
    const bool fIsVerbose;
    Table fTable;
    KillTable fKills;
    bool fHasPoints = false;
    size_t fFaults = 0;
};
