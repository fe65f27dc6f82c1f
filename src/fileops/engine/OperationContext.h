#pragma once

#include "fileops/engine/CopyAccess.h"
#include "fileops/engine/CopyQueue.h"
#include "fileops/engine/Journal.h"
#include "fileops/engine/MadeTargets.h"

namespace norvane {

class OperationUI;

/// What the items of one operation have in common.
///
/// Thread: the operation's.
struct OperationContext
{
    /// Ownership: borrows `shown` for its own life.
    explicit OperationContext(OperationUI& shown) : ui(shown), smallFiles(shown) {}

    OperationUI& ui;
    const CopyAccess access;
    MadeTargets made;
    NodeSet moving; // the items that are renamed: what points from one to another keeps its text
    Journal journal;
    CopyQueue smallFiles; // of all items; last, since it works until its end
};

} // namespace norvane
