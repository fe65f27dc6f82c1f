#include "RenameMany/RenameTexts.h"

#include "common/StatusText.h"

#include <Errors.h>

#include <unordered_set>

namespace rename_many {

namespace {

using add_ons::Grouped;
using add_ons::ShownName;
using add_ons::StatusText;
using Kind = RenameWorker::Report::Kind;

constexpr size_t kMostNames = 15; // an alert shows no more at a glance

std::string Quoted(const std::string& name)
{
    return "“" + ShownName(name) + "”";
}

std::string Counted(size_t count, const char* one, const char* many)
{
    return count == 1 ? std::string("1 ") + one : Grouped(count) + " " + many;
}

void AddMore(size_t count, std::string* text)
{
    if (count > kMostNames) {
        *text += "\nand " + Grouped(count - kMostNames) + " more";
    }
}

std::string GoneText(const RenameWorker::Report& report)
{
    const std::vector<size_t>& gone = report.outcome.gone;
    if (gone.empty()) {
        return {};
    }
    std::string text = "No longer there:";
    for (size_t place = 0; place < gone.size() && place < kMostNames; place++) {
        text += "\n" + Quoted((*report.entries)[gone[place]].name);
    }
    AddMore(gone.size(), &text);
    return text;
}

std::string StuckText(const RenameWorker::Report& report)
{
    const auto& stuck = report.outcome.stuck;
    std::string text = "These could not get their names back:";
    for (size_t place = 0; place < stuck.size() && place < kMostNames; place++) {
        text += "\n" + Quoted(stuck[place].wanted) + " is now " + Quoted(stuck[place].name) + ": " +
                StatusText(stuck[place].reason);
    }
    AddMore(stuck.size(), &text);
    return text;
}

std::string FailureText(const RenameWorker::Report& report)
{
    const Outcome& outcome = report.outcome;
    if (outcome.status == B_CANCELED) {
        return "Stopped.";
    }
    if (outcome.failed.from.empty()) {
        return "Nothing was renamed: names change places in a circle, and all of them are too long "
               "for a temporary one.";
    }
    return Quoted(outcome.failed.from) + " cannot be called " + Quoted(outcome.failed.to) + ": " +
           StatusText(outcome.status) + ".";
}

} // namespace

const char* FaultText(Fault fault)
{
    switch (fault) {
    case Fault::kEmpty:
        return "no name";
    case Fault::kDots:
        return "not a name";
    case Fault::kSlash:
        return "“/” in the name";
    case Fault::kTooLong:
        return "longer than 255 bytes";
    case Fault::kTaken:
        return "exists already";
    case Fault::kTwice:
        return "twice";
    case Fault::kNone:
        break;
    }
    return "";
}

std::string SummaryOf(const Preview& preview)
{
    if (!preview.error.empty()) {
        return "The expression cannot be used: " + preview.error;
    }
    std::string text;
    if (preview.bad > 0) {
        text = Counted(preview.bad, "name cannot be used", "names cannot be used");
    } else if (preview.changed == 0) {
        text = "No name changes";
    } else {
        text = Grouped(preview.changed) + " of " +
               Counted(preview.entries->size(), "name changes", "names change");
    }
    if (preview.gone > 0) {
        text += ", " + Counted(preview.gone, "entry is", "entries are") + " no longer there";
    }
    return text;
}

std::string SummaryOf(const RenameWorker::Report& report)
{
    std::unordered_set<size_t> entries;
    for (const Step& step : report.outcome.done) {
        entries.insert(step.entry);
    }
    return report.kind == Kind::kRenamed
               ? Counted(entries.size(), "entry has its new name", "entries have their new names")
               : Counted(entries.size(), "entry has its old name", "entries have their old names");
}

std::string TroubleOf(const RenameWorker::Report& report)
{
    const Outcome& outcome = report.outcome;
    std::string text;
    if (outcome.status != B_OK) {
        text = FailureText(report);
        if (!outcome.stuck.empty()) {
            text += "\n\n" + StuckText(report);
        } else if (!outcome.failed.from.empty()) {
            text += report.kind == Kind::kRenamed ? "\n\nAll names are as they were before."
                                                  : "\n\nAll names are the new ones again.";
        }
    }
    const std::string gone = GoneText(report);
    if (!gone.empty()) {
        text += (text.empty() ? "" : "\n\n") + gone;
    }
    return text;
}

} // namespace rename_many
