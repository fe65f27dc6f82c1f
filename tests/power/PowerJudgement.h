#pragma once

#include "Disk.h"
#include "Model.h"

/// Says of states of the medium whether something lies nowhere in them.
///
/// That holds for each file of the source (unless the task is to delete it), and for each that lies
/// in the target or the Trash or is nobody's business. Of one that the person agreed to replace
/// either it or the whole new one has to be outside the source. A hidden name is somewhere, too: a
/// later start shows it.
class PowerJudgement
{
public:
    /// Ownership: borrows all for its own life.
    PowerJudgement(const Task& task, const Snapshot& before, const Disk& disk);

    /// The path of what is lost; "" when nothing is.
    std::string WhatIsLost(const Disk::State& state) const;

private:
    struct Wanted
    {
        std::string path;
        int text = 0;
        int other = 0;           // that will do as well
        bool isReplaced = false; // the source's place does not count
    };

    bool IsDeleted(const std::string& path) const;

    const Task& fTask;
    const Disk& fDisk;
    std::vector<Wanted> fWanted;
};
