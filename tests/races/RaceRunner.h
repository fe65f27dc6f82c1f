#pragma once

#include "Adversary.h"
#include "Report.h"
#include "Watch.h"

/// How a process that carried out an operation ended, and what it told of it.
struct RaceRun
{
    Report report;
    int status = 0; // as waitpid() has it

    bool WasHanging() const;
    bool HasCrashed() const;
};

/// Carries out jobs, each in a process of its own, while somebody else does one thing.
class RaceRunner
{
public:
    /// False when the library is not preloaded.
    bool FindLibrary();

    /// The deed is done right before the call number `nth` (from 1); never when `deed` is null.
    RaceRun Carry(const Job& job, const Scene& scene, const Places& places,
                  const Adversary::Deed* deed, int nth) const;

private:
    WatchArm fArm = nullptr;
};
