#pragma once

#include "Faults.h"
#include "Jobs.h"

#include <string>
#include <vector>

/// One point: a job, and what fails in it.
struct Point
{
    const Job* job;
    FaultPlan plan;
};

/// All ways in which the calls of a job can fail, which are counted by kind; of one kind when
/// `call` names it. Ownership: borrows the job and `folder`.
std::vector<Point> PointsOf(const Job& job, const int (&counts)[kFaultKinds],
                            const std::string& call, const char* folder);

/// How the table calls an action.
const char* ActionName(int action);
