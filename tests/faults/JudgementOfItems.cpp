// Sources, and the folders that they are copied or moved into.

#include "Judgement.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr const char* kOut = "../../../";    // begins a link out of the item
constexpr const char* kBeside = ".norvane-"; // what is written beside the file that it will replace

/// "a/b" seen from the folder of "x/y" is "x/a/b".
std::string FromFolderOf(const std::string& path, const std::string& text)
{
    return (std::filesystem::path(path).parent_path() / text).lexically_normal();
}

std::string InFolder(const std::string& folder, const std::string& name)
{
    return name.empty() ? folder : folder + "/" + name;
}

} // namespace

bool IsSomewhere(const Snapshot& all, const std::string& name, const SceneItem& item)
{
    return std::any_of(all.begin(), all.end(), [&](const auto& found) {
        const std::string foundLeaf = LeafOf(found.first);
        if (found.second.kind != item.kind || foundLeaf.starts_with(kBeside)) {
            return false; // what lies beside its place is nothing that a person would find
        }
        // Contents tell whose they are; what has none is known by its name.
        const bool isAnonymous = item.kind != 'f' || item.text.empty();
        const std::string leaf = LeafOf(name);
        return isAnonymous ? foundLeaf.starts_with(leaf.empty() ? "item" : leaf)
                           : found.second.text == item.text;
    });
}

bool Judgement::LeadsSomewhere(const std::string& path, const SceneItem& link) const
{
    const std::string root = fScene.Root() + "/";
    const std::string target =
        link.text.starts_with(root) ? link.text.substr(root.size()) : FromFolderOf(path, link.text);
    return fBefore.count(target) > 0;
}

/// Whether all could be done if nothing failed.
bool Judgement::CanBeWhole() const
{
    if (fTask.kind == Task::kRename) {
        // A record alone takes a name in a Trash: someone may be about to put an entry there. One
        // that says what the entry's own says is a claim of the entry itself, left by a kill.
        const std::string trash = TrashOf(fTask.target);
        const auto claim = fBefore.find(trash + "/info/" + LeafOf(fTask.target) + ".trashinfo");
        const auto own = fBefore.find(trash + "/info/" + LeafOf(fTask.source) + ".trashinfo");
        return IsNew(fTask.target) &&
               (trash.empty() || claim == fBefore.end() ||
                (own != fBefore.end() && claim->second.text == own->second.text));
    }
    const bool isRenamed = fTask.kind == Task::kTrash && fTask.source.starts_with("one/");
    if (isRenamed ||
        (fTask.kind != Task::kCopy && fTask.kind != Task::kMove && fTask.kind != Task::kTrash)) {
        return true;
    }
    const bool isMerged = fTask.kind != Task::kTrash && TrashOf(fTask.target).empty();
    const std::string root = fTask.target + "/" + LeafOf(fTask.source);
    return std::all_of(fSource.begin(), fSource.end(), [&](const auto& each) {
        const auto& [name, item] = each;
        // Of two such names one is left out.
        if (fScene.FoldsNames() && fSource.count("same") > 0 && fSource.count("Same") > 0) {
            return false;
        }
        if (item.kind == 'l' && !LeadsSomewhere(InFolder(fTask.source, name), item)) {
            return false;
        }
        const std::string path = InFolder(root, name);
        const auto existing = fBefore.find(path);
        if (!isMerged || existing == fBefore.end()) {
            return true;
        }
        // Folders are merged, files replaced; nothing takes the place of what is there else.
        return item.kind == 'd'   ? existing->second.kind == 'd'
               : item.kind == 'f' ? existing->second.kind != 'd' &&
                                        fTask.replaced.count(path.substr(fTask.target.size() + 1))
                                  : false;
    });
}

void Judgement::CheckNothingLost()
{
    for (const auto& [name, item] : fSource) {
        // A link beside another one is of a move that was killed before.
        const bool isLeft = item.kind == 'l' && LeafOf(name).starts_with(kBeside);
        if (!isLeft && !IsSomewhere(fAfter, name, item)) {
            Say(InFolder(fTask.source, name), "is lost");
        }
    }
}

/// A source is deleted under a hidden name in its folder. When that is broken off, or
/// the way back fails, what is left of it has that name.
bool Judgement::IsAsideOfSource(const std::string& path, const SceneItem& item) const
{
    const std::string folder =
        fTask.source.substr(0, fTask.source.size() - LeafOf(fTask.source).size());
    const bool mayStay = fEnding.wasKilled || (fEnding.hadFault && fEnding.wasTold);
    const bool goesAway =
        fTask.kind == Task::kMove || fTask.kind == Task::kTrash || fTask.kind == Task::kDelete;
    if (!mayStay || !goesAway || !path.starts_with(folder + kBeside)) {
        return false;
    }
    const size_t slash = path.find('/', folder.size());
    const auto source = fSource.find(slash == std::string::npos ? "" : path.substr(slash + 1));
    return source != fSource.end() && source->second == item;
}

/// Whether it is a file of the target that was to be replaced, as it was.
bool Judgement::IsReplaced(const SceneItem& item) const
{
    return std::any_of(fTask.replaced.begin(), fTask.replaced.end(), [&](const auto& name) {
        const auto old = fBefore.find(fTask.target + "/" + name);
        return old != fBefore.end() && old->second == item;
    });
}

/// Whether it is a link, or the successor of one, that leads by its whole path where one of the
/// source led that was to be moved.
bool Judgement::IsKeptLink(const std::string& path, const SceneItem& item) const
{
    const bool isBeside = LeafOf(path).starts_with(kBeside);
    const bool mayStay = fEnding.wasKilled || fEnding.canLeaveParts;
    return fTask.isByRenaming && item.kind == 'l' && (!isBeside || mayStay) &&
           (item.text == fScene.Path("one/foreign/file") ||
            (isBeside && item.text.starts_with(kOut)));
}

/// What is left at the source's place is as it was.
void Judgement::CheckLeftover()
{
    for (const auto& [name, item] : Below(fAfter, fTask.source)) {
        const std::string path = InFolder(fTask.source, name);
        const auto old = fBefore.find(path);
        if ((old == fBefore.end() || !(old->second == item)) && !IsKeptLink(path, item)) {
            Say(path, "was to go away, and changed");
        }
        const bool isKept = fTask.kind == Task::kEmptyTrash && name.empty();
        if (fEnding.saysWhole && !fEnding.wasTold && !isKept) {
            Say(path, "is there, and said to be gone");
        }
    }
}

/// Anything of a source was deleted only when all of it had arrived.
void Judgement::CheckDeletion()
{
    const bool isAllThere = std::all_of(fSource.begin(), fSource.end(), [&](const auto& each) {
        return fAfter.count(InFolder(fTask.source, each.first)) > 0;
    });
    // Renamed one by one, the entries are either here or there, which CheckNothingLost() looks at.
    if (isAllThere || fTask.isByRenaming) {
        return;
    }
    std::vector<std::string> places;
    if (fTask.kind == Task::kMove && TrashOf(fTask.target).empty()) {
        places.push_back(fTask.target + "/" + LeafOf(fTask.source));
    }
    for (const char* trash : kTrashes) {
        for (const std::string& name : FreeNames(trash)) {
            places.push_back(std::string(trash) + "/files/" + name);
        }
    }
    if (std::none_of(places.begin(), places.end(),
                     [this](const std::string& place) { return IsWholeAt(place); })) {
        Say(fTask.source, "was deleted, and did not arrive whole");
    }
}

bool Judgement::IsWholeAt(const std::string& root) const
{
    return std::all_of(fSource.begin(), fSource.end(), [&](const auto& each) {
        const auto& [name, item] = each;
        const auto arrived = fAfter.find(InFolder(root, name));
        return arrived != fAfter.end() && arrived->second.kind == item.kind &&
               (item.kind == 'l' || arrived->second.text == item.text) &&
               ((fTask.kind == Task::kCopy && (!fTask.keepsAll || fEnding.wasTold)) ||
                IsTakenAlong(arrived->first, item));
    });
}

/// Whether what a move takes along besides the contents arrived at `path`.
bool Judgement::IsTakenAlong(const std::string& path, const SceneItem& item) const
{
    const SceneItem& arrived = fAfter.at(path);
    if (item.kind == 'd' && !IsNew(path)) {
        return true; // a folder that was there keeps what it is
    }
    if (arrived.note != item.note && !fEnding.canLoseAttributes) {
        return false;
    }
    // A mode or a time that cannot be set holds no move up.
    return fEnding.hadFault || ((item.kind == 'l' || arrived.mode == item.mode) &&
                                arrived.modifiedNs == item.modifiedNs);
}

const SceneItem* Judgement::SourceOf(const std::string& root, const std::string& path) const
{
    if (!IsAtOrBelow(path, root)) {
        return nullptr;
    }
    const auto found = fSource.find(path.size() > root.size() ? path.substr(root.size() + 1) : "");
    return found == fSource.end() ? nullptr : &found->second;
}

void Judgement::CheckOld(const std::string& path, const SceneItem& old)
{
    const auto now = fAfter.find(path);
    if (now == fAfter.end()) {
        Say(path, "was in the target, and is gone");
        return;
    }
    const SceneItem& item = now->second;
    const SceneItem* source = SourceOf(fTask.target + "/" + LeafOf(fTask.source), path);
    const bool mayBeNew =
        source != nullptr && fTask.replaced.count(path.substr(fTask.target.size() + 1)) > 0;
    const bool isOld = item.kind == old.kind && item.text == old.text;
    const bool isNew = mayBeNew && item.kind == source->kind && item.text == source->text;
    if (!isOld && !isNew) {
        Say(path, "is neither the old nor the whole new one");
        return;
    }
    const bool isSame = isOld && isNew; // done again, over its own copy
    const bool hasOwnMode = old.kind == 'l' || fTask.kind == Task::kMove || fTask.keepsAll;
    const mode_t newMode = isNew ? (hasOwnMode ? source->mode : old.mode) | 0600 : 0;
    const mode_t oldMode = isOld ? old.mode : 0;
    if ((item.mode & ~(isSame ? oldMode | newMode : isNew ? newMode : oldMode)) != 0) {
        Say(path, "is open to more people than before");
    }
    if (!fEnding.hadFault && !hasOwnMode && item.mode != old.mode) {
        Say(path, "did not keep the mode it had");
    }
}

void Judgement::CheckBeside(const std::string& path, const SceneItem& made)
{
    if (!fEnding.wasKilled && !fEnding.canLeaveParts) {
        Say(path, "was left behind");
    }
    if (IsReplaced(made) || IsKeptLink(path, made)) {
        return; // the names were exchanged, and it could not be removed
    }
    const bool isPart = std::any_of(fSource.begin(), fSource.end(), [&](const auto& each) {
        const SceneItem& source = each.second;
        return source.kind == 'f' && source.text.starts_with(made.text) &&
               (made.mode & ~(source.mode | 0600)) == 0;
    });
    if (made.kind != 'f' || !isPart) {
        Say(path, "is no part of a source, or open to more people");
    }
}

bool Judgement::IsOwnLink(const SceneItem& made, const SceneItem& source, bool isInTarget) const
{
    const bool isAsItWas = fTask.kind != Task::kCopy || fTask.keepsAll;
    const bool isAbsolute = made.text.starts_with(fScene.Path(fTask.source) + "/") ||
                            made.text.starts_with(fScene.Path("one/foreign/"));
    const bool isKeptOut = fTask.isByRenaming && source.text.starts_with(kOut);
    if (isKeptOut) {
        return isAbsolute || ((!isInTarget || fEnding.canSeemGone) && made.text == source.text);
    }
    return isAsItWas ? made.text == source.text : isAbsolute;
}

/// One entry of what was made at `root` out of the source.
void Judgement::CheckMade(const std::string& root, const std::string& path, const SceneItem& made)
{
    const SceneItem* source = SourceOf(root, path);
    if (source == nullptr || source->kind != made.kind) {
        Say(path, "was not in the source");
        return;
    }
    if (made.kind == 'f' && !source->text.starts_with(made.text)) {
        Say(path, "holds what was not in its source");
    }
    if (made.kind == 'l' && !IsOwnLink(made, *source, IsAtOrBelow(path, fTask.target))) {
        Say(path, "points elsewhere");
    }
    // Its owner's rights, while it is being filled, apart.
    if (made.kind != 'l' && (made.mode & ~(source->mode | (made.kind == 'd' ? 0700 : 0600))) != 0) {
        Say(path, "is open to more people than its source");
    }
    const mode_t most = made.kind == 'd' || fTask.keepsAll ? 0777 : 0666;
    if (!fEnding.hadFault && fTask.kind == Task::kCopy && made.kind != 'l' &&
        made.mode != (source->mode & most)) {
        Say(path, "has not the mode of a new one");
    }
}

void Judgement::CheckTarget()
{
    if (fTask.target.empty() || !TrashOf(fTask.target).empty()) {
        return;
    }
    const std::string root = fTask.target + "/" + LeafOf(fTask.source);
    for (const auto& [path, old] : fBefore) {
        if (path.starts_with(fTask.target + "/")) {
            CheckOld(path, old);
        }
    }
    for (const auto& [path, made] : fAfter) {
        if (!path.starts_with(fTask.target + "/") || !IsNew(path)) {
            continue;
        }
        if (LeafOf(path).starts_with(kBeside) && SourceOf(root, path) == nullptr) {
            CheckBeside(path, made);
        } else {
            CheckMade(root, path, made);
        }
    }
    if (fEnding.saysWhole && !IsWholeAt(root)) {
        Say(root, "is not whole, yet all is said to be there");
    }
}
