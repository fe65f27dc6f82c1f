#include "Model.h"

#include <algorithm>

namespace {

constexpr const char* kHomeTrash = "one/home/.local/share/Trash";

class Judgement
{
public:
    Judgement(const Task& task, const Ending& ending, const Scene& scene, const Snapshot& before,
              const Snapshot& after)
        : fTask(task), fEnding(ending), fScene(scene), fBefore(before), fAfter(after)
    {
    }

    std::vector<std::string> Result();

private:
    void Say(const std::string& path, const char* what) { fFaults.push_back(path + ": " + what); }
    bool IsTrash(const std::string& path) const;
    bool IsConcerned(const std::string& path) const;

    void CheckOthers();
    void CheckSourceUntouched();
    void CheckNothingLost();
    void CheckTarget();
    void CheckOld(const std::string& path, const SceneItem& old);
    void CheckNew(const std::string& path, const SceneItem& made);
    void CheckWhole();
    void CheckTrash(const std::string& trash);
    void CheckGone();
    void CheckRenamed();
    void CheckSettings();

    bool IsSomewhere(const std::string& name, const SceneItem& item) const;
    const SceneItem* SourceOf(const std::string& targetPath) const;
    bool IsPartOfSource(const SceneItem& item) const;

    const Task& fTask;
    const Ending& fEnding;
    const Scene& fScene;
    const Snapshot& fBefore;
    const Snapshot& fAfter;
    std::vector<std::string> fFaults;
};

std::string LeafOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

bool IsAtOrBelow(const std::string& path, const std::string& folder)
{
    return !folder.empty() && (path == folder || path.starts_with(folder + "/"));
}

bool Judgement::IsTrash(const std::string& path) const
{
    return IsAtOrBelow(path, kHomeTrash) || path.starts_with("two/.Trash-") ||
           path.starts_with("one/.Trash-");
}

/// Whether the operation may change anything there.
bool Judgement::IsConcerned(const std::string& path) const
{
    if (fTask.kind == Task::kSettings) {
        return IsAtOrBelow(path, "one/home/.config");
    }
    if (fTask.kind == Task::kRename) {
        return IsAtOrBelow(path, fTask.source) || IsAtOrBelow(path, fTask.target);
    }
    if (fTask.kind == Task::kDelete && path == std::string(kHomeTrash) + "/info/item.trashinfo") {
        return IsTrash(fTask.source);
    }
    if (IsTrash(path)) {
        const bool isOlder = LeafOf(path).starts_with("older");
        return !isOlder && (fTask.kind == Task::kMove || fTask.kind == Task::kTrash ||
                            IsAtOrBelow(path, fTask.source));
    }
    return IsAtOrBelow(path, fTask.source) || IsAtOrBelow(path, fTask.target);
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
        if (!IsConcerned(path) && fBefore.find(path) == fBefore.end()) {
            Say(path, "appeared where nothing should");
        }
    }
}

void Judgement::CheckSourceUntouched()
{
    if (Below(fBefore, fTask.source) != Below(fAfter, fTask.source)) {
        Say(fTask.source, "was only to be copied, and changed");
    }
}

/// Whether an item of the source is there whole, at its place or anywhere else.
bool Judgement::IsSomewhere(const std::string& name, const SceneItem& item) const
{
    return std::any_of(fAfter.begin(), fAfter.end(), [&](const auto& found) {
        if (found.second.kind != item.kind) {
            return false;
        }
        // Contents tell whose they are; what has none is known by its name.
        const bool isAnonymous = item.kind != 'f' || item.text.empty();
        const std::string leaf = LeafOf(name);
        return isAnonymous ? LeafOf(found.first).starts_with(leaf.empty() ? "item" : leaf)
                           : found.second.text == item.text;
    });
}

void Judgement::CheckNothingLost()
{
    for (const auto& [name, item] : Below(fBefore, fTask.source)) {
        if (!IsSomewhere(name, item)) {
            Say(fTask.source + "/" + name, "is lost");
        }
    }
}

const SceneItem* Judgement::SourceOf(const std::string& targetPath) const
{
    // "<target>/item/..." came from "<source>/...".
    const std::string name = targetPath.substr(fTask.target.size() + 1);
    const size_t slash = name.find('/');
    const std::string source =
        slash == std::string::npos ? fTask.source : fTask.source + name.substr(slash);
    const auto found = fBefore.find(source);
    return found == fBefore.end() ? nullptr : &found->second;
}

bool Judgement::IsPartOfSource(const SceneItem& item) const
{
    return item.kind == 'f' && std::any_of(fBefore.begin(), fBefore.end(), [&](const auto& source) {
               return IsAtOrBelow(source.first, fTask.source) && source.second.kind == 'f' &&
                      source.second.text.starts_with(item.text);
           });
}

void Judgement::CheckOld(const std::string& path, const SceneItem& old)
{
    const auto now = fAfter.find(path);
    if (now == fAfter.end()) {
        Say(path, "was in the target, and is gone");
        return;
    }
    const SceneItem* source = SourceOf(path);
    const bool mayBeNew =
        source != nullptr && fTask.replaced.count(path.substr(fTask.target.size() + 1)) > 0;
    const bool isOld = now->second.kind == old.kind && now->second.text == old.text;
    const bool isNew =
        mayBeNew && now->second.kind == source->kind && now->second.text == source->text;
    if (!isOld && !isNew) {
        Say(path, "is neither the old nor the whole new one");
    }
    if ((now->second.mode & ~(old.mode | (isNew ? source->mode : 0))) != 0) {
        Say(path, "is open to more people than before");
    }
}

void Judgement::CheckNew(const std::string& path, const SceneItem& made)
{
    const bool isBeside = LeafOf(path).starts_with(".norvane-");
    if (isBeside) {
        if (!fEnding.wasKilled && !fEnding.canLeaveParts) {
            Say(path, "was left behind");
        }
        if (!IsPartOfSource(made)) {
            Say(path, "was left behind with strange contents");
        }
        return;
    }
    const SceneItem* source = SourceOf(path);
    if (source == nullptr || source->kind != made.kind) {
        Say(path, "was not in the source");
        return;
    }
    if (made.kind == 'f' && !source->text.starts_with(made.text)) {
        Say(path, "holds what was not in its source");
    }
    const bool isOwnText = made.text == source->text;
    if (made.kind == 'l' && !isOwnText && !made.text.starts_with(fScene.Path(fTask.source) + "/") &&
        !made.text.starts_with(fScene.Path("one/foreign/"))) {
        Say(path, "points elsewhere");
    }
    // Its owner's rights, while it is being filled, apart.
    if (made.kind != 'l' && (made.mode & ~(source->mode | 0700)) != 0) {
        Say(path, "is open to more people than its source");
    }
}

void Judgement::CheckTarget()
{
    for (const auto& [path, old] : fBefore) {
        if (path.starts_with(fTask.target + "/")) {
            CheckOld(path, old);
        }
    }
    for (const auto& [path, made] : fAfter) {
        if (path.starts_with(fTask.target + "/") && fBefore.find(path) == fBefore.end()) {
            CheckNew(path, made);
        }
    }
}

void Judgement::CheckWhole()
{
    if (!fEnding.saysWhole) {
        return;
    }
    for (const auto& [name, item] : Below(fBefore, fTask.source)) {
        const std::string path =
            fTask.target + "/" + LeafOf(fTask.source) + (name.empty() ? "" : "/") + name;
        const auto arrived = fAfter.find(path);
        if (arrived == fAfter.end()) {
            Say(path, "is missing, yet all is said to be copied");
        } else if (item.kind == 'f' && arrived->second.text != item.text) {
            Say(path, "is not whole, yet all is said to be copied");
        }
    }
}

void Judgement::CheckTrash(const std::string& trash)
{
    std::set<std::string> entries;
    std::set<std::string> records;
    for (const auto& [path, item] : fAfter) {
        if (path.starts_with(trash + "/files/")) {
            entries.insert(path.substr(trash.size() + 7)
                               .substr(0, path.find('/', trash.size() + 7) - trash.size() - 7));
        }
        if (path.starts_with(trash + "/info/")) {
            const std::string name = path.substr(trash.size() + 6);
            records.insert(name.substr(0, name.rfind(".trashinfo")));
            const bool isCut =
                item.text.find("\nDeletionDate=") == std::string::npos || item.text.back() != '\n';
            const bool isNew = fBefore.find(path) == fBefore.end();
            if (isNew && isCut && !fEnding.wasKilled && !fEnding.canLeaveParts) {
                Say(path, "is no whole record");
            }
        }
    }
    for (const std::string& name : entries) {
        if (records.count(name) == 0) {
            Say(trash + "/files/" + name, "lies in the Trash without a record");
        }
    }
    for (const std::string& name : records) {
        // It misleads nobody: what it speaks of is not there to be restored.
        if (entries.count(name) == 0 && !fEnding.wasKilled && !fEnding.hadFault) {
            Say(trash + "/info/" + name, "is a record of nothing");
        }
    }
}

void Judgement::CheckGone()
{
    for (const auto& [name, item] : Below(fAfter, fTask.source)) {
        const auto old = fBefore.find(fTask.source + (name.empty() ? "" : "/") + name);
        if (old == fBefore.end() || old->second.text != item.text) {
            Say(fTask.source + "/" + name, "was to be deleted, and changed");
        }
        if (fEnding.saysWhole) {
            Say(fTask.source + "/" + name, "is there, yet said to be deleted");
        }
    }
}

void Judgement::CheckRenamed()
{
    const bool isOld = Below(fBefore, fTask.source) == Below(fAfter, fTask.source);
    const bool isNew = Below(fBefore, fTask.source) == Below(fAfter, fTask.target);
    if (isOld == isNew) {
        Say(fTask.source, "is neither here nor there whole, or both");
    }
    if (fEnding.saysWhole && !isNew) {
        Say(fTask.source, "is said to be renamed, and is not");
    }
}

void Judgement::CheckSettings()
{
    const auto now = fAfter.find("one/home/.config/Norvane/Norvane.pref");
    const auto old = fBefore.find("one/home/.config/Norvane/Norvane.pref");
    if (now == fAfter.end()) {
        Say("settings", "are gone");
        return;
    }
    if ((now->second.mode & 077) != 0) {
        Say("settings", "are open to others");
    }
    // Keys that nobody set keep their lines, or the writer says that they do not.
    const bool hasAll = now->second.text.find("Kept=here\n") != std::string::npos &&
                        now->second.text.find("Last=there\n") != std::string::npos;
    if (fEnding.saysWhole &&
        (!hasAll || now->second.text.find("First=a value that is longer\n") == std::string::npos)) {
        Say("settings", "are said to be written, and are not");
    }
    if (!fEnding.hadFault && !hasAll) {
        Say("settings", "lost a key");
    }
    if (old->second.text.size() > now->second.text.size()) {
        Say("settings", "were cut");
    }
}

std::vector<std::string> Judgement::Result()
{
    CheckOthers();
    switch (fTask.kind) {
    case Task::kCopy:
        CheckSourceUntouched();
        CheckTarget();
        CheckWhole();
        break;
    case Task::kMove:
        CheckNothingLost();
        CheckTarget();
        CheckWhole();
        break;
    case Task::kTrash:
        CheckNothingLost();
        break;
    case Task::kDelete:
        CheckGone();
        break;
    case Task::kRename:
        CheckRenamed();
        break;
    case Task::kSettings:
        CheckSettings();
        break;
    }
    if (fTask.kind == Task::kMove || fTask.kind == Task::kTrash || fTask.kind == Task::kDelete) {
        CheckTrash(kHomeTrash);
        CheckTrash("two/.Trash-" + std::to_string(0));
    }
    if (!fEnding.hadFault && !fTask.asksOrSkips && !fEnding.saysWhole) {
        Say(fTask.source, "was not done, though nothing failed");
    }
    return fFaults;
}

} // namespace

std::vector<std::string> Judge(const Task& task, const Ending& ending, const Scene& scene,
                               const Snapshot& before, const Snapshot& after)
{
    return Judgement(task, ending, scene, before, after).Result();
}
