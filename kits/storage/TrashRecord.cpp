#include <TrashRecord.h>

#include "MountTable.h"
#include "TrashRecords.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cstring>
#include <fcntl.h>

using kits::FolderTable;
using kits::OpenFolder;

namespace {

/// The path of the folder that the entry lies in, and the mount by which it is reached.
status_t FindParent(const BEntry& entry, std::string* path, kits::Mount* mount)
{
    BDirectory parent;
    const status_t status = entry.GetParent(&parent);
    if (status != B_OK) {
        return status;
    }
    const kits::UniqueFd opened(parent.Dup());
    if (!opened.IsOpen()) {
        return opened.Get();
    }
    if (mount != nullptr && !kits::FindMountOf(opened.Get(), mount)) {
        return B_UNSUPPORTED;
    }
    return kits::sys::PathOf(opened.Get(), path);
}

std::shared_ptr<const kits::Trash> TrashAt(const std::string& path)
{
    const kits::UniqueFd folder(kits::sys::OpenAt(kits::sys::kWorkingDirectory, path.c_str(),
                                                  O_PATH | O_DIRECTORY | O_NOFOLLOW));
    return folder.IsOpen() ? kits::TrashOf(FolderTable::Get().Know(folder.Get())) : nullptr;
}

/// The path of the home Trash's `files` without links; "" when it is not there.
std::string HomeFiles()
{
    const kits::UniqueFd files(kits::sys::OpenAt(kits::sys::kWorkingDirectory,
                                                 (kits::HomeTrash().folder + "/files").c_str(),
                                                 O_PATH | O_DIRECTORY));
    std::string path;
    return files.IsOpen() && kits::sys::PathOf(files.Get(), &path) == B_OK ? path : std::string();
}

bool IsReachedBySameMount(const std::string& folder, const kits::Mount& mount)
{
    const kits::UniqueFd opened(
        kits::sys::OpenAt(kits::sys::kWorkingDirectory, folder.c_str(), O_PATH | O_DIRECTORY));
    return opened.IsOpen() && kits::sys::MountOf(opened.Get()) == mount.id;
}

} // namespace

status_t BTrashClaim::SetTo(const BDirectory* trash, const BEntry* original, const char* name)
{
    Drop();
    if (trash == nullptr || trash->InitCheck() != B_OK || original == nullptr || name == nullptr ||
        *name == '\0' || std::strchr(name, '/') != nullptr) {
        return B_BAD_VALUE;
    }
    const kits::FolderHold files = trash->Folder();
    std::shared_ptr<const kits::Trash> found;
    OpenFolder open;
    status_t status = kits::FindTrashOf(files, &found);
    if (status == B_OK) {
        status = found == nullptr ? status_t(B_BAD_VALUE) : FolderTable::Get().Open(files, &open);
    }
    BPath path;
    std::string text;
    std::string claimed;
    if (status == B_OK) {
        status = original->GetPath(&path);
    }
    if (status == B_OK) {
        status = kits::TrashRecordText(*found, path.Path(), std::time(nullptr), &text);
    }
    if (status == B_OK) {
        status = kits::ClaimTrashName(*found, open->Get(), name, text, &claimed);
    }
    if (status == B_OK) {
        fFolder = files;
        fName = std::move(claimed);
    }
    return status;
}

void BTrashClaim::Keep()
{
    fFolder = kits::FolderHold();
}

void BTrashClaim::Drop()
{
    if (!fFolder) {
        return;
    }
    const std::shared_ptr<const kits::Trash> trash = kits::TrashOf(fFolder);
    OpenFolder open;
    struct stat st;
    if (trash != nullptr && FolderTable::Get().Open(fFolder, &open) == B_OK &&
        kits::sys::StatAt(open->Get(), fName.c_str(), &st) == B_ENTRY_NOT_FOUND) {
        kits::RemoveTrashRecord(*trash, fName);
    }
    fFolder = kits::FolderHold();
}

bool is_trash_folder(const BDirectory* folder)
{
    return folder != nullptr && folder->InitCheck() == B_OK &&
           kits::TrashOf(folder->Folder()) != nullptr;
}

status_t is_trash_folder(const BDirectory* folder, bool* isTrash)
{
    if (folder == nullptr || folder->InitCheck() != B_OK || isTrash == nullptr) {
        return B_BAD_VALUE;
    }
    std::shared_ptr<const kits::Trash> trash;
    const status_t status = kits::FindTrashOf(folder->Folder(), &trash);
    if (status == B_OK) {
        *isTrash = trash != nullptr;
    }
    return status;
}

bool is_in_trash(const BEntry* entry)
{
    std::string path;
    if (entry == nullptr || FindParent(*entry, &path, nullptr) != B_OK) {
        return false;
    }
    const std::string home = HomeFiles();
    if (!home.empty() && (path + "/").starts_with(home + "/")) {
        return true;
    }
    // Each folder on the way that is called as those of a Trash are.
    constexpr std::string_view kFiles = "/files";
    for (size_t at = path.find(kFiles); at != std::string::npos; at = path.find(kFiles, at + 1)) {
        const size_t end = at + kFiles.size();
        if ((end == path.size() || path[end] == '/') && TrashAt(path.substr(0, end)) != nullptr) {
            return true;
        }
    }
    return false;
}

status_t find_trash_origin(const BEntry* entry, BPath* path)
{
    BDirectory parent;
    if (entry == nullptr || path == nullptr || entry->GetParent(&parent) != B_OK) {
        return B_BAD_VALUE;
    }
    const kits::UniqueFd opened(parent.Dup());
    if (!opened.IsOpen()) {
        return opened.Get();
    }
    std::shared_ptr<const kits::Trash> trash;
    status_t status = kits::FindTrashOf(FolderTable::Get().Know(opened.Get()), &trash);
    if (status != B_OK || trash == nullptr) {
        return status != B_OK ? status : status_t(B_BAD_VALUE);
    }
    std::string origin;
    status = kits::ReadTrashOrigin(*trash, entry->Name(), &origin);
    return status == B_OK ? path->SetTo(origin.c_str()) : status;
}

status_t find_trash_for(const BEntry* entry, BPath* path, bool createIt)
{
    if (entry == nullptr || path == nullptr) {
        return B_BAD_VALUE;
    }
    std::string parent;
    kits::Mount mount;
    status_t status = FindParent(*entry, &parent, &mount);
    if (status != B_OK) {
        return status;
    }
    if (mount.kind == kits::MountKind::kKernel) {
        return B_UNSUPPORTED;
    }
    BPath home;
    if (find_directory(B_TRASH_DIRECTORY, &home) == B_OK &&
        IsReachedBySameMount(home.Path(), mount)) {
        *path = home;
        return B_OK;
    }
    kits::Trash trash;
    status = kits::FindVolumeTrash(
        mount.point, createIt ? kits::TrashCreation::kWhenMissing : kits::TrashCreation::kNever,
        &trash);
    return status == B_OK ? path->SetTo((trash.folder + "/files").c_str()) : status;
}
