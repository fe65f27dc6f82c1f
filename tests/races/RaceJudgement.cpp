#include "RaceJudgement.h"

#include <algorithm>
#include <filesystem>

namespace {

bool IsInInfo(const std::string& path)
{
    return std::any_of(std::begin(kTrashes), std::end(kTrashes), [&](const char* trash) {
        return path.starts_with(std::string(trash) + "/info/");
    });
}

/// Whether an entry holds something that no other one does.
bool IsContent(const SceneItem& item)
{
    constexpr size_t kFewBytes = 9; // may be the same in several
    return item.kind == 'l' ? item.text.find(kMarkOfLink) != std::string::npos
                            : item.kind == 'f' && item.text.size() >= kFewBytes;
}

/// Links that are copied say where they lead to in their own way.
std::string WhereItLeads(const Scene& scene, const std::string& path, const SceneItem& link)
{
    const std::filesystem::path folder = std::filesystem::path(scene.Path(path)).parent_path();
    return (folder / link.text).lexically_normal(); // a whole path stands for itself
}

bool IsForeign(const std::string& path)
{
    return IsAtOrBelow(path, "one/foreign") || IsAtOrBelow(path, "two/foreign") ||
           path.starts_with(std::string(kHomeTrash) + "/files/older") ||
           path.starts_with(std::string(kHomeTrash) + "/info/older");
}

} // namespace

RaceJudgement::Contents::Contents(const Snapshot& all)
{
    for (const auto& [path, item] : all) {
        if (IsContent(item)) {
            (IsHidden(path) ? hidden : seen).insert(item.text);
        }
    }
}

RaceJudgement::RaceJudgement(const Scene& scene, const Job& job, const Places& places,
                             const Snapshot& before, const RaceRun& run, const Snapshot& after)
    : fScene(scene), fTask(job.task), fPlaces(places), fBefore(before), fRun(run),
      fReport(run.report), fAtAct(run.report.hasActed ? run.report.atAct : before),
      fAfterAct(run.report.hasActed ? run.report.afterAct : before), fAfter(after),
      fContentsAtAct(fAtAct), fContentsAfterAct(fAfterAct), fContents(after)
{
    for (const auto& [path, item] : fBefore) {
        if (fPlaces.IsOfSource(path) && IsContent(item)) {
            fItemTexts.insert(item.text);
        }
    }
    fSourceTexts = fItemTexts;
    for (const auto& [path, item] : fAfterAct) {
        if (fPlaces.IsOfSource(path) && IsContent(item)) {
            fSourceTexts.insert(item.text);
        }
    }
}

bool RaceJudgement::IsDeletion() const
{
    return fTask.kind == Task::kDelete;
}

/// Before the operation first looks at the item, whatever bears its name is the item.
bool RaceJudgement::WasEarly() const
{
    const auto& calls = fReport.calls;
    const auto first = std::find_if(calls.begin(), calls.end(), [this](const Report::Call& call) {
        return call.path == fPlaces.item;
    });
    return fReport.actedBefore <= first - calls.begin() + 1;
}

bool RaceJudgement::IsTouched(const std::string& path) const
{
    const auto now = fAfterAct.find(path);
    const auto old = fAtAct.find(path);
    return now != fAfterAct.end() && (old == fAtAct.end() || !(old->second == now->second) ||
                                      old->second.node != now->second.node);
}

void RaceJudgement::CheckContents()
{
    for (const auto& [path, item] : fBefore) {
        CheckContent(path, item);
    }
    for (const auto& [path, item] : fAfterAct) {
        const auto old = fBefore.find(path);
        // What the operation itself moved is looked at where it was.
        const bool wasThere = std::any_of(fBefore.begin(), fBefore.end(), [&](const auto& each) {
            return each.second.text == item.text;
        });
        if (!(wasThere && IsHidden(path)) &&
            (old == fBefore.end() || old->second.text != item.text)) {
            CheckContent(path, item);
        }
    }
}

void RaceJudgement::CheckContent(const std::string& path, const SceneItem& item)
{
    if (!IsContent(item) || fContents.Has(item) || IsInInfo(path)) {
        return;
    }
    const bool isCopiedLink =
        item.kind == 'l' && std::any_of(fAfter.begin(), fAfter.end(), [&](const auto& each) {
            return each.second.kind == 'l' && LeafOf(each.first).starts_with(LeafOf(path)) &&
                   WhereItLeads(fScene, each.first, each.second) ==
                       WhereItLeads(fScene, path, item);
        });
    const bool wasDestroyedByAct = fContentsAtAct.Has(item) && !fContentsAfterAct.Has(item);
    if (wasDestroyedByAct || isCopiedLink || MayGo(path, item)) {
        return;
    }
    const bool isOthers = fBefore.count(path) == 0 || fBefore.at(path).text != item.text;
    const std::string whose = isOthers                   ? "somebody else's"
                              : fPlaces.IsOfSource(path) ? "of the source"
                              : IsForeign(path)          ? "foreign"
                                                         : "in the target, not agreed to";
    if (fContents.hidden.count(item.text) == 0) {
        Say(path, "is lost (" + whose + ")");
    } else if (!fReport.result.wasTold) {
        Say(path, "lies under a hidden name only, and nobody was told (" + whose + ")");
    }
}

bool RaceJudgement::MayGo(const std::string& path, const SceneItem& item) const
{
    return IsDeletedWithItem(path, item) || IsUnfinished(path, item) ||
           WasChangedWithinOwnFile(path) || WasSpoiltUnfinished(path) ||
           IsAgreedToReplace(path, item) || WasLostLate(item);
}

/// Somebody wrote into the target of that source before the operation had done with it and looked:
/// its size is right in the end, its time is set by the operation, and no call tells.
bool RaceJudgement::WasSpoiltUnfinished(const std::string& path) const
{
    if (!fPlaces.HasTarget() || !IsAtOrBelow(path, fPlaces.item)) {
        return false;
    }
    const std::string target = TargetOf(path);
    return WasChangedWithinOwnFile(target) && fReport.actedBefore <= FirstLookAtFinished(target);
}

/// The number of the call by which the operation first looked at the target after its own last
/// change of it; of that change if it never looked.
int RaceJudgement::FirstLookAtFinished(const std::string& target) const
{
    int number = 0;
    bool isLook = true;
    for (size_t i = 0; i < fReport.calls.size(); ++i) {
        const Report::Call& call = fReport.calls[i];
        if (call.path != target) {
            continue;
        }
        const bool isChange = call.kind == kFaultWrite || call.kind == kFaultCopyRange ||
                              call.kind == kFaultControl || call.kind == kFaultSetSize ||
                              call.kind == kFaultSetMode || call.kind == kFaultAttributes;
        if (isChange || (!isLook && call.kind == kFaultStat)) {
            number = static_cast<int>(i + 1);
            isLook = !isChange;
        }
    }
    return number;
}

std::string RaceJudgement::TargetOf(const std::string& path) const
{
    // In a Trash it may have another name.
    const std::string name = path.substr(fPlaces.item.size());
    const std::string copy = fPlaces.target + " copy";
    return fBefore.count(fPlaces.target) > 0 && fAtAct.count(copy) > 0 && fBefore.count(copy) == 0
               ? copy + name
               : fPlaces.target + name;
}

/// Deleting a folder means whatever is in that folder, not what bears its name instead.
bool RaceJudgement::IsDeletedWithItem(const std::string& path, const SceneItem& item) const
{
    if (!IsDeletion()) {
        return false;
    }
    const auto old = fBefore.find(fPlaces.item);
    const auto now = fAfterAct.find(fPlaces.item);
    const bool isStillItem = now != fAfterAct.end() && old->second.node == now->second.node;
    return fItemTexts.count(item.text) > 0 ||
           (IsAtOrBelow(path, fPlaces.item) && (WasEarly() || (isStillItem && fPlaces.isFolder)));
}

/// A part of a copy is nobody's, also when somebody moved it.
bool RaceJudgement::IsUnfinished(const std::string& path, const SceneItem& item) const
{
    const auto old = fBefore.find(path);
    const bool isOld = old != fBefore.end() && old->second.text == item.text;
    return !isOld && (fPlaces.IsOfTarget(path) || IsHidden(path)) &&
           std::any_of(fSourceTexts.begin(), fSourceTexts.end(), [&](std::string_view text) {
               return text.size() > item.text.size() && text.starts_with(item.text);
           });
}

/// What was written by its path into a file of the operation's own, on which it still worked.
bool RaceJudgement::WasChangedWithinOwnFile(const std::string& path) const
{
    const auto now = fAfterAct.find(path);
    const auto then = fAtAct.find(path);
    const auto old = fBefore.find(path);
    return now != fAfterAct.end() && then != fAtAct.end() && fPlaces.IsOfTarget(path) &&
           now->second.node == then->second.node && now->second.text != then->second.text &&
           (old == fBefore.end() || old->second.node != then->second.node);
}

bool RaceJudgement::IsAgreedToReplace(const std::string& path, const SceneItem& item) const
{
    const std::string place = fPlaces.Before(path);
    if (!fPlaces.HasTarget() || !IsAtOrBelow(place, fPlaces.target)) {
        return false;
    }
    const std::string source = fPlaces.item + place.substr(fPlaces.target.size());
    long long newest = 0;
    for (const Snapshot* state : {&fBefore, &fAfterAct}) {
        const auto found = state->find(source);
        if (found != state->end() && found->second.kind == 'f') {
            newest = std::max(newest, found->second.modifiedNs);
        }
    }
    switch (newest == 0 ? Task::kNothing : fTask.agreement) {
    case Task::kNothing:
        return false;
    case Task::kAll:
        return true;
    case Task::kOlder:
        return item.modifiedNs < newest;
    case Task::kWhatIsShown:
        break;
    }
    return std::any_of(fReport.shown.begin(), fReport.shown.end(), [&](const ShownFile& shown) {
        return shown.path == fScene.Path(place) && shown.details == DetailsOf(item);
    });
}

/// The number of the call that removed the entry, at its place or where it was put aside under a
/// name of our own, itself or a folder above it.
int RaceJudgement::RemovalOf(const std::string& source) const
{
    for (size_t i = fReport.calls.size(); i > 0; --i) {
        const Report::Call& call = fReport.calls[i - 1];
        const bool isAside =
            IsAtOrBelow(call.path, fPlaces.itemFolder) && IsHidden(call.path) &&
            (LeafOf(call.path).starts_with(kBeside) || LeafOf(call.path) == LeafOf(source));
        if (call.kind == kFaultUnlink && (call.path == source || isAside)) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

bool RaceJudgement::WasLostLate(const SceneItem& item) const
{
    std::string source;
    std::string target;
    for (const auto& [path, each] : fAfterAct) {
        source = each.text == item.text && fPlaces.IsOfSource(path) ? path : source;
    }
    for (const auto& [path, each] : fAtAct) {
        target = each.text == item.text && fPlaces.IsOfTarget(path) ? path : target;
    }
    if (!fReport.hasActed || source.empty() || target.empty()) {
        return false;
    }
    const int removal = RemovalOf(source);
    int lastLook = 0;
    int lastChange = 0;
    for (int number = 1; number < removal; ++number) {
        const Report::Call& call = fReport.calls[static_cast<size_t>(number - 1)];
        const bool isThere = call.path == target || call.path == target + " (deleted)";
        if (isThere && (call.kind == kFaultStat || call.kind == kFaultOpen)) {
            lastLook = number;
        }
        const bool changes = call.kind == kFaultWrite || call.kind == kFaultCopyRange ||
                             call.kind == kFaultControl || call.kind == kFaultSetSize ||
                             call.kind == kFaultRename || call.kind == kFaultLink ||
                             call.kind == kFaultMakeFolder || call.kind == kFaultSync ||
                             call.kind == kFaultSyncVolume;
        // Names in the source's folder are changed to remove it.
        if (changes && !IsAtOrBelow(call.path, fPlaces.itemFolder)) {
            lastChange = number;
        }
    }
    return lastChange < lastLook && lastLook < fReport.actedBefore;
}

void RaceJudgement::CheckForeign()
{
    for (const auto& [path, item] : fAfterAct) {
        const auto now = fAfter.find(path);
        if (IsForeign(path) && (now == fAfter.end() || !(now->second == item))) {
            Say(path, "is none of the operation's business, and changed");
        }
    }
    for (const auto& [path, item] : fAfter) {
        if (IsForeign(path) && fBefore.count(path) == 0) {
            Say(path, "appeared where nothing should");
        }
    }
}

std::vector<RaceJudgement::Fault> RaceJudgement::Result()
{
    if (fRun.WasHanging()) {
        Say(fPlaces.item, "it did not come to its end");
    } else if (fRun.HasCrashed()) {
        Say(fPlaces.item, "it crashed, with status " + std::to_string(fRun.status));
    }
    CheckContents();
    CheckForeign();
    CheckModes(fAtAct);
    CheckModes(fAfter);
    CheckHidden();
    CheckWord();
    return fFaults;
}
