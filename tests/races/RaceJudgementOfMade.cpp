// What an operation made, who may read it, and what it said of itself.

#include "RaceJudgement.h"

#include <algorithm>

/// The rights that somebody who reads the same elsewhere has already.
mode_t RaceJudgement::MostFor(const std::string& path, const SceneItem& made) const
{
    mode_t most = made.kind == 'd' ? 0700 : 0600;
    const auto isSame = [&](const SceneItem& item) {
        return item.kind == 'f' && !made.text.empty() && item.text.starts_with(made.text);
    };
    const std::string place = fPlaces.Before(path);
    // A file that replaces another keeps its mode.
    for (const std::string& there : {path, place}) {
        const auto old = fBefore.find(there);
        most |= old != fBefore.end() ? old->second.mode : 0;
        most |= IsTouched(there) ? fAfterAct.at(there).mode : 0;
    }
    bool isKnown = false;
    for (const auto& [name, item] : fBefore) {
        most |= isSame(item) ? item.mode : 0;
        isKnown = isKnown || isSame(item);
    }
    for (const auto& [name, item] : fAfterAct) {
        const bool isOthers = isSame(item) && IsTouched(name);
        most |= isOthers ? item.mode : 0;
        isKnown = isKnown || isOthers;
    }
    if ((!isKnown || WasChangedWithinOwnFile(path)) && fPlaces.HasTarget() &&
        IsAtOrBelow(place, fPlaces.target)) {
        // Read while it was written, some of the old and some of the new; or what somebody wrote
        // into a file that was to get the rights of its source.
        const std::string source = fPlaces.item + place.substr(fPlaces.target.size());
        for (const Snapshot* state : {&fBefore, &fAfterAct}) {
            const auto found = state->find(source);
            most |= found != state->end() ? found->second.mode : 0;
        }
    }
    return most;
}

void RaceJudgement::CheckModes(const Snapshot& state)
{
    for (const auto& [path, item] : state) {
        const bool isMade = item.kind == 'f' && !item.text.empty() && !fPlaces.IsOfSource(path) &&
                            (fPlaces.IsOfTarget(path) || IsHidden(path));
        // Whoever writes into another's file by its name takes it as open as it is.
        const bool isOthersDoing = WasChangedWithinOwnFile(path);
        if (isMade && !isOthersDoing && (item.mode & ~MostFor(path, item)) != 0) {
            Say(path, "is open to more people than its source");
            continue;
        }
        const std::string place = fPlaces.Before(path);
        if (item.kind != 'd' || !fPlaces.HasTarget() || !IsAtOrBelow(place, fPlaces.target)) {
            continue;
        }
        const auto source = fBefore.find(fPlaces.item + place.substr(fPlaces.target.size()));
        if (source != fBefore.end() && source->second.kind == 'd' &&
            (item.mode & ~(source->second.mode | MostFor(path, item))) != 0) {
            Say(path, "is a folder open to more people than its source");
        }
    }
}

void RaceJudgement::CheckHidden()
{
    for (const auto& [path, item] : fAfter) {
        if (!LeafOf(path).starts_with(kBeside)) {
            continue;
        }
        const Snapshot below = Below(fAfter, path);
        const bool isOnlyCopy = std::any_of(below.begin(), below.end(), [this](const auto& each) {
            const SceneItem& held = each.second;
            return held.kind == 'f' && !fContents.Has(held) &&
                   (fSourceTexts.count(held.text) > 0 ||
                    fContentsAfterAct.seen.count(held.text) > 0);
        });
        if (!isOnlyCopy || !fReport.result.wasTold) {
            Say(path, "was left behind");
        }
    }
}

void RaceJudgement::CheckWord()
{
    if (!fReport.isFinished || fReport.result.wasTold) {
        return;
    }
    if (fReport.result.isWhole) {
        CheckSilence();
        return;
    }
    // Who was asked knows what was left; an answer that leaves something is no failure.
    const bool isAnswered = fTask.agreement == Task::kOlder ||
                            (fTask.agreement == Task::kNothing && !fReport.shown.empty());
    if (!isAnswered) {
        Say(fPlaces.item, "was not done, and nobody was told");
    }
}

/// It said that all was done, and told of nothing else.
void RaceJudgement::CheckSilence()
{
    std::set<std::string> names;
    for (const Snapshot* state : {&fBefore, &fAfterAct}) {
        for (const auto& [name, item] : Below(*state, fPlaces.item)) {
            if (item.kind == 'f' && !item.text.empty()) {
                names.insert(name);
            }
        }
    }
    for (const std::string& name : names) {
        CheckSilenceOf(name);
    }
}

bool RaceJudgement::IsElsewhere(std::string_view text) const
{
    return std::any_of(fAfter.begin(), fAfter.end(), [&](const auto& each) {
        return !fPlaces.IsOfSource(each.first) && !IsHidden(each.first) &&
               each.second.text.starts_with(text);
    });
}

void RaceJudgement::CheckSilenceOf(const std::string& name)
{
    const std::string path = name.empty() ? fPlaces.item : fPlaces.item + "/" + name;
    const auto old = fBefore.find(path);
    const auto then = fAtAct.find(path);
    const auto changed = fAfterAct.find(path);
    const auto top = fAfterAct.find(fPlaces.item);
    const bool isSwapped =
        top == fAfterAct.end() || top->second.node != fBefore.at(fPlaces.item).node;
    std::set<std::string_view> left;    // what may not be there any more
    std::set<std::string_view> arrived; // and one of these elsewhere
    if (old != fBefore.end()) {
        left.insert(old->second.text);
    }
    arrived = left;
    if (then != fAtAct.end() && changed != fAfterAct.end()) {
        arrived.insert(changed->second.text);
        if (!isSwapped) {
            left.insert(changed->second.text);
        }
    }
    const auto now = fAfter.find(path);
    if (fTask.kind != Task::kCopy && now != fAfter.end() && left.count(now->second.text) > 0) {
        Say(path, "is still there, and nobody was told");
    }
    const bool wasTaken = then != fAtAct.end() && changed == fAfterAct.end();
    const bool isOtherKind = changed != fAfterAct.end() && changed->second.kind != 'f';
    if (IsDeletion() || old == fBefore.end() || wasTaken || isOtherKind ||
        WasSpoiltUnfinished(path)) {
        return;
    }
    const bool wasArrived = std::any_of(fAtAct.begin(), fAtAct.end(), [&](const auto& each) {
        return fPlaces.IsOfTarget(each.first) && arrived.count(each.second.text) > 0;
    });
    // What had arrived, and is gone now, somebody else took.
    if (!wasArrived && std::none_of(arrived.begin(), arrived.end(),
                                    [this](std::string_view text) { return IsElsewhere(text); })) {
        Say(path, "did not arrive, and nobody was told");
    }
}
