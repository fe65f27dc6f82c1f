#pragma once

#include "ftp/client/RemoteEntry.h"

#include <SupportDefs.h>

#include <ctime>
#include <string>

namespace norvane {

class OperationUI;
struct OverwriteQuestion;

/// Which of two files is older; one of them is only known by a listing.
enum class TargetAge : uint8 {
    kOlder,
    kNotOlder,
    kUnknown, // their times are too near to each other for what a listing says
};

TargetAge AgeOfLocalTarget(std::time_t modified, const RemoteEntry& source);
TargetAge AgeOfRemoteTarget(const RemoteEntry& target, std::time_t modified);

/// An entry's line in the overwrite question, as far as the listing tells.
std::string ListedDetails(const RemoteEntry& entry);

/// Whether what is there is to be replaced, after asking where that is for the person to say. A
/// target that may not be older stays when only older ones are to be replaced.
bool MayReplace(OperationUI& ui, const std::string& name, const OverwriteQuestion& question,
                TargetAge age);

} // namespace norvane
