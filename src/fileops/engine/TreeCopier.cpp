#include "fileops/engine/TreeCopier.h"

#include "fileops/engine/EntryMover.h"
#include "fileops/engine/FileCopier.h"
#include "fileops/engine/LinkCopier.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <fs_info.h>

namespace norvane {

TreeCopier::TreeCopier(OperationContext& context, const CopyPurpose& purpose, ItemCopy& item)
    : fContext(context), fUI(context.ui), fPurpose(purpose), fItem(item)
{
}

void TreeCopier::Copy(const Way& way, const char* name, const char* targetName)
{
    const CopyStep step{way->source, name, way->target, targetName, PlaceBelow(0, name)};
    if (fPurpose.wasFile && CopyOpened(way, step)) {
        return;
    }
    struct stat record;
    const status_t status = step.source.folder.GetStatFor(step.name, &record);
    if (status != B_OK) {
        Note(step.name, status);
        fItem.result = {.hasFailedReading = true};
        return;
    }
    fTopSource = NodeOf(record);
    if (S_ISDIR(record.st_mode)) {
        CopyTree(step, record);
    } else {
        CopyOne(way, step, record);
    }
    fItem.result.isItself |= fHasMetItself;
}

/// An item that is no folder.
void TreeCopier::CopyOne(const Way& way, const CopyStep& step, const struct stat& record)
{
    if (S_ISLNK(record.st_mode)) {
        fItem.result = LinkCopier(fContext, fPurpose, fTopSource).Copy(step, record);
        return;
    }
    if (!S_ISREG(record.st_mode)) {
        fItem.result = RefuseKind(step.name);
        return;
    }
    EndOrQueue(std::make_unique<FileCopier>(fContext, fPurpose, way, step.name, step.targetName,
                                            step.place));
}

/// A file, unless something else has its name by now: then it is left, and false.
bool TreeCopier::CopyOpened(const Way& way, const CopyStep& step)
{
    auto copier = std::make_unique<FileCopier>(fContext, fPurpose, way, step.name, step.targetName,
                                               step.place);
    const bool isOpen = copier->Open() == B_OK;
    if (isOpen) {
        EndOrQueue(std::move(copier));
    }
    return isOpen;
}

void TreeCopier::EndOrQueue(std::unique_ptr<FileCopier> copier)
{
    if (copier->Begin()) {
        fItem.isFile = true;
        fContext.smallFiles.Add(std::move(copier), &fItem);
        return;
    }
    fContext.smallFiles.Drain();
    fItem.result = copier->End();
}

void TreeCopier::CopyTree(const CopyStep& step, const struct stat& record)
{
    fSources = std::make_unique<FolderChain>(step.source.folder);
    fTargets = std::make_unique<FolderChain>(step.target.folder);
    fSourcePath = step.source.path == "/" ? "" : step.source.path;
    fTargetPath = step.target.path == "/" ? "" : step.target.path;
    fHasStableTarget = step.target.hasStableNodes;
    fItem.result = {.isDone = true, .isWhole = true};
    if (!Enter(step, record)) {
        return;
    }
    fItem.result.isMade = fLevels.back().isNew;
    fItem.result.target = fLevels.back().target;
    while (!fLevels.empty()) {
        if (fUI.IsStopped()) {
            fItem.result.isWhole = false;
        }
        const Level& level = fLevels.back();
        if (level.next < level.folders.size() && !fUI.IsStopped()) {
            EnterNext();
        } else {
            Leave();
        }
    }
}

void TreeCopier::EnterNext()
{
    fContext.smallFiles.DrainFew();
    if (fUI.IsStopped()) {
        return;
    }
    Level& level = fLevels.back();
    const Child child = std::move(level.folders[level.next++]);
    const std::shared_ptr<BDirectory> source = fSources->Here();
    const std::shared_ptr<BDirectory> target = fTargets->Here();
    if (source == nullptr || target == nullptr) {
        Fail(child.name.c_str(), "the folder that it lies in is out of reach");
        return;
    }
    const CopyPlace from{*source, fSourcePath};
    const CopyPlace to{*target, fTargetPath, level.target, level.isNew, fHasStableTarget};
    const char* name = child.name.c_str();
    const CopyStep step{from, name, to, name, PlaceBelow(level.place, child.name)};
    if (!IsMovedWhole(step)) {
        Enter(step, child.record);
    }
}

/// Makes the folder and copies what is in it but for its subfolders. False when it is left out.
bool TreeCopier::Enter(const CopyStep& step, const struct stat& record)
{
    const node_ref sourceNode = NodeOf(record);
    if (fHasTopTarget && sourceNode == fTopTarget) {
        fHasMetItself = true;
        fItem.result.isWhole = false;
        return false;
    }
    Folder source = OpenSource(step, record);
    bool isNew = false;
    Folder target = source != nullptr ? OpenTarget(step, &isNew) : nullptr;
    if (target == nullptr) {
        return false;
    }
    struct stat made;
    const status_t known = target->GetStat(&made);
    if (known != B_OK) {
        return Note(step.name, known);
    }
    const node_ref targetNode = NodeOf(made);
    if (!MayMerge(step, sourceNode, targetNode, isNew)) {
        return false;
    }
    if (isNew && !KeepFolderAttributes(step, *source, target.get())) {
        target.reset();
        step.target.folder.RemoveChildFolder(step.targetName);
        return false;
    }
    if (isNew) {
        NoteMade(step, targetNode);
    }
    if (!fHasTopTarget) {
        fTopTarget = targetNode;
        fHasTopTarget = true;
    }
    fLevels.push_back({step.name,
                       step.targetName,
                       record,
                       targetNode,
                       step.place,
                       isNew,
                       fSourcePath.size(),
                       fTargetPath.size(),
                       {}});
    fSourcePath += std::string("/") + step.name;
    fTargetPath += std::string("/") + step.targetName;
    fSources->Enter(std::move(source), step.name, sourceNode);
    fTargets->Enter(std::move(target), step.targetName, targetNode);
    CopyContents();
    return true;
}

/// Whether the source goes into that folder, which it made, or which was there.
bool TreeCopier::MayMerge(const CopyStep& step, const node_ref& source, const node_ref& target,
                          bool isNew)
{
    if (target == source) {
        // The same folder by another way: as copied onto itself.
        fItem.result.isWhole = false;
        fItem.result.isItself |= fLevels.empty();
        fItem.result.isDone &= !fLevels.empty();
        return false;
    }
    if (!isNew &&
        (fContext.made.Has(target) || fContext.made.HasName(step.target.path, step.targetName))) {
        Fail(step.name, "another item of this operation has its name");
        return false;
    }
    return true;
}

void TreeCopier::CopyContents()
{
    Level& level = fLevels.back();
    const std::shared_ptr<BDirectory> source = fSources->Here();
    const std::shared_ptr<BDirectory> target = fTargets->Here();
    const auto way = std::make_shared<const CopyWay>(
        CopyWay{{*source, fSourcePath, {}, false, true, source},
                {*target, fTargetPath, level.target, level.isNew, fHasStableTarget, target}});
    Children children = List(level.name.c_str(), *source);
    for (const std::string& text : children.files) {
        if (fUI.IsStopped()) {
            return;
        }
        CopyFile(way, text, level.place);
    }
    for (const Child& child : children.others) {
        if (fUI.IsStopped()) {
            return;
        }
        const char* name = child.name.c_str();
        const CopyStep step{way->source, name, way->target, name,
                            PlaceBelow(level.place, child.name)};
        if (IsMovedWhole(step)) {
            continue;
        }
        fItem.result.TakePart(
            S_ISLNK(child.record.st_mode)
                ? LinkCopier(fContext, fPurpose, fTopSource).Copy(step, child.record)
                : RefuseKind(name));
    }
    level.folders = std::move(children.folders);
}

/// Whether the entry is where it belongs without having been copied.
bool TreeCopier::IsMovedWhole(const CopyStep& step)
{
    return fPurpose.isByRenaming && !step.target.isNew && fUI.MayDelete() &&
           EntryMover(fContext, fPurpose.item).Move(step) == B_OK;
}

void TreeCopier::CopyFile(const Way& way, const std::string& name, uint64 folder)
{
    const char* text = name.c_str();
    if (IsMovedWhole({way->source, text, way->target, text})) {
        return;
    }
    auto copier = std::make_unique<FileCopier>(fContext, fPurpose, way, name.c_str(), name.c_str(),
                                               PlaceBelow(folder, name));
    // In a new folder nothing is met that somebody would have to be asked about.
    if (way->target.isNew || copier->Begin()) {
        fContext.smallFiles.Add(std::move(copier), &fItem);
        return;
    }
    // What is said of this file comes after what is said of those before it.
    fContext.smallFiles.Drain();
    fItem.result.TakePart(copier->End());
}

void TreeCopier::Leave()
{
    const Level level = std::move(fLevels.back());
    fLevels.pop_back();
    std::shared_ptr<BDirectory> source = fSources->Here();
    std::shared_ptr<BDirectory> target = fTargets->Here();
    if (source == nullptr || target == nullptr) {
        Fail(level.name.c_str(), "it is out of reach");
    } else {
        FinishFolder(level, std::move(source), std::move(target));
    }
    fSources->Leave();
    fTargets->Leave();
    fSourcePath.resize(level.sourcePathBytes);
    fTargetPath.resize(level.targetPathBytes);
}

void TreeCopier::FinishFolder(const Level& level, std::shared_ptr<BDirectory> source,
                              std::shared_ptr<BDirectory> target)
{
    if (fPurpose.IsMove()) {
        fPurpose.ledger->Add(level.place, level.record, level.target);
    }
    if (!level.isNew) {
        return; // a folder that was there keeps what it is
    }
    // Last, when all files are in it: its mode may forbid to make any, and each changes its times.
    const auto finish = [&access = fContext.access, takesAll = fPurpose.TakesAllAlong(),
                         record = level.record, source = std::move(source),
                         target = std::move(target)] {
        if (takesAll) {
            access.FinishMoved(target.get(), *source, record);
        } else {
            access.FinishNew(target.get(), *source, record);
        }
    };
    fContext.smallFiles.AddAfter(finish, &fItem);
}

void TreeCopier::NoteMade(const CopyStep& step, const node_ref& made)
{
    fContext.made.Add(made);
    if (!step.target.hasStableNodes) {
        fContext.made.AddName(step.target.path, step.targetName);
    }
    if (!step.target.isNew) {
        fContext.journal.Note(fPurpose.item,
                              {Change::Kind::kMade, step.target.node, step.targetName, made});
    }
}

// Opening

TreeCopier::Folder TreeCopier::OpenSource(const CopyStep& step, const struct stat& record)
{
    const char* name = step.name;
    auto folder = std::make_unique<BDirectory>();
    const status_t status = OpenChild(folder.get(), step.source.folder, name);
    if (status != B_OK) {
        FailReading(name, status);
        return nullptr;
    }
    struct stat opened;
    if (folder->GetStat(&opened) != B_OK || NodeOf(opened) != NodeOf(record)) {
        Fail(name, "another folder took its place");
        return nullptr;
    }
    if (IsKernelVolume(*folder, record.st_dev)) {
        Fail(name, "it belongs to the system, not to a volume");
        return nullptr;
    }
    return folder;
}

/// Opens a folder, closing others where there are no descriptors left.
status_t TreeCopier::OpenChild(BDirectory* child, const BDirectory& folder, const char* name)
{
    status_t status = child->SetToChild(folder, name);
    if (status == B_NO_MORE_FDS) {
        CloseOthers();
        status = child->SetToChild(folder, name);
    }
    return status;
}

void TreeCopier::CloseOthers()
{
    fContext.smallFiles.Drain();
    CloseAbove(*fSources, *fTargets);
}

bool TreeCopier::IsKernelVolume(const BDirectory& folder, dev_t device)
{
    if (!fHasDevice || device != fDevice) {
        fDevice = device;
        fHasDevice = true;
        fIsKernelDevice = is_kernel_volume(folder);
    }
    return fIsKernelDevice;
}

TreeCopier::Folder TreeCopier::OpenTarget(const CopyStep& step, bool* isNew)
{
    auto folder = std::make_unique<BDirectory>();
    BDirectory& parent = step.target.folder;
    status_t status = parent.CreateNewDirectory(step.targetName, 0700, folder.get());
    if (status == B_NO_MORE_FDS) {
        CloseOthers();
        status = parent.CreateNewDirectory(step.targetName, 0700, folder.get());
    }
    *isNew = status == B_OK;
    if (status == B_FILE_EXISTS && !fPurpose.isAllNew) {
        // Merged into when it is a folder itself; nothing is ever written through a link.
        status = OpenChild(folder.get(), step.target.folder, step.targetName);
    }
    if (status == B_OK) {
        return folder;
    }
    Note(step.name, status);
    return nullptr;
}

/// Asks about attributes that cannot be kept; false when the folder is to be left.
bool TreeCopier::KeepFolderAttributes(const CopyStep& step, const BDirectory& source,
                                      BDirectory* target)
{
    const status_t status =
        fPurpose.TakesAllAlong() ? target->CheckAttrsFrom(source) : status_t(B_OK);
    if (status == B_OK) {
        return true;
    }
    if (!fPurpose.IsMove()) {
        fUI.NoteProblem(step.name, "some of its attributes could not be kept");
        return true;
    }
    if (status != B_UNSUPPORTED) {
        Fail(step.name, "its attributes could not be kept");
        return true;
    }
    if (fUI.AskAboutAttributes() == AttributesAnswer::kMoveWithout) {
        return true;
    }
    fItem.result.TakePart({.isWhole = false, .isLeft = true});
    return false;
}

// Telling

/// Tells why something did not come along.
bool TreeCopier::Note(const char* name, status_t status)
{
    Fail(name, ReasonFor(status));
    return false;
}

void TreeCopier::Fail(const char* name, const char* reason)
{
    fUI.NoteProblem(name, reason);
    fItem.result.isWhole = false;
}

void TreeCopier::FailReading(const char* name, status_t status)
{
    Note(name, status);
    fItem.result.hasFailedReading = true;
}

CopyResult TreeCopier::RefuseKind(const char* name)
{
    fUI.NoteProblem(name, "it is neither a file nor a folder nor a link");
    return {.isDone = true};
}

TreeCopier::Children TreeCopier::List(const char* name, BDirectory& folder)
{
    Children children;
    const char* childName = nullptr;
    uint32 kind = 0;
    status_t status = folder.GetNextName(&childName, &kind);
    for (; status == B_OK; status = folder.GetNextName(&childName, &kind)) {
        if (kind == B_FILE_NODE) {
            children.files.emplace_back(childName); // what it is shows when it is opened
            continue;
        }
        Child child{childName, {}};
        const status_t found = folder.GetStatFor(childName, &child.record);
        if (found != B_OK) {
            FailReading(childName, found);
            continue;
        }
        if (S_ISREG(child.record.st_mode)) {
            children.files.push_back(std::move(child.name));
        } else if (S_ISDIR(child.record.st_mode)) {
            children.folders.push_back(std::move(child));
        } else {
            children.others.push_back(std::move(child));
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        FailReading(name, status);
    }
    return children;
}

} // namespace norvane
