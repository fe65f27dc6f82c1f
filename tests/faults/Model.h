#pragma once

#include "Scene.h"

#include <set>
#include <string>
#include <vector>

/// What an operation was asked to do, as far as the disk afterwards tells of it.
struct Task
{
    enum Kind {
        kCopy,
        kMove,
        kTrash,
        kDelete,
        kRename,
        kSettings,
    };
    Kind kind = kCopy;
    std::string source;             // of the item, from the scene's root
    std::string target;             // the folder that it goes to
    std::set<std::string> replaced; // paths from `target` that the person agreed to replace
    bool asksOrSkips = false;       // some are left out, so the item is not copied whole
};

/// How the operation ended.
struct Ending
{
    bool wasKilled = false;
    bool saysWhole = false;     // it said that all was done
    bool hadFault = false;      // something was made to fail
    bool canLeaveParts = false; // what was made to fail is what would clean up
};

/// What must not be on the disk, or is missing from it; empty when all is well.
std::vector<std::string> Judge(const Task& task, const Ending& ending, const Scene& scene,
                               const Snapshot& before, const Snapshot& after);
