#include "fileops/TreeCopier.h"

#include "fileops/OperationUI.h"
#include "fileops/ProblemList.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <Path.h>
#include <fs_info.h>

namespace norvane {

CopyResult TreeCopier::Copy(const CopyPlace& source, const CopyPlace& target, const char* name)
{
    struct stat record;
    const status_t status = source.folder.GetStatFor(name, &record);
    if (status != B_OK) {
        Note(name, status);
        return CopyResult();
    }
    return CopyEntry(source, target, name, record);
}

CopyResult TreeCopier::CopyEntry(const CopyPlace& source, const CopyPlace& target, const char* name,
                                 const struct stat& record)
{
    if (S_ISREG(record.st_mode)) {
        return FileCopier(fUI, source, target, name, record).Run();
    }
    if (S_ISDIR(record.st_mode)) {
        return CopyFolder(source, target, name, record);
    }
    if (S_ISLNK(record.st_mode)) {
        return CopyLink(source, target, name);
    }
    return RefuseKind(name);
}

bool TreeCopier::Note(const char* name, status_t status)
{
    fUI.NoteProblem(name, ReasonFor(status));
    return false;
}

CopyResult TreeCopier::RefuseKind(const char* name)
{
    fUI.NoteProblem(name, "it is neither a file nor a folder nor a link");
    return {true, false};
}

bool TreeCopier::OpenSource(BDirectory* folder, const CopyPlace& source, const char* name,
                            const struct stat& record)
{
    const status_t status = folder->SetToChild(source.folder, name);
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

bool TreeCopier::OpenTarget(BDirectory* folder, const CopyPlace& target, const char* name,
                            const struct stat& record, bool* isNew)
{
    status_t status = target.folder.CreateNewDirectory(name, record.st_mode & 0777, folder);
    *isNew = status == B_OK;
    if (status == B_FILE_EXISTS) {
        // Merged into when it is a folder itself; nothing is ever written through a link.
        status = folder->SetToChild(target.folder, name);
    }
    return status == B_OK || Note(name, status);
}

CopyResult TreeCopier::CopyFolder(const CopyPlace& source, const CopyPlace& target,
                                  const char* name, const struct stat& record)
{
    const node_ref sourceNode(record.st_dev, record.st_ino);
    if (fHasTopTarget && sourceNode == fTopTarget) {
        return {true, false};
    }
    BDirectory sourceFolder;
    BDirectory targetFolder;
    bool isNew = false;
    if (!OpenSource(&sourceFolder, source, name, record) ||
        !OpenTarget(&targetFolder, target, name, record, &isNew)) {
        return {true, false};
    }
    node_ref targetNode;
    if (targetFolder.GetNodeRef(&targetNode) != B_OK || targetNode == sourceNode) {
        return CopyResult(); // the same folder by another way: as copied onto itself
    }
    if (!fHasTopTarget) {
        fTopTarget = targetNode;
        fHasTopTarget = true;
    }
    const CopyPlace sourcePlace{sourceFolder, source.PathOf(name)};
    const CopyPlace targetPlace{targetFolder, target.PathOf(name)};
    const Children children = List(name, sourceFolder);
    bool isWhole = children.isWhole;
    isWhole &= CopyChildren(children.files, sourcePlace, targetPlace);
    isWhole &= CopyChildren(children.others, sourcePlace, targetPlace);
    isWhole &= CopyChildren(children.folders, sourcePlace, targetPlace);
    if (isNew) {
        // It was made with all rights for its owner, so that it could be filled.
        mode_t permissions = 0;
        if (targetFolder.GetPermissions(&permissions) == B_OK) {
            targetFolder.SetPermissions(permissions & record.st_mode);
        }
    }
    return {true, isWhole};
}

TreeCopier::Children TreeCopier::List(const char* name, BDirectory& folder)
{
    Children children;
    const char* childName = nullptr;
    status_t status = folder.GetNextName(&childName);
    for (; status == B_OK; status = folder.GetNextName(&childName)) {
        Child child{childName, {}};
        const status_t found = folder.GetStatFor(childName, &child.record);
        if (found != B_OK) {
            children.isWhole = Note(childName, found);
            continue;
        }
        std::vector<Child>& list = S_ISREG(child.record.st_mode)   ? children.files
                                   : S_ISDIR(child.record.st_mode) ? children.folders
                                                                   : children.others;
        list.push_back(std::move(child));
    }
    if (status != B_ENTRY_NOT_FOUND) {
        children.isWhole = Note(name, status);
    }
    return children;
}

bool TreeCopier::CopyChildren(const std::vector<Child>& children, const CopyPlace& source,
                              const CopyPlace& target)
{
    bool isWhole = true;
    for (const Child& child : children) {
        if (fUI.IsStopped()) {
            return false;
        }
        isWhole &= CopyEntry(source, target, child.name.c_str(), child.record).isWhole;
    }
    return isWhole;
}

CopyResult TreeCopier::CopyLink(const CopyPlace& source, const CopyPlace& target, const char* name)
{
    const BEntry pointedTo(&source.folder, name, true);
    BPath path;
    status_t status = pointedTo.InitCheck();
    if (status == B_OK) {
        status = pointedTo.Exists() ? pointedTo.GetPath(&path) : status_t(B_ENTRY_NOT_FOUND);
    }
    if (status == B_OK) {
        status = target.folder.CreateSymLink(name, path.Path(), nullptr);
    }
    if (status != B_OK) {
        fUI.Tell("You appear to be trying to copy a link that is broken.  This is not supported in "
                 "this version.",
                 Notice::kInfo);
    }
    return {true, status == B_OK};
}

} // namespace norvane
