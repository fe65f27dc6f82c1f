#include "fileops/engine/TreeCopier.h"

#include "fileops/engine/FileCopier.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/RecordCopy.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <Path.h>
#include <SymLink.h>
#include <fs_info.h>

#include <cstring>

namespace norvane {

status_t LiesIn(BEntry entry, const node_ref& node, bool* lies)
{
    struct stat record;
    status_t status = entry.GetStat(&record);
    while (status == B_OK) {
        const bool isNode = node_ref(record.st_dev, record.st_ino) == node;
        const bool isRoot = std::strcmp(entry.Name(), ".") == 0;
        if (isNode || isRoot) {
            *lies = isNode;
            return B_OK;
        }
        status = entry.GetParent(&entry);
        if (status == B_OK) {
            status = entry.GetStat(&record);
        }
    }
    return status;
}

CopyResult TreeCopier::Copy(const CopyStep& step)
{
    struct stat record;
    const status_t status = step.source.folder.GetStatFor(step.name, &record);
    if (status != B_OK) {
        Note(step.name, status);
        return CopyResult();
    }
    fTopSource = node_ref(record.st_dev, record.st_ino);
    if (fPurpose.IsMove()) {
        fPurpose.ledger->Begin(step.source.path);
    }
    CopyResult result = CopyEntry(step, record);
    result.isWhole &= fSmallFiles.Drain();
    result.isItself |= fHasMetItself;
    return result;
}

CopyResult TreeCopier::CopyEntry(const CopyStep& step, const struct stat& record)
{
    if (S_ISREG(record.st_mode)) {
        return FileCopier(fUI, fPurpose, step).Run();
    }
    if (S_ISDIR(record.st_mode)) {
        return CopyFolder(step, record);
    }
    if (S_ISLNK(record.st_mode)) {
        return CopyLink(step, record);
    }
    return RefuseKind(step.name);
}

bool TreeCopier::Note(const char* name, status_t status)
{
    fUI.NoteProblem(name, ReasonFor(status));
    return false;
}

CopyResult TreeCopier::RefuseKind(const char* name)
{
    fUI.NoteProblem(name, "it is neither a file nor a folder nor a link");
    return {.isDone = true};
}

bool TreeCopier::OpenSource(BDirectory* folder, const CopyStep& step, const struct stat& record)
{
    const char* name = step.name;
    const status_t status = folder->SetToChild(step.source.folder, name);
    if (status != B_OK) {
        return Note(name, status);
    }
    node_ref opened;
    if (folder->GetNodeRef(&opened) != B_OK || opened != node_ref(record.st_dev, record.st_ino)) {
        fUI.NoteProblem(name, "another folder took its place");
        return false;
    }
    if (IsKernelVolume(*folder, record.st_dev)) {
        fUI.NoteProblem(name, "it belongs to the system, not to a volume");
        return false;
    }
    return true;
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

bool TreeCopier::OpenTarget(BDirectory* folder, const CopyStep& step, const struct stat& record,
                            bool* isNew)
{
    status_t status =
        step.target.folder.CreateNewDirectory(step.targetName, record.st_mode & 0777, folder);
    *isNew = status == B_OK;
    if (status == B_FILE_EXISTS && !fPurpose.isAllNew) {
        // Merged into when it is a folder itself; nothing is ever written through a link.
        status = folder->SetToChild(step.target.folder, step.targetName);
    }
    return status == B_OK || Note(step.name, status);
}

CopyResult TreeCopier::CopyFolder(const CopyStep& step, const struct stat& record)
{
    const node_ref sourceNode(record.st_dev, record.st_ino);
    if (fHasTopTarget && sourceNode == fTopTarget) {
        fHasMetItself = true;
        return {.isDone = true};
    }
    BDirectory source;
    BDirectory target;
    bool isNew = false;
    if (!OpenSource(&source, step, record) || !OpenTarget(&target, step, record, &isNew)) {
        return {.isDone = true};
    }
    node_ref targetNode;
    const status_t known = target.GetNodeRef(&targetNode);
    if (known != B_OK) {
        Note(step.name, known);
        return {.isDone = true, .isMade = isNew};
    }
    if (targetNode == sourceNode) {
        return {.isItself = true}; // the same folder by another way: as copied onto itself
    }
    if (!fHasTopTarget) {
        fTopTarget = targetNode;
        fHasTopTarget = true;
    }
    bool isWhole = CopyContents(step, source, target);
    isWhole &= FinishFolder(step, source, target, record, isNew);
    return {.isDone = true, .isWhole = isWhole, .isMade = isNew};
}

bool TreeCopier::CopyContents(const CopyStep& step, BDirectory& source, BDirectory& target)
{
    const CopyPlace sourcePlace{source, step.SourcePath()};
    const CopyPlace targetPlace{target, step.TargetPath()};
    const Children children = List(step.name, source);
    bool isWhole = children.isWhole;
    isWhole &= CopyFiles(children.files, sourcePlace, targetPlace);
    isWhole &= CopyChildren(children.others, sourcePlace, targetPlace);
    isWhole &= CopyChildren(children.folders, sourcePlace, targetPlace);
    return isWhole;
}

bool TreeCopier::FinishFolder(const CopyStep& step, BDirectory& source, BDirectory& target,
                              const struct stat& record, bool isNew)
{
    if (fPurpose.IsMove()) {
        fPurpose.ledger->Add(step.SourcePath(), record);
    }
    if (!isNew) {
        return true; // a folder that was there keeps what it is
    }
    status_t status = B_OK;
    mode_t permissions = 0;
    if (fPurpose.IsMove()) {
        status = target.CopyAttrsFrom(source);
        // Times come last: creating entries inside the folder has changed them.
        TakeRecordAlong(&target, record);
    } else if (target.GetPermissions(&permissions) == B_OK) {
        // It was made with all rights for its owner, so that it could be filled.
        target.SetPermissions(permissions & record.st_mode);
    }
    if (status != B_OK) {
        fUI.NoteProblem(step.name, "its attributes could not be kept");
    }
    return status == B_OK;
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
            children.isWhole = Note(childName, found);
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
        children.isWhole = Note(name, status);
    }
    return children;
}

bool TreeCopier::CopyFiles(const std::vector<std::string>& names, const CopyPlace& source,
                           const CopyPlace& target)
{
    bool isWhole = true;
    for (const std::string& text : names) {
        if (fUI.IsStopped()) {
            isWhole = false;
            break;
        }
        const char* name = text.c_str();
        auto copier =
            std::make_unique<FileCopier>(fUI, fPurpose, CopyStep{source, name, target, name});
        if (copier->Begin()) {
            fSmallFiles.Add(std::move(copier));
            continue;
        }
        // What is said of this file comes after what is said of those before it.
        isWhole &= fSmallFiles.Drain();
        isWhole &= copier->End().isWhole;
    }
    return isWhole;
}

bool TreeCopier::CopyChildren(const std::vector<Child>& children, const CopyPlace& source,
                              const CopyPlace& target)
{
    bool isWhole = true;
    for (const Child& child : children) {
        if (fUI.IsStopped()) {
            return false;
        }
        const char* name = child.name.c_str();
        isWhole &= CopyEntry({source, name, target, name}, child.record).isWhole;
    }
    return isWhole;
}

CopyResult TreeCopier::CopyLink(const CopyStep& step, const struct stat& record)
{
    const status_t status = MakeLink(step, record);
    if (status != B_OK) {
        fUI.Tell("You appear to be trying to copy a link that is broken.  This is not supported in "
                 "this version.",
                 Notice::kInfo);
    }
    return {.isDone = true, .isWhole = status == B_OK, .isMade = status == B_OK};
}

status_t TreeCopier::MakeLink(const CopyStep& step, const struct stat& record)
{
    std::string text;
    BSymLink link;
    status_t status = TextFor(step, &text);
    if (status == B_OK) {
        status = step.target.folder.CreateSymLink(step.targetName, text.c_str(), &link);
    }
    if (status == B_OK && fPurpose.IsMove()) {
        TakeRecordAlong(&link, record);
        fPurpose.ledger->Add(step.SourcePath(), record);
    }
    return status;
}

status_t TreeCopier::TextFor(const CopyStep& step, std::string* text) const
{
    const BEntry pointedTo(&step.source.folder, step.name, true);
    if (pointedTo.InitCheck() != B_OK) {
        return pointedTo.InitCheck();
    }
    if (!pointedTo.Exists()) {
        return B_ENTRY_NOT_FOUND;
    }
    bool movesAlong = false;
    if (fPurpose.IsMove()) {
        const status_t status = LiesIn(pointedTo, fTopSource, &movesAlong);
        if (status != B_OK) {
            return status;
        }
    }
    if (movesAlong) {
        // What it points to moves along, so that its own text goes on leading there.
        char own[B_PATH_NAME_LENGTH * 4];
        const ssize_t length = BSymLink(&step.source.folder, step.name).ReadLink(own, sizeof(own));
        *text = length > 0 ? own : "";
        return length > 0 ? status_t(B_OK) : static_cast<status_t>(length);
    }
    BPath path;
    const status_t status = pointedTo.GetPath(&path);
    if (status == B_OK) {
        *text = path.Path();
    }
    return status;
}

} // namespace norvane
