#pragma once

#include "Faults.h"
#include "Jobs.h"

/// How a process that carried out an operation ended, and what it told of it.
struct Run
{
    int counts[kFaultKinds] = {}; // of its calls
    int fired = 0;                // so often something was made to fail
    JobResult result;
    bool isTold = false; // the three above are known
    int status = 0;      // as waitpid() has it
    long tookUs = 0;

    bool WasKilled() const;
    bool WasHanging() const;
    bool HasCrashed() const;
};

/// Carries out jobs, each in a process of its own, with the library of faults armed.
class Runner
{
public:
    /// False when the library is not preloaded.
    bool FindLibrary();

    /// Carries the job out. With `killAfterUs` not negative the process is killed so many
    /// microseconds after it began, if it is still there.
    Run Carry(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
              int killAfterUs = -1) const;

private:
    Run CarryHere(const Job& job, const Scene& scene, uint32 answer, const FaultPlan& plan,
                  long beginUs) const;

    FaultsArm fArm = nullptr;
    FaultsCount fCount = nullptr;
    FaultsFired fFired = nullptr;
};
