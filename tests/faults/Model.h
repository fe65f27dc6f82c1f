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
        kEmptyTrash,
        kRename,
        kMakeFolder,
        kSettings,
    };
    Kind kind = kCopy;
    std::string source; // of the item, from the scene's root
    /// The folder that it goes to; the new place of what is renamed; the folder that is made.
    std::string target;
    std::set<std::string> replaced; // paths from `target` that the person agreed to replace
    /// What the person's answers agree to of whatever else lies in the way.
    enum Agreement {
        kNothing,
        kWhatIsShown,
        kAll,
        kOlder, // than the source
    };
    Agreement agreement = kNothing;
    bool isByRenaming = false; // of a move: within a volume
    bool keepsAll = false;     // of a copy
};

/// How the operation ended.
struct Ending
{
    bool wasKilled = false;
    bool saysWhole = false;         // it said that all was done
    bool wasTold = false;           // the person was told of something
    bool hadFault = false;          // something was made to fail, or it was killed
    bool canLeaveParts = false;     // what was made to fail is what would clean up
    bool canSeemGone = false;       // what is there was said not to be
    bool canLoseAttributes = false; // the file system said that it keeps none
    bool losesAllWritten = false;   // every close fails, and loses what was written
};

/// What must not be on the disk, or is missing from it; empty when all is well.
std::vector<std::string> Judge(const Task& task, const Ending& ending, const Scene& scene,
                               const Snapshot& before, const Snapshot& after);

/// The task of doing the same again, over what a first one left, with every question answered by
/// replacing.
Task OnceMore(const Task& task, const Snapshot& left);

/// What of the source was there before and is nowhere any more.
std::vector<std::string> WhatIsLost(const Task& task, const Snapshot& before,
                                    const Snapshot& after);
