#pragma once

#include "Jobs.h"
#include "Watch.h"

#include <string>
#include <vector>

/// One step of an operation that reaches the disk: a call after which the scene was another one, or
/// a sync.
struct Step
{
    enum Sync {
        kNone,
        kNode,   // the contents and the record of `node`
        kVolume, // all of the volume
    };

    std::string what;   // the call, for people
    char volume = '\0'; // 'o' or 't', as their names begin
    Sync sync = kNone;
    unsigned long node = 0; // that was synced
    Snapshot after;
};

/// What a job does to the disk, in order.
struct Recording
{
    Snapshot before;
    std::vector<Step> steps;
    int calls = 0; // all that were watched
    int syncs = 0;
    JobResult result;
};

/// Carries the job out in this process and records it: false when the library of watched calls is
/// not preloaded.
bool Record(const Job& job, const Scene& scene, Recording* recording);
