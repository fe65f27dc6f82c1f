// What holds for all operations, and those that change names alone.

#include "Judgement.h"

std::string LeafOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

bool IsAtOrBelow(const std::string& path, const std::string& folder)
{
    return !folder.empty() && (path == folder || path.starts_with(folder + "/"));
}

std::string TrashOf(const std::string& path)
{
    for (const char* trash : kTrashes) {
        if (IsAtOrBelow(path, trash)) {
            return trash;
        }
    }
    return std::string();
}

Judgement::Judgement(const Task& task, const Ending& ending, const Scene& scene,
                     const Snapshot& before, const Snapshot& after)
    : fTask(task), fEnding(ending), fScene(scene), fBefore(before), fAfter(after),
      fSource(Below(before, task.source))
{
}

/// Whether the operation may change anything there; what exactly is looked at elsewhere.
bool Judgement::IsConcerned(const std::string& path) const
{
    const std::string trash = TrashOf(path);
    if (!trash.empty() && IsConcernedInTrash(path, trash)) {
        return true;
    }
    switch (fTask.kind) {
    case Task::kSettings:
        return IsAtOrBelow(path, fTask.source);
    case Task::kMakeFolder:
        return path == fTask.target;
    case Task::kCopy:
        return trash.empty() && IsAtOrBelow(path, fTask.target);
    case Task::kMove:
    case Task::kRename:
        return IsAtOrBelow(path, fTask.source) ||
               (trash.empty() && IsAtOrBelow(path, fTask.target)) ||
               (fTask.kind == Task::kRename && IsAtOrBelow(path, fTask.target));
    case Task::kTrash:
    case Task::kDelete:
        return IsAtOrBelow(path, fTask.source);
    case Task::kEmptyTrash:
        return path.starts_with(fTask.source + "/");
    }
    return false;
}

bool Judgement::IsConcernedInTrash(const std::string& path, const std::string& trash) const
{
    const bool isRecord = path.starts_with(trash + "/info/");
    const bool isOfSource = path == trash + "/info/" + LeafOf(fTask.source) + ".trashinfo" &&
                            TrashOf(fTask.source) == trash;
    switch (fTask.kind) {
    case Task::kCopy:
        return IsNew(path) && TrashOf(fTask.target) == trash;
    case Task::kMove:
        return IsNew(path) || isOfSource;
    case Task::kTrash:
        return IsNew(path);
    case Task::kDelete:
        return isOfSource || (isRecord && IsNew(path) && TrashOf(fTask.source) == trash);
    case Task::kRename:
        return isOfSource || (isRecord && TrashOf(fTask.target) == trash &&
                              path == trash + "/info/" + LeafOf(fTask.target) + ".trashinfo");
    case Task::kEmptyTrash:
        return isRecord && !IsNew(path);
    case Task::kMakeFolder:
    case Task::kSettings:
        break;
    }
    return false;
}

void Judgement::CheckOthers()
{
    for (const auto& [path, item] : fBefore) {
        const auto now = fAfter.find(path);
        if (!IsConcerned(path) && (now == fAfter.end() || !(now->second == item))) {
            Say(path, "is none of the operation's business, and changed");
        }
    }
    for (const auto& [path, item] : fAfter) {
        if (!IsConcerned(path) && IsNew(path) && !IsAsideOfSource(path, item)) {
            Say(path, "appeared where nothing should");
        }
    }
}

/// Whether what the operation said of itself is true.
void Judgement::CheckWord()
{
    if (fEnding.wasKilled) {
        return;
    }
    const bool canBeWhole = CanBeWhole();
    if (!fEnding.hadFault && fEnding.saysWhole != canBeWhole) {
        Say(fTask.source, canBeWhole ? "was not done, though nothing failed"
                                     : "is said to be done, and cannot be");
    }
    if (!fEnding.saysWhole && !fEnding.wasTold && canBeWhole) {
        Say(fTask.source, "was not done, and nobody was told");
    }
}

void Judgement::CheckRenamed()
{
    const bool isTaken = !CanBeWhole();
    const bool isOld = fSource == Below(fAfter, fTask.source);
    const bool isNew = fSource == Below(fAfter, fTask.target);
    if (isTaken) {
        if (!isOld || Below(fBefore, fTask.target) != Below(fAfter, fTask.target)) {
            Say(fTask.target, "was taken, and is not as it was");
        }
        return;
    }
    if (isOld == isNew) {
        Say(fTask.source, "is neither here nor there whole, or both");
    }
    if (!fEnding.wasKilled && fEnding.saysWhole != isNew) {
        Say(fTask.source, "is said to be where it is not");
    }
}

void Judgement::CheckFolderMade()
{
    const auto made = fAfter.find(fTask.target);
    if (!fEnding.wasKilled && fEnding.saysWhole != (made != fAfter.end())) {
        Say(fTask.target, "is said to be made, and is not; or the other way round");
    }
    if (made != fAfter.end() &&
        (made->second.kind != 'd' || (fScene.HasModes() && made->second.mode != 0755))) {
        Say(fTask.target, "is not as new folders are");
    }
}

void Judgement::CheckByKind()
{
    switch (fTask.kind) {
    case Task::kCopy:
        CheckTarget();
        break;
    case Task::kMove:
    case Task::kTrash:
        CheckNothingLost();
        CheckLeftover();
        CheckTarget();
        CheckDeletion();
        break;
    case Task::kDelete:
    case Task::kEmptyTrash:
        CheckLeftover();
        break;
    case Task::kRename:
        CheckRenamed();
        break;
    case Task::kMakeFolder:
        CheckFolderMade();
        break;
    case Task::kSettings:
        CheckSettings();
        break;
    }
}

std::vector<std::string> Judgement::Result()
{
    CheckOthers();
    CheckByKind();
    for (const char* trash : kTrashes) {
        CheckTrash(trash);
    }
    CheckWord();
    return fFaults;
}

std::vector<std::string> Judge(const Task& task, const Ending& ending, const Scene& scene,
                               const Snapshot& before, const Snapshot& after)
{
    return Judgement(task, ending, scene, before, after).Result();
}

Task OnceMore(const Task& task, const Snapshot& left)
{
    Task again = task;
    if (task.kind == Task::kMakeFolder && left.count(task.target) > 0) {
        ++again.target.back(); // they are numbered
    }
    for (const auto& [path, item] : Below(left, task.target)) {
        if (item.kind != 'd' && !path.empty()) {
            again.replaced.insert(path);
        }
    }
    return again;
}

std::vector<std::string> WhatIsLost(const Task& task, const Snapshot& before, const Snapshot& after)
{
    std::vector<std::string> lost;
    if (task.kind == Task::kMove || task.kind == Task::kTrash || task.kind == Task::kRename) {
        for (const auto& [name, item] : Below(before, task.source)) {
            const bool isRenamed = task.kind == Task::kRename && name.empty();
            if (!isRenamed && !IsSomewhere(after, name, item)) {
                lost.push_back(task.source + "/" + name + ": is lost");
            }
        }
    }
    return lost;
}
