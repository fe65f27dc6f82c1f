// BEntry::RemoveTree(): an entry with all below it.

#include "OrNoMemory.h"
#include "TreeWalker.h"

#include <Entry.h>

#include <dirent.h>

void BTreeHooks::Failed(const char*, status_t) {}

bool BTreeHooks::MayRemove(const char*, const struct stat&)
{
    return true;
}

BTreeHooks::~BTreeHooks() = default;

namespace {

class TreeRemover : public kits::TreeWalker
{
public:
    explicit TreeRemover(BTreeHooks* hooks)
        : TreeWalker(hooks), fChecks(hooks != nullptr && hooks->ChecksEntries())
    {
    }

protected:
    // kits::TreeWalker
    int OpenChild(int parent, const char* name) override;
    bool MayEnter(const Folder& folder, int descriptor) override;
    void Visit(Folder& folder, int descriptor, const kits::FolderListing& listing) override;
    void OpenFailed(Folder& folder, int parent, status_t status) override;
    void Leave(Folder& folder) override;

private:
    void VisitChild(Folder& folder, int descriptor, const kits::FolderListing::Item& item);
    bool MayRemove(const Folder& folder, const char* name, const struct stat& record);

    const bool fChecks;
};

int TreeRemover::OpenChild(int parent, const char* name)
{
    return kits::sys::OpenUnmountedFolderAt(parent, name);
}

bool TreeRemover::MayRemove(const Folder& folder, const char* name, const struct stat& record)
{
    const std::string path = PathOf(folder, name);
    const bool may =
        WithHooks([&](BTreeHooks& hooks) { return hooks.MayRemove(path.c_str(), record); });
    if (!may) {
        NoteStatus(B_NOT_ALLOWED);
    }
    return may;
}

bool TreeRemover::MayEnter(const Folder& folder, int descriptor)
{
    struct stat record;
    const status_t status = fChecks ? kits::sys::Stat(descriptor, &record) : status_t(B_OK);
    if (status != B_OK) {
        Tell(folder, "", status);
    } else if (!fChecks || MayRemove(folder, "", record)) {
        return true;
    }
    SetLeft(folder.above);
    return false;
}

void TreeRemover::Visit(Folder& folder, int descriptor, const kits::FolderListing& listing)
{
    for (const kits::FolderListing::Item& item : listing.Items()) {
        if (IsStopped()) {
            NoteStatus(B_CANCELED);
            SetLeft(&folder);
            return;
        }
        VisitChild(folder, descriptor, item);
    }
}

void TreeRemover::VisitChild(Folder& folder, int descriptor, const kits::FolderListing::Item& item)
{
    uint8 kind = item.kind;
    struct stat record;
    if (kind != DT_DIR && (fChecks || kind == DT_UNKNOWN)) {
        const status_t status = kits::sys::StatAt(descriptor, item.name, &record);
        if (status == B_ENTRY_NOT_FOUND) {
            return; // someone else was faster
        }
        if (status != B_OK) {
            Tell(folder, item.name, status);
            SetLeft(&folder);
            return;
        }
        kind = IFTODT(record.st_mode);
        if (kind != DT_DIR && fChecks && !MayRemove(folder, item.name, record)) {
            SetLeft(&folder);
            return;
        }
    }
    if (kind != DT_DIR) {
        const status_t status = kits::sys::RemoveFileAt(descriptor, item.name);
        if (status == B_OK || status == B_ENTRY_NOT_FOUND) {
            return;
        }
        if (status != B_IS_A_DIRECTORY) {
            Tell(folder, item.name, status);
            SetLeft(&folder);
            return;
        }
        // A folder took its place.
    }
    EnterLater(folder, item.name);
}

void TreeRemover::OpenFailed(Folder& folder, int parent, status_t status)
{
    if (status == B_ENTRY_NOT_FOUND && parent >= 0) {
        return;
    }
    const char* name = folder.name.c_str();
    status_t removed = status;
    struct stat record;
    const bool may =
        parent >= 0 && (!fChecks || (kits::sys::StatAt(parent, name, &record) == B_OK &&
                                     MayRemove(folder, "", record)));
    if (may && (status == B_NOT_A_DIRECTORY || status == B_LINK_LIMIT)) {
        removed = kits::sys::RemoveFileAt(parent, name); // something else took its place
    } else if (may && status != B_CROSS_DEVICE_LINK) {
        // One that may not be read can go when it is empty.
        removed = kits::sys::RemoveFolderAt(parent, name) == B_OK ? B_OK : status;
    }
    if (removed != B_OK) {
        SetLeft(folder.above);
        Tell(folder, "", removed == B_CROSS_DEVICE_LINK ? status_t(B_BUSY) : removed);
    }
}

void TreeRemover::Leave(Folder& folder)
{
    if (folder.isLeft) {
        SetLeft(folder.above);
        return;
    }
    const kits::OpenFolder above = OpenAbove(folder);
    const status_t status = above == nullptr
                                ? status_t(B_ENTRY_NOT_FOUND)
                                : kits::sys::RemoveFolderAt(above->Get(), folder.name.c_str());
    if (status != B_OK && (status != B_ENTRY_NOT_FOUND || above == nullptr)) {
        Tell(folder, "", status);
        SetLeft(folder.above);
    }
}

/// Removes what is no folder; `record` tells what it is after all when that failed.
status_t RemoveFile(int parent, const char* name, struct stat* record)
{
    const status_t status = kits::sys::RemoveFileAt(parent, name);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        // A folder where nothing may be removed says that first; what is in it may go all the same.
        [[maybe_unused]] const status_t found = kits::sys::StatAt(parent, name, record);
    }
    return status;
}

/// Removes a folder with all in it, and tells when it is still there.
status_t RemoveFolder(const kits::OpenFolder& parent, const std::string& name, BTreeHooks* hooks)
{
    TreeRemover remover(hooks);
    remover.Walk(parent, name.c_str());
    const status_t status = remover.Status();
    struct stat record;
    if (status != B_OK || kits::sys::StatAt(parent->Get(), name.c_str(), &record) != B_OK) {
        return status; // gone, or something was told; a look that fails says nothing else
    }
    if (hooks != nullptr) {
        hooks->Failed(name.c_str(), B_FILE_ERROR); // it was said to be gone
    }
    return B_FILE_ERROR;
}

} // namespace

status_t BEntry::RemoveTree(BTreeHooks* hooks)
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    const status_t status = kits::OrNoMemory([&] { return RemoveAll(hooks); });
    if (status == B_OK) {
        // It is gone, whatever becomes of its record.
        [[maybe_unused]] const status_t forgotten = kits::OrNoMemory([this] {
            ForgetOrigin();
            return B_OK;
        });
    }
    return status;
}

status_t BEntry::RemoveAll(BTreeHooks* hooks)
{
    kits::OpenFolder folder;
    status_t status =
        kits::OrNoMemory([&] { return kits::FolderTable::Get().Open(fFolder, &folder); });
    if (status != B_OK) {
        if (hooks != nullptr) {
            hooks->Failed(fName.c_str(), status);
        }
        return status;
    }
    const bool checks = hooks != nullptr && hooks->ChecksEntries();
    const int parent = folder->Get();
    struct stat record = {};
    if (checks) {
        status = kits::sys::StatAt(parent, fName.c_str(), &record);
        if (status == B_OK && !S_ISDIR(record.st_mode) &&
            !hooks->MayRemove(fName.c_str(), record)) {
            return B_NOT_ALLOWED;
        }
    }
    if (status == B_OK && !S_ISDIR(record.st_mode)) {
        status = RemoveFile(parent, fName.c_str(), &record);
    }
    if (S_ISDIR(record.st_mode)) {
        status = RemoveFolder(folder, fName, hooks);
    } else if (status != B_OK && hooks != nullptr) {
        hooks->Failed(fName.c_str(), status);
    }
    return status;
}
