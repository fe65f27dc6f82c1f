#pragma once

#include "Faults.h"
#include "Jobs.h"

#include <string>
#include <vector>

/// What the process of an operation tells of itself, whether it comes to its end or not.
struct Report
{
    struct Call
    {
        int kind = 0;
        std::string path; // from the scene's root
    };

    // Known as soon as somebody else acted.
    bool hasActed = false;
    int actedBefore = 0; // the number of a call
    Snapshot atAct;      // the scene right before somebody else acted
    Snapshot afterAct;   // and right after it
    // Known at the end.
    bool isFinished = false;
    std::vector<Call> calls; // the n-th at n - 1
    JobResult result;
    std::vector<ShownFile> shown;

    /// The two parts, which are read in this order.
    std::string FlattenedAct() const;
    std::string FlattenedEnd() const;
    void Unflatten(const std::string& bytes);
};
