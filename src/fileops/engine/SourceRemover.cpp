#include "fileops/engine/SourceRemover.h"

#include "fileops/engine/AsideName.h"
#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OwnNames.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>

namespace norvane {

namespace {

// Of the item, in which every place below begins.
constexpr uint64 kTopPlace = 0;

/// Whether the copy has the size and the time that it was given, as finely as its volume keeps
/// times; some of those that keep no node numbers keep no times either.
bool HasItsBytes(const struct stat& copy, const struct stat& source, bool keepsTimes)
{
    constexpr time_t kCoarsest = 2; // seconds, of FAT
    const time_t apart = copy.st_mtim.tv_sec - source.st_mtim.tv_sec;
    const bool isSameTime = apart == 0 && copy.st_mtim.tv_nsec == source.st_mtim.tv_nsec;
    const bool isRounded =
        copy.st_mtim.tv_nsec % 10'000'000 == 0 && apart <= kCoarsest && apart >= -kCoarsest;
    return copy.st_size == source.st_size && (isSameTime || isRounded || !keepsTimes);
}

} // namespace

SourceRemover::SourceRemover(OperationUI& ui, const MoveLedger& ledger, const CopiedItem& copy)
    : fUI(ui), fLedger(ledger), fCopy(copy)
{
}

void SourceRemover::Stays(const std::string& name, const char* reason)
{
    fUI.NoteProblem(name, reason);
    Keep();
}

void SourceRemover::Keep()
{
    fIsGone = false;
    if (!fLevels.empty()) {
        fLevels.back().stays = true;
    }
}

bool SourceRemover::Remove(BEntry& item)
{
    const std::string name = item.Name();
    const OwnTemporaryName aside;
    status_t status = item.Rename(aside.Name());
    if (status == B_ENTRY_NOT_FOUND && !item.Exists()) {
        return true; // somebody else was faster
    }
    if (status != B_OK) {
        Stays(name, status == B_BUSY ? "it is a mounted volume" : ReasonFor(status));
        return false;
    }
    if (RemoveAside(item, name, item.Name())) {
        return true;
    }
    PutBack(item, name, fUI);
    return false;
}

/// False when something of it stays.
bool SourceRemover::RemoveAside(BEntry& item, const std::string& name, const std::string& aside)
{
    BDirectory parent;
    struct stat record;
    status_t status = item.GetParent(&parent);
    if (status == B_OK) {
        status = parent.GetStatFor(aside.c_str(), &record);
    }
    if (status != B_OK) {
        Stays(name, ReasonFor(status));
        return false;
    }
    const uint64 place = PlaceBelow(kTopPlace, name);
    if (!MayGo(name, place, record, fCopy.folder, fCopy.name.c_str())) {
        return false;
    }
    if (S_ISDIR(record.st_mode) && !RemoveTree(parent, name, aside, record)) {
        return false;
    }
    status = item.Remove(); // with its record, when it lay in a Trash
    if (status == B_ENTRY_NOT_FOUND && !item.Exists()) {
        status = B_OK;
    }
    if (status != B_OK) {
        const bool wasAdded = status == B_DIRECTORY_NOT_EMPTY;
        Stays(name, wasAdded ? "something was added to it meanwhile" : ReasonFor(status));
    }
    return fIsGone;
}

bool SourceRemover::RemoveTree(BDirectory& parent, const std::string& name,
                               const std::string& aside, const struct stat& record)
{
    fSources = std::make_unique<FolderChain>(parent);
    fTargets = std::make_unique<FolderChain>(fCopy.folder);
    if (!Enter(name, aside, fCopy.name, PlaceBelow(kTopPlace, name), record)) {
        return false;
    }
    while (!fLevels.empty()) {
        Level& level = fLevels.back();
        if (level.next >= level.folders.size() || !fUI.MayDelete()) {
            Leave();
            continue;
        }
        const Child child = std::move(level.folders[level.next++]);
        Enter(child.name, child.name, child.name, PlaceBelow(level.place, child.name),
              child.record);
    }
    return fIsGone;
}

/// Deletes what is in a folder but for its subfolders; false when it is not entered, and stays.
bool SourceRemover::Enter(const std::string& name, const std::string& sourceName,
                          const std::string& targetName, uint64 place, const struct stat& record)
{
    const std::shared_ptr<BDirectory> sourceAbove = fSources->Here();
    const std::shared_ptr<BDirectory> targetAbove = fTargets->Here();
    if (sourceAbove == nullptr || targetAbove == nullptr) {
        Stays(name, "the folder that it lies in is out of reach");
        return false;
    }
    if (!fLevels.empty() && !MayGo(name, place, record, *targetAbove, targetName.c_str())) {
        return false;
    }
    auto source = std::make_unique<BDirectory>();
    auto target = std::make_unique<BDirectory>();
    struct stat sourceRecord;
    struct stat targetRecord;
    status_t status = source->SetToUnmountedChild(*sourceAbove, sourceName.c_str());
    if (status == B_NO_MORE_FDS && CloseAbove(*fSources, *fTargets)) {
        status = source->SetToUnmountedChild(*sourceAbove, sourceName.c_str());
    }
    if (status == B_OK) {
        status = source->GetStat(&sourceRecord);
    }
    if (status == B_OK) {
        status = target->SetToChild(*targetAbove, targetName.c_str());
    }
    if (status == B_OK) {
        status = target->GetStat(&targetRecord);
    }
    if (status != B_OK) {
        Stays(name, ReasonFor(status));
        return false;
    }
    if (NodeOf(sourceRecord) != NodeOf(record)) {
        Stays(name, "another folder took its place");
        return false;
    }
    fLevels.push_back({name, sourceName, place, {}});
    fSources->Enter(std::move(source), sourceName, NodeOf(sourceRecord));
    fTargets->Enter(std::move(target), targetName, NodeOf(targetRecord));
    RemoveFiles(*fSources->Here(), *fTargets->Here());
    return true;
}

void SourceRemover::RemoveFiles(BDirectory& source, BDirectory& target)
{
    const char* name = nullptr;
    status_t status = source.GetNextName(&name);
    for (; status == B_OK; status = source.GetNextName(&name)) {
        fUI.EntriesVisited(1);
        if (!fUI.MayDelete()) {
            Keep();
            return;
        }
        Child child{name, {}};
        const status_t found = source.GetStatFor(name, &child.record);
        if (found == B_ENTRY_NOT_FOUND) {
            continue; // somebody else was faster
        }
        if (found != B_OK) {
            Stays(child.name, ReasonFor(found));
        } else if (S_ISDIR(child.record.st_mode)) {
            fLevels.back().folders.push_back(std::move(child));
        } else {
            RemoveFile(source, target, child);
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        Stays(fLevels.back().name, ReasonFor(status));
    }
}

void SourceRemover::RemoveFile(BDirectory& source, BDirectory& target, const Child& child)
{
    const char* name = child.name.c_str();
    if (!MayGo(child.name, PlaceBelow(fLevels.back().place, child.name), child.record, target,
               name)) {
        return;
    }
    const status_t status = source.RemoveChildFile(name);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        Stays(child.name, ReasonFor(status));
    }
}

void SourceRemover::Leave()
{
    const Level level = std::move(fLevels.back());
    fLevels.pop_back();
    fSources->Leave();
    fTargets->Leave();
    const bool isTop = fLevels.empty();
    if (level.stays || level.next < level.folders.size()) {
        Keep();
        return;
    }
    if (isTop) {
        return; // goes by its entry
    }
    const std::shared_ptr<BDirectory> above = fSources->Here();
    const status_t status =
        above != nullptr ? above->RemoveChildFolder(level.sourceName.c_str()) : B_ENTRY_NOT_FOUND;
    if (status == B_DIRECTORY_NOT_EMPTY) {
        Stays(level.name, "something was added to it meanwhile");
    } else if (status != B_OK && (status != B_ENTRY_NOT_FOUND || above == nullptr)) {
        Stays(level.name, ReasonFor(status));
    }
}

/// Whether the entry is as it was read, and what it became is still there.
bool SourceRemover::MayGo(const std::string& name, uint64 place, const struct stat& record,
                          const BDirectory& target, const char* targetName)
{
    ino_t made = 0;
    if (!fLedger.Holds(place, record, &made)) {
        Stays(name, "it was added or changed meanwhile, and stays");
        return false;
    }
    struct stat copy;
    const bool isThere =
        target.GetStatFor(targetName, &copy) == B_OK &&
        (copy.st_ino == made || !fCopy.hasStableNodes) &&
        (copy.st_mode & S_IFMT) == (record.st_mode & S_IFMT) &&
        (!S_ISREG(record.st_mode) || HasItsBytes(copy, record, fCopy.hasStableNodes));
    if (!isThere) {
        Stays(name, "its copy was removed or changed meanwhile, and it stays");
    }
    return isThere;
}

} // namespace norvane
