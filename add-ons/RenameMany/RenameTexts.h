#pragma once

#include "RenameMany/RenamePreview.h"
#include "RenameMany/RenameWorker.h"

#include <string>

namespace rename_many {

/// What is wrong with a name, empty for nothing.
const char* FaultText(Fault fault);

/// What a preview comes to, in one line.
std::string SummaryOf(const Preview& preview);

/// What was done, in one line.
std::string SummaryOf(const RenameWorker::Report& report);

/// What a person must be told of: that something failed, and what stayed where. Empty when all is
/// done.
std::string TroubleOf(const RenameWorker::Report& report);

} // namespace rename_many
