#include "ftp/transfers/TransferClash.h"

#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OverwriteDetails.h"
#include "ftp/transfers/ListedTime.h"

#include <cstdlib>

namespace norvane {

namespace {

/// What "Overwrite All Older" means for this one.
bool MayReplaceOlder(OperationUI& ui, const std::string& name, TargetAge age)
{
    if (age == TargetAge::kUnknown) {
        ui.NoteProblem(name, "it cannot be told which of the two is older");
    }
    return age == TargetAge::kOlder;
}

} // namespace

TargetAge AgeOfLocalTarget(std::time_t modified, const RemoteEntry& source)
{
    const auto listed = ReadListedTime(source.date, std::time(nullptr));
    if (!listed || (modified >= listed->earliest && modified < listed->latest)) {
        return TargetAge::kUnknown;
    }
    return modified < listed->earliest ? TargetAge::kOlder : TargetAge::kNotOlder;
}

TargetAge AgeOfRemoteTarget(const RemoteEntry& target, std::time_t modified)
{
    const auto listed = ReadListedTime(target.date, std::time(nullptr));
    if (!listed || (modified > listed->earliest && modified <= listed->latest)) {
        return TargetAge::kUnknown;
    }
    return listed->latest < modified ? TargetAge::kOlder : TargetAge::kNotOlder;
}

std::string ListedDetails(const RemoteEntry& entry)
{
    if (entry.size.empty()) {
        return entry.date;
    }
    return SizeDetails(std::strtoll(entry.size.c_str(), nullptr, 10)) + "  " + entry.date;
}

bool MayReplace(OperationUI& ui, const std::string& name, const OverwriteQuestion& question,
                TargetAge age)
{
    switch (ui.StandingAnswer()) {
    case kAnswerSkipAll:
        return false;
    case kAnswerOverwriteAll:
        return true;
    case kAnswerOverwriteOlder:
        return MayReplaceOlder(ui, name, age);
    default:
        break;
    }
    ui.HideProgress();
    ui.AskOverwrite(question);
    if (!ui.CanAsk()) {
        ui.NoteProblem(name, "the system has no thread left to ask about it");
    }
    const uint32 answer = ui.StandingAnswer();
    bool isAgreed = answer == kAnswerOverwrite || answer == kAnswerOverwriteAll;
    if (answer == kAnswerOverwriteOlder) {
        isAgreed = MayReplaceOlder(ui, name, age);
    }
    if (!isAgreed || ui.IsStopped()) {
        return false; // and the progress stays hidden
    }
    ui.ShowProgress();
    return true;
}

} // namespace norvane
