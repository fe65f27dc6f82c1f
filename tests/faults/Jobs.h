#pragma once

#include "Model.h"

#include <functional>
#include <string>
#include <vector>

/// One operation of the program, as it is run against every fault.
struct Job
{
    std::string name;
    Task task;
    bool needsTwoVolumes = false;
    /// Makes what the operation finds; in the harness.
    std::function<void(const Scene&)> prepare;
    /// Carries it out with the program's own code and says whether all was done; in a process of
    /// its own.
    std::function<bool(const Scene&)> run;
};

std::vector<Job> AllJobs();
