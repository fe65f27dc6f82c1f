// What lies in a Trash, and its records.

#include "Judgement.h"

#include <algorithm>

namespace {

constexpr const char* kEnding = ".trashinfo";

std::string TopName(const std::string& path, const std::string& folder)
{
    const std::string name = path.substr(folder.size());
    return name.substr(0, name.find('/'));
}

std::string RecordOf(const std::string& trash, const std::string& name)
{
    return trash + "/info/" + name + kEnding;
}

/// Whether `text` is like "2020-02-02T20:20:20".
bool IsTime(const std::string& text)
{
    constexpr std::string_view kForm = "0000-00-00T00:00:00";
    return text.size() == kForm.size() &&
           std::equal(text.begin(), text.end(), kForm.begin(), [](char each, char form) {
               return form == '0' ? each >= '0' && each <= '9' : each == form;
           });
}

} // namespace

std::vector<std::string> Judgement::FreeNames(const std::string& trash) const
{
    std::vector<std::string> names;
    const std::string leaf = LeafOf(fTask.source);
    for (int n = 0; names.size() < 2; ++n) {
        const std::string name = n == 0 ? leaf : leaf + " copy" + (n == 1 ? "" : std::to_string(n));
        if (IsNew(trash + "/files/" + name) && IsNew(RecordOf(trash, name))) {
            names.push_back(name);
        }
    }
    return names;
}

bool Judgement::IsRecord(const std::string& text, const std::string& trash) const
{
    // What another volume's Trash holds is noted from the volume's top.
    const std::string path = trash == kHomeTrash ? fScene.Path(fTask.source)
                                                 : fTask.source.substr(fTask.source.find('/') + 1);
    const std::string start = "[Trash Info]\nPath=" + path + "\nDeletionDate=";
    return text.starts_with(start) && text.back() == '\n' &&
           IsTime(text.substr(start.size(), text.size() - start.size() - 1));
}

void Judgement::CheckTrashEntry(const std::string& trash, const std::string& name)
{
    const std::string path = trash + "/files/" + name;
    if (!IsNew(path)) {
        const bool hadRecord = !IsNew(RecordOf(trash, name));
        if (hadRecord && fAfter.count(RecordOf(trash, name)) == 0) {
            Say(path, "is there, and its record is not");
        }
        return;
    }
    if (fTask.kind == Task::kRename) {
        return; // looked at there, but for its record
    }
    if (IsAsideOfSource(path, fAfter.at(path))) {
        return; // moved out of there, and broken off
    }
    const std::vector<std::string> names = FreeNames(trash);
    // The second is for what could not be copied whole: it goes there itself, and something may
    // keep the first name.
    if (name != names[0] && (name != names[1] || !fEnding.hadFault)) {
        Say(path, "has a name that it should not get");
        return;
    }
    for (const auto& [below, made] : fAfter) {
        if (IsAtOrBelow(below, path)) {
            CheckMade(path, below, made);
        }
    }
    // Of what was only to be copied a part stays, as anywhere else; so does what was read of a
    // source that cannot be read any more. Of what was renamed entry by entry the rest goes there.
    const bool mayBePart = fEnding.wasKilled || fEnding.canLeaveParts ||
                           ((fEnding.hadFault || fTask.isByRenaming) && fEnding.wasTold) ||
                           (fTask.kind == Task::kCopy && !fEnding.saysWhole);
    if (!mayBePart && !IsWholeAt(path)) {
        Say(path, "is a part that nobody asked for");
    }
}

/// The record of a new entry, or of none.
void Judgement::CheckRecord(const std::string& trash, const std::string& name)
{
    const std::string path = RecordOf(trash, name);
    const bool hasEntry = fAfter.count(trash + "/files/" + name) > 0;
    const bool mayStay = fEnding.wasKilled || fEnding.canLeaveParts;
    if (!IsNew(path)) {
        const bool lostEntry = !hasEntry && !IsNew(trash + "/files/" + name);
        // One of nothing misleads nobody, where something kept it from being removed.
        if (lostEntry && !fEnding.hadFault) {
            Say(path, "is a record of nothing");
        }
        return;
    }
    if (!hasEntry && !mayStay) {
        Say(path, "is a new record of nothing");
    }
    const SceneItem& record = fAfter.at(path);
    const auto old = fBefore.find(RecordOf(trash, LeafOf(fTask.source)));
    const bool isAside =
        hasEntry && IsAsideOfSource(trash + "/files/" + name, fAfter.at(trash + "/files/" + name));
    const bool isWhole = fTask.kind == Task::kRename || isAside
                             ? old != fBefore.end() && record.text == old->second.text
                             : IsRecord(record.text, trash);
    if (!isWhole && (hasEntry || !mayStay)) {
        Say(path, "does not tell where its entry comes from");
    }
    if ((record.mode & 077) != 0) {
        Say(path, "is open to others");
    }
}

void Judgement::CheckTrash(const std::string& trash)
{
    const std::string files = trash + "/files/";
    const std::string info = trash + "/info/";
    std::set<std::string> entries;
    std::set<std::string> records;
    for (const auto& [path, item] : fAfter) {
        if (path.starts_with(files)) {
            entries.insert(TopName(path, files));
        } else if (path.starts_with(info)) {
            records.insert(LeafOf(path).substr(0, LeafOf(path).rfind(kEnding)));
        } else if (IsNew(path) && IsAtOrBelow(path, trash) && fScene.HasModes() &&
                   item.mode != 0700) {
            Say(path, "is a folder of a Trash that others may look into");
        }
    }
    for (const std::string& name : entries) {
        CheckTrashEntry(trash, name);
        if (IsNew(files + name) && records.count(name) == 0) {
            Say(files + name, "lies in the Trash without a record");
        }
    }
    for (const std::string& name : records) {
        CheckRecord(trash, name);
    }
    const bool goesThere = (fTask.kind == Task::kTrash && trash == kHomeTrash) ||
                           (TrashOf(fTask.target) == trash && fTask.kind != Task::kRename);
    const std::vector<std::string> names = FreeNames(trash);
    // The record of a first try can be left, and keeps its name.
    if (goesThere && fEnding.saysWhole && !IsWholeAt(files + names[0]) &&
        !(fEnding.hadFault && IsWholeAt(files + names[1]))) {
        Say(files, "does not hold all that is said to be in it");
    }
}
