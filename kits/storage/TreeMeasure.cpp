// BEntry::MeasureTree(): the bytes of an entry with all below it.

#include "KernelVolume.h"
#include "OrNoMemory.h"
#include "TreeWalker.h"

#include <Entry.h>

#include <atomic>
#include <dirent.h>
#include <fcntl.h>

namespace {

class TreeMeasure : public kits::TreeWalker
{
public:
    TreeMeasure(BTreeHooks* hooks, BEntry::measure_scope scope, dev_t device)
        : TreeWalker(hooks), fScope(scope), fDevice(device)
    {
    }

    int64 Bytes() const { return fBytes.load(); }

protected:
    // kits::TreeWalker
    int OpenChild(int parent, const char* name) override
    {
        return kits::sys::OpenAt(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK);
    }
    bool MayEnter(const Folder& folder, int descriptor) override;
    void Visit(Folder& folder, int descriptor, const kits::FolderListing& listing) override;
    void OpenFailed(Folder& folder, int parent, status_t status) override;
    void Leave(Folder&) override {}

private:
    const BEntry::measure_scope fScope;
    const dev_t fDevice; // where the walk starts
    std::atomic<int64> fBytes{0};
};

bool TreeMeasure::MayEnter(const Folder& folder, int descriptor)
{
    const bool isTop = folder.above->above == nullptr;
    if (!isTop && folder.device == fDevice) {
        return true;
    }
    if (!isTop && fScope == BEntry::kOneVolume) {
        return false;
    }
    // Seldom: where another volume begins, and below.
    return (!isTop && folder.device == folder.above->device) || !kits::IsKernelVolume(descriptor);
}

void TreeMeasure::Visit(Folder& folder, int descriptor, const kits::FolderListing& listing)
{
    int64 bytes = 0;
    for (const kits::FolderListing::Item& item : listing.Items()) {
        if (IsStopped()) {
            NoteStatus(B_CANCELED);
            break;
        }
        if (item.kind == DT_DIR) {
            EnterLater(folder, item.name);
        } else if (item.kind == DT_REG || item.kind == DT_UNKNOWN) {
            struct stat record;
            const status_t status = kits::sys::StatAt(descriptor, item.name, &record);
            if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
                Tell(folder, item.name, status);
            } else if (status == B_OK && S_ISREG(record.st_mode)) {
                bytes += record.st_size;
            } else if (status == B_OK && S_ISDIR(record.st_mode)) {
                EnterLater(folder, item.name);
            }
        }
    }
    fBytes += bytes;
}

void TreeMeasure::OpenFailed(Folder& folder, int, status_t status)
{
    // What went meanwhile, or became something else, counts nothing.
    if (status != B_ENTRY_NOT_FOUND && status != B_NOT_A_DIRECTORY && status != B_LINK_LIMIT) {
        Tell(folder, "", status);
    }
}

} // namespace

status_t BEntry::MeasureTree(int64* bytes, measure_scope scope, BTreeHooks* hooks) const
{
    if (bytes == nullptr) {
        return B_BAD_VALUE;
    }
    *bytes = 0;
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    return kits::OrNoMemory([&] { return MeasureAll(bytes, scope, hooks); });
}

status_t BEntry::MeasureAll(int64* bytes, measure_scope scope, BTreeHooks* hooks) const
{
    kits::OpenFolder folder;
    struct stat record;
    status_t status = kits::FolderTable::Get().Open(fFolder, &folder);
    if (status == B_OK) {
        status = kits::sys::StatAt(folder->Get(), fName.c_str(), &record);
    }
    if (status != B_OK || !S_ISDIR(record.st_mode)) {
        *bytes = status == B_OK && S_ISREG(record.st_mode) ? record.st_size : 0;
        return status;
    }
    TreeMeasure measure(hooks, scope, record.st_dev);
    measure.Walk(folder, fName.c_str());
    *bytes = measure.Bytes();
    return measure.Status();
}
