#include <Directory.h>

#include "EntryName.h"
#include "FolderListing.h"
#include "PathLookup.h"

#include <Path.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>

using kits::FolderTable;
using kits::IsEntryName;
using kits::kOpenFolderFlags;
using kits::OpenFolder;

namespace {

bool IsOfKind(const BEntry& entry, uint32 nodeFlags)
{
    struct stat st;
    if (entry.GetStat(&st) != B_OK) {
        return false;
    }
    const uint32 kind = S_ISDIR(st.st_mode)   ? B_DIRECTORY_NODE
                        : S_ISLNK(st.st_mode) ? B_SYMLINK_NODE
                                              : B_FILE_NODE;
    return (nodeFlags & kind) != 0;
}

uint32 FlavorOf(uint8 kind)
{
    switch (kind) {
    case DT_REG:
        return B_FILE_NODE;
    case DT_DIR:
        return B_DIRECTORY_NODE;
    case DT_LNK:
        return B_SYMLINK_NODE;
    default:
        return 0;
    }
}

} // namespace

BDirectory::BDirectory() = default;

BDirectory::BDirectory(const entry_ref* ref)
{
    SetTo(ref);
}

BDirectory::BDirectory(const node_ref* ref)
{
    SetTo(ref);
}

BDirectory::BDirectory(const BEntry* entry)
{
    SetTo(entry);
}

BDirectory::BDirectory(const char* path)
{
    SetTo(path);
}

BDirectory::BDirectory(const BDirectory* directory, const char* path)
{
    SetTo(directory, path);
}

// NOLINTNEXTLINE(bugprone-copy-constructor-init): the assignment opens it anew
BDirectory::BDirectory(const BDirectory& other) : BNode(), BEntryList()
{
    *this = other;
}

BDirectory& BDirectory::operator=(const BDirectory& other)
{
    if (this != &other) {
        BDirectory::Unset();
        if (other.InitCheck() != B_OK) {
            Fail(other.InitCheck());
        } else {
            // Opened anew: a duplicate would share the place in the listing.
            AdoptFolder(kits::sys::OpenAt(other.Descriptor(), ".", kOpenFolderFlags),
                        other.fFolder);
        }
    }
    return *this;
}

BDirectory::~BDirectory() = default;

void BDirectory::Unset()
{
    fFolder = kits::FolderHold();
    fListing.reset();
    fNext = 0;
    BNode::Unset();
}

status_t BDirectory::AdoptFolder(int descriptor, const kits::FolderHold& known)
{
    if (descriptor < 0) {
        return Fail(descriptor);
    }
    Adopt(descriptor);
    fFolder = known;
    return B_OK;
}

status_t BDirectory::OpenKnown(const kits::FolderHold& folder)
{
    // It may be our own, which Unset() lets go.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): see above
    const kits::FolderHold known = folder;
    Unset();
    OpenFolder open;
    const status_t status = FolderTable::Get().Open(known, &open);
    return status == B_OK
               ? AdoptFolder(kits::sys::OpenAt(open->Get(), ".", kOpenFolderFlags), known)
               : Fail(status);
}

status_t BDirectory::SetTo(const entry_ref* ref)
{
    const BEntry entry(ref);
    return SetTo(&entry);
}

status_t BDirectory::SetTo(const node_ref* ref)
{
    if (ref == nullptr) {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    const kits::FolderHold folder = FolderTable::Get().Find(ref->device, ref->node);
    if (!folder) {
        Unset();
        return Fail(B_ENTRY_NOT_FOUND);
    }
    return OpenKnown(folder);
}

status_t BDirectory::SetTo(const BEntry* entry)
{
    if (entry == nullptr) {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    OpenFolder folder;
    status_t status = entry->InitCheck();
    if (status == B_OK) {
        status = FolderTable::Get().Open(entry->fFolder, &folder);
    }
    Unset();
    return status == B_OK
               ? AdoptFolder(
                     kits::sys::OpenAt(folder->Get(), entry->fName.c_str(), kOpenFolderFlags), {})
               : Fail(status);
}

status_t BDirectory::SetTo(const char* path)
{
    Unset();
    if (path == nullptr || *path == '\0') {
        return Fail(B_BAD_VALUE);
    }
    return AdoptFolder(
        kits::OpenPath(kits::sys::kWorkingDirectory, kits::SystemPath(path), kOpenFolderFlags), {});
}

status_t BDirectory::SetTo(const BDirectory* directory, const char* path)
{
    if (directory == nullptr || directory->InitCheck() != B_OK || path == nullptr ||
        *path == '\0') {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    // `directory` may be this object.
    const int opened =
        kits::OpenPath(directory->Descriptor(), kits::SystemPath(path), kOpenFolderFlags);
    Unset();
    return AdoptFolder(opened, {});
}

status_t BDirectory::SetToChild(const BDirectory& parent, const char* name)
{
    if (parent.InitCheck() != B_OK || !IsEntryName(name)) {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    const int opened = kits::sys::OpenAt(parent.Descriptor(), name, kOpenFolderFlags | O_NOFOLLOW);
    Unset();
    return AdoptFolder(opened, {});
}

status_t BDirectory::SetToUnmountedChild(const BDirectory& parent, const char* name)
{
    if (parent.InitCheck() != B_OK || !IsEntryName(name)) {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    const int opened = kits::sys::OpenUnmountedFolderAt(parent.Descriptor(), name);
    Unset();
    return AdoptFolder(opened == B_CROSS_DEVICE_LINK ? int(B_BUSY) : opened, {});
}

status_t BDirectory::SetToParent(const BDirectory& child)
{
    if (child.InitCheck() != B_OK) {
        Unset();
        return Fail(B_BAD_VALUE);
    }
    const int opened = kits::sys::OpenAt(child.Descriptor(), "..", kOpenFolderFlags);
    Unset();
    return AdoptFolder(opened, {});
}

const kits::FolderHold& BDirectory::Folder() const
{
    if (!fFolder) {
        fFolder = FolderTable::Get().Know(Descriptor());
    }
    return fFolder;
}

void BDirectory::KnowFolder(const struct stat&) const
{
    Folder();
}

status_t BDirectory::GetEntry(BEntry* entry) const
{
    if (entry == nullptr) {
        return B_BAD_VALUE;
    }
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    kits::Place place;
    const status_t status = kits::PlaceOfFolder(Descriptor(), &place);
    if (status != B_OK) {
        return status;
    }
    entry->fFolder = std::move(place.folder);
    entry->fName = std::move(place.name);
    entry->fStatus = B_OK;
    return B_OK;
}

bool BDirectory::IsRootDirectory() const
{
    struct stat mine;
    struct stat parent;
    if (GetStat(&mine) != B_OK || kits::sys::StatAt(Descriptor(), "..", &parent) != B_OK) {
        return false;
    }
    return mine.st_dev != parent.st_dev || mine.st_ino == parent.st_ino;
}

status_t BDirectory::FindEntry(const char* path, BEntry* entry, bool traverse) const
{
    if (entry == nullptr || path == nullptr) {
        return B_BAD_VALUE;
    }
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    status_t status = entry->SetTo(this, path, traverse);
    struct stat st;
    if (status == B_OK) {
        status = entry->GetStat(&st);
    }
    if (status != B_OK) {
        entry->Unset();
    }
    return status;
}

bool BDirectory::Contains(const char* path, uint32 nodeFlags) const
{
    const BEntry entry(this, path);
    return Contains(&entry, nodeFlags);
}

bool BDirectory::Contains(const BEntry* entry, uint32 nodeFlags) const
{
    if (entry == nullptr || entry->InitCheck() != B_OK || !IsOfKind(*entry, nodeFlags)) {
        return false;
    }
    const BPath here(this);
    BPath there;
    if (here.InitCheck() != B_OK || entry->GetPath(&there) != B_OK) {
        return false;
    }
    const std::string above =
        std::strcmp(here.Path(), "/") == 0 ? "/" : std::string(here.Path()) + "/";
    const std::string_view inside = there.Path();
    return inside.size() > above.size() && inside.starts_with(above);
}

status_t BDirectory::GetStatFor(const char* name, struct stat* st) const
{
    if (!IsEntryName(name) || st == nullptr) {
        return B_BAD_VALUE;
    }
    return InitCheck() == B_OK ? kits::sys::StatAt(Descriptor(), name, st) : status_t(B_NO_INIT);
}

status_t BDirectory::ReadListing()
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (fListing != nullptr) {
        return B_OK;
    }
    auto listing = std::make_unique<kits::FolderListing>();
    const status_t status = listing->Read(Descriptor());
    if (status != B_OK) {
        // What a folder says that was removed meanwhile must not read as the end of its entries.
        return status == B_ENTRY_NOT_FOUND ? status_t(B_FILE_ERROR) : status;
    }
    listing->Sort();
    fListing = std::move(listing);
    fNext = 0;
    return B_OK;
}

status_t BDirectory::GetNextName(const char** name, uint32* kind)
{
    if (name == nullptr) {
        return B_BAD_VALUE;
    }
    const status_t status = ReadListing();
    if (status != B_OK) {
        return status;
    }
    const auto& items = fListing->Items();
    if (static_cast<size_t>(fNext) >= items.size()) {
        return B_ENTRY_NOT_FOUND;
    }
    const kits::FolderListing::Item& item = items[static_cast<size_t>(fNext++)];
    *name = item.name;
    if (kind != nullptr) {
        *kind = FlavorOf(item.kind);
    }
    return B_OK;
}

status_t BDirectory::GetNextEntry(BEntry* entry, bool traverse)
{
    if (entry == nullptr) {
        return B_BAD_VALUE;
    }
    const char* name = nullptr;
    const status_t status = GetNextName(&name);
    if (status != B_OK) {
        entry->Unset();
        return status;
    }
    if (!Folder()) {
        entry->Unset();
        return B_IO_ERROR;
    }
    if (traverse) {
        return entry->Set(Folder(), name, true);
    }
    entry->fFolder = Folder();
    entry->fName = name;
    entry->fStatus = B_OK;
    return B_OK;
}

status_t BDirectory::GetNextRef(entry_ref* ref)
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    const char* name = nullptr;
    status_t status = GetNextName(&name);
    if (status == B_OK) {
        status = ref->set_name(name);
    }
    if (status != B_OK) {
        return status;
    }
    if (!Folder()) {
        return B_IO_ERROR;
    }
    ref->device = FolderTable::Get().DeviceOf(Folder());
    ref->directory = FolderTable::Get().NodeOf(Folder());
    ref->fFolder = Folder();
    return B_OK;
}

int32 BDirectory::GetNextDirents(dirent* buffer, size_t length, int32 count)
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    const status_t status = ReadListing();
    if (status != B_OK) {
        return status;
    }
    char* at = reinterpret_cast<char*>(buffer);
    int32 given = 0;
    const auto& items = fListing->Items();
    while (given < count && static_cast<size_t>(fNext) < items.size()) {
        const kits::FolderListing::Item& item = items[static_cast<size_t>(fNext)];
        const size_t nameSize = std::strlen(item.name) + 1;
        const size_t size = (offsetof(dirent, d_name) + nameSize + 7) & ~size_t(7);
        if (size > length) {
            return given > 0 ? given : int32(B_BAD_VALUE); // not even one fits
        }
        dirent* record = reinterpret_cast<dirent*>(at);
        record->d_ino = item.node;
        record->d_off = 0;
        record->d_reclen = static_cast<unsigned short>(size);
        record->d_type = item.kind;
        std::memcpy(at + offsetof(dirent, d_name), item.name, nameSize);
        at += size;
        length -= size;
        ++fNext;
        ++given;
    }
    return given;
}

status_t BDirectory::Rewind()
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    fListing.reset();
    fNext = 0;
    return B_OK;
}

int32 BDirectory::CountEntries()
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    // Whoever counts first and then lists pays for one pass.
    if (fListing == nullptr) {
        const status_t status = ReadListing();
        return status == B_OK ? static_cast<int32>(fListing->Items().size()) : status;
    }
    const int64 count = kits::FolderListing::Count(Descriptor());
    return static_cast<int32>(std::min<int64>(count, INT32_MAX));
}
