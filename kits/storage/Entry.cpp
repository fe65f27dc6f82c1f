#include <Entry.h>

#include "PathLookup.h"
#include "StatChange.h"
#include "TrashRecords.h"

#include <Directory.h>
#include <Path.h>

#include <cstring>
#include <fcntl.h>

using kits::FolderTable;
using kits::OpenFolder;

namespace {

/// A rename between two names of one node does nothing and says that all is well; the old name has
/// to go by itself then.
status_t RemoveOldLink(int from, const char* name, int to, const char* newName)
{
    struct stat old;
    if (kits::sys::StatAt(from, name, &old) != B_OK) {
        return B_OK;
    }
    struct stat target;
    const status_t status = kits::sys::StatAt(to, newName, &target);
    const bool isSame =
        status == B_OK && old.st_dev == target.st_dev && old.st_ino == target.st_ino;
    return isSame && old.st_nlink > 1 ? kits::sys::RemoveFileAt(from, name) : B_OK;
}

} // namespace

BEntry::BEntry(const BDirectory* directory, const char* path, bool traverse)
{
    SetTo(directory, path, traverse);
}

BEntry::BEntry(const entry_ref* ref, bool traverse)
{
    SetTo(ref, traverse);
}

BEntry::BEntry(const char* path, bool traverse)
{
    SetTo(path, traverse);
}

BEntry::~BEntry() = default;

status_t BEntry::Fail(status_t status)
{
    fFolder = kits::FolderHold();
    fName.clear();
    fStatus = status;
    return status;
}

void BEntry::Unset()
{
    Fail(B_NO_INIT);
}

status_t BEntry::Set(const kits::FolderHold& base, const char* path, bool traverse)
{
    kits::Place place;
    const auto lastLink = traverse ? kits::LastLink::kFollowed : kits::LastLink::kKept;
    const status_t status = kits::LookUp(base, path, lastLink, &place);
    if (status != B_OK) {
        return Fail(status);
    }
    fFolder = std::move(place.folder);
    fName = std::move(place.name);
    fStatus = B_OK;
    return B_OK;
}

status_t BEntry::SetTo(const BDirectory* directory, const char* path, bool traverse)
{
    if (directory == nullptr || directory->InitCheck() != B_OK) {
        return Fail(B_BAD_VALUE);
    }
    if (path == nullptr || *path == '\0') {
        const status_t status = directory->GetEntry(this);
        return status == B_OK ? B_OK : Fail(status);
    }
    // Without its folder a name would be looked for in the working directory.
    return directory->Folder() ? Set(directory->Folder(), path, traverse) : Fail(B_IO_ERROR);
}

status_t BEntry::SetTo(const entry_ref* ref, bool traverse)
{
    if (ref == nullptr || ref->name == nullptr || *ref->name == '\0' ||
        std::strchr(ref->name, '/') != nullptr || std::strcmp(ref->name, "..") == 0) {
        return Fail(B_BAD_VALUE);
    }
    FolderTable& table = FolderTable::Get();
    // The numbers count: a program may have changed them since the folder was taken along.
    const bool isCurrent = ref->fFolder && table.DeviceOf(ref->fFolder) == ref->device &&
                           table.NodeOf(ref->fFolder) == ref->directory;
    const kits::FolderHold folder =
        isCurrent ? ref->fFolder : table.Find(ref->device, ref->directory);
    if (!folder) {
        return Fail(B_ENTRY_NOT_FOUND);
    }
    if (traverse || std::strcmp(ref->name, ".") == 0) {
        return Set(folder, ref->name, traverse);
    }
    if (std::strlen(ref->name) >= B_FILE_NAME_LENGTH) {
        return Fail(B_NAME_TOO_LONG);
    }
    fName = ref->name;
    fFolder = folder;
    fStatus = B_OK;
    return B_OK;
}

status_t BEntry::SetTo(const char* path, bool traverse)
{
    return Set({}, path, traverse);
}

bool BEntry::Exists() const
{
    struct stat st;
    return GetStat(&st) == B_OK;
}

status_t BEntry::GetStat(struct stat* st) const
{
    if (st == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    OpenFolder folder;
    const status_t status = FolderTable::Get().Open(fFolder, &folder);
    if (status != B_OK) {
        return status;
    }
    struct stat read;
    const status_t result = kits::sys::StatAt(folder->Get(), fName.c_str(), &read);
    if (result == B_OK) {
        *st = read;
    }
    return result;
}

void BEntry::KnowFolder(const struct stat&) const
{
    OpenFolder folder;
    if (FolderTable::Get().Open(fFolder, &folder) != B_OK) {
        return;
    }
    const kits::UniqueFd child(
        kits::sys::OpenAt(folder->Get(), fName.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW));
    if (child.IsOpen()) {
        FolderTable::Get().Know(child.Get());
    }
}

status_t BEntry::GetPath(BPath* path) const
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    OpenFolder folder;
    std::string text;
    status_t status = FolderTable::Get().Open(fFolder, &folder);
    if (status == B_OK) {
        status = kits::sys::PathOf(folder->Get(), &text);
    }
    if (status != B_OK) {
        return status;
    }
    // The names are real: nothing is left to normalise, and a folder may well be called
    // "/boot/home".
    if (fName != ".") {
        if (text != "/") {
            text += '/';
        }
        text += fName;
    }
    path->fPath = std::move(text);
    path->fStatus = B_OK;
    return B_OK;
}

status_t BEntry::GetParent(BEntry* entry) const
{
    if (entry == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (fName == ".") {
        return B_ENTRY_NOT_FOUND;
    }
    OpenFolder folder;
    kits::Place place;
    status_t status = FolderTable::Get().Open(fFolder, &folder);
    if (status == B_OK) {
        status = kits::PlaceOfFolder(folder->Get(), &place);
    }
    if (status != B_OK) {
        return status;
    }
    entry->fFolder = std::move(place.folder);
    entry->fName = std::move(place.name);
    entry->fStatus = B_OK;
    return B_OK;
}

status_t BEntry::GetParent(BDirectory* directory) const
{
    if (directory == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (fName == ".") {
        return B_ENTRY_NOT_FOUND;
    }
    return directory->OpenKnown(fFolder);
}

status_t BEntry::GetName(char* buffer) const
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    std::memcpy(buffer, fName.c_str(), fName.size() + 1); // at most 256 bytes
    return B_OK;
}

status_t BEntry::GetRef(entry_ref* ref) const
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    const status_t status = ref->set_name(fName.c_str());
    if (status != B_OK) {
        return status;
    }
    ref->device = FolderTable::Get().DeviceOf(fFolder);
    ref->directory = FolderTable::Get().NodeOf(fFolder);
    ref->fFolder = fFolder;
    return B_OK;
}

status_t BEntry::MoveInto(const kits::FolderHold& base, const char* path, bool clobber)
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    kits::Place place;
    OpenFolder from;
    OpenFolder to;
    status_t status = kits::LookUp(base, path, kits::LastLink::kKept, &place);
    if (status == B_OK) {
        status = FolderTable::Get().Open(fFolder, &from);
    }
    if (status == B_OK) {
        status = FolderTable::Get().Open(place.folder, &to);
    }
    if (status != B_OK) {
        return status;
    }
    const char* name = fName.c_str();
    const char* newName = place.name.c_str();
    const bool isSamePlace = fFolder.Get() == place.folder.Get() && fName == place.name;
    if (isSamePlace) {
        status = B_FILE_EXISTS;
        return clobber ? status_t(B_OK) : status;
    }
    std::shared_ptr<const kits::Trash> toTrash;
    status = kits::FindTrashOf(place.folder, &toTrash);
    if (status != B_OK) {
        return status; // it must not get into a Trash without its record
    }
    const kits::TrashMove move{
        kits::TrashOf(fFolder), toTrash, fFolder, from->Get(), fName, to->Get(), place.name};
    std::string movedName = place.name;
    if (clobber) {
        status = kits::MoveWithRecordOver(move);
        if (status == B_OK) {
            status = RemoveOldLink(from->Get(), name, to->Get(), newName);
        }
    } else {
        status = kits::MoveWithRecord(move, &movedName);
    }
    if (status == B_OK) {
        fFolder = std::move(place.folder);
        fName = std::move(movedName);
    }
    return status;
}

status_t BEntry::Rename(const char* path, bool clobber)
{
    if (path == nullptr || *path == '\0') {
        return B_BAD_VALUE;
    }
    return MoveInto(fFolder, path, clobber);
}

status_t BEntry::MoveTo(BDirectory* directory, const char* path, bool clobber)
{
    if (directory == nullptr || directory->InitCheck() != B_OK) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (!directory->Folder()) {
        return B_IO_ERROR;
    }
    const std::string name = path == nullptr ? fName : path;
    return MoveInto(directory->Folder(), name.c_str(), clobber);
}

status_t BEntry::Remove()
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    OpenFolder folder;
    status_t status = FolderTable::Get().Open(fFolder, &folder);
    if (status != B_OK) {
        return status;
    }
    status = kits::sys::RemoveFileAt(folder->Get(), fName.c_str());
    // Which of the two a system answers for a folder differs; a file that may not be removed says
    // the second too.
    if (status == B_IS_A_DIRECTORY || status == B_NOT_ALLOWED) {
        const status_t asFolder = kits::sys::RemoveFolderAt(folder->Get(), fName.c_str());
        status = asFolder == B_NOT_A_DIRECTORY ? status : asFolder;
    }
    if (status == B_OK) {
        // After the entry: as long as that is there it can be restored.
        ForgetOrigin();
    }
    return status;
}

void BEntry::ForgetOrigin() const
{
    const std::shared_ptr<const kits::Trash> trash = kits::TrashOf(fFolder);
    if (trash != nullptr) {
        kits::RemoveTrashRecord(*trash, fName);
    }
}

bool BEntry::operator==(const BEntry& other) const
{
    if (fStatus != B_OK || other.fStatus != B_OK) {
        return fStatus != B_OK && other.fStatus != B_OK;
    }
    return fFolder.Get() == other.fFolder.Get() && fName == other.fName;
}

status_t BEntry::SetStat(const struct stat& st, uint32 what)
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    OpenFolder folder;
    status_t status = FolderTable::Get().Open(fFolder, &folder);
    if (status == B_OK && (what & (kSetOwner | kSetGroup)) != 0) {
        status = kits::sys::SetOwnerAt(folder->Get(), fName.c_str(),
                                       (what & kSetOwner) != 0 ? st.st_uid : uid_t(-1),
                                       (what & kSetGroup) != 0 ? st.st_gid : gid_t(-1));
    }
    if (status == B_OK && (what & kSetMode) != 0) {
        status = kits::sys::SetModeAt(folder->Get(), fName.c_str(), st.st_mode);
    }
    if (status == B_OK && (what & (kSetModified | kSetAccessed)) != 0) {
        const kits::TimesToSet set(st, (what & kSetAccessed) != 0, (what & kSetModified) != 0);
        status = kits::sys::SetTimesAt(folder->Get(), fName.c_str(), set.times);
    }
    return status;
}

status_t get_ref_for_path(const char* path, entry_ref* ref)
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    const BEntry entry(path);
    const status_t status = entry.InitCheck();
    return status == B_OK ? entry.GetRef(ref) : status;
}

bool operator<(const entry_ref& a, const entry_ref& b)
{
    if (a.device != b.device) {
        return a.device < b.device;
    }
    if (a.directory != b.directory) {
        return a.directory < b.directory;
    }
    if (a.name == nullptr || b.name == nullptr) {
        return a.name == nullptr && b.name != nullptr;
    }
    return std::strcmp(a.name, b.name) < 0;
}
