#include <Node.h>

#include "PathLookup.h"
#include "StatChange.h"

#include <Directory.h>
#include <Entry.h>

#include <fcntl.h>

using kits::FolderTable;

BNode::BNode() : fStatus(B_NO_INIT) {}

BNode::BNode(const entry_ref* ref) : BNode()
{
    BNode::SetTo(ref);
}

BNode::BNode(const BEntry* entry) : BNode()
{
    BNode::SetTo(entry);
}

BNode::BNode(const char* path) : BNode()
{
    BNode::SetTo(path);
}

BNode::BNode(const BDirectory* directory, const char* path) : BNode()
{
    BNode::SetTo(directory, path);
}

BNode::BNode(const BNode& other) : BNode()
{
    *this = other;
}

BNode& BNode::operator=(const BNode& other)
{
    if (this == &other) {
        return *this;
    }
    const int copy = other.Dup();
    Fail(B_NO_INIT);
    if (copy >= 0) {
        Adopt(copy);
    } else {
        fStatus = other.fStatus == B_OK ? copy : other.fStatus;
    }
    return *this;
}

BNode::~BNode()
{
    Fail(B_NO_INIT);
}

status_t BNode::Fail(status_t status)
{
    if (fDescriptor >= 0) {
        kits::sys::Close(fDescriptor);
        fDescriptor = -1;
    }
    RewindAttrs();
    fStatus = status;
    return status;
}

void BNode::Adopt(int descriptor)
{
    Fail(B_NO_INIT);
    fDescriptor = descriptor;
    fStatus = B_OK;
}

status_t BNode::CloseDescriptor()
{
    const status_t status = kits::sys::Close(fDescriptor);
    fDescriptor = -1;
    Fail(B_NO_INIT);
    return status;
}

void BNode::Unset()
{
    Fail(B_NO_INIT);
}

status_t BNode::SetTo(const entry_ref* ref)
{
    const BEntry entry(ref);
    return SetTo(&entry);
}

status_t BNode::SetTo(const char* path)
{
    const BEntry entry(path);
    return SetTo(&entry);
}

status_t BNode::SetTo(const BDirectory* directory, const char* path)
{
    const BEntry entry(directory, path);
    return SetTo(&entry);
}

status_t BNode::SetTo(const BEntry* entry)
{
    Unset();
    if (entry == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    if (entry->InitCheck() != B_OK) {
        return Fail(entry->InitCheck());
    }
    kits::OpenFolder folder;
    status_t status = FolderTable::Get().Open(entry->fFolder, &folder);
    if (status != B_OK) {
        return Fail(status);
    }
    // For the path alone: a FIFO or a device notices nothing of it.
    const int node = kits::sys::OpenAt(folder->Get(), entry->fName.c_str(), O_PATH | O_NOFOLLOW);
    if (node < 0) {
        return Fail(node);
    }
    Adopt(node);
    return B_OK;
}

status_t BNode::Settle() const
{
    return B_OK;
}

status_t BNode::GetStat(struct stat* st) const
{
    if (st == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    struct stat read;
    status_t status = Settle();
    if (status == B_OK) {
        status = kits::sys::Stat(fDescriptor, &read);
    }
    if (status == B_OK) {
        *st = read;
    }
    return status;
}

void BNode::KnowFolder(const struct stat& st) const
{
    FolderTable::Get().Know(fDescriptor, st);
}

status_t BNode::Lock()
{
    const status_t status = fStatus == B_OK ? kits::sys::Lock(fDescriptor) : status_t(B_NO_INIT);
    return status == B_FILE_ERROR ? status_t(B_NOT_ALLOWED) : status; // not opened, only held
}

status_t BNode::Unlock()
{
    const status_t status = fStatus == B_OK ? kits::sys::Unlock(fDescriptor) : status_t(B_NO_INIT);
    return status == B_FILE_ERROR ? status_t(B_NOT_ALLOWED) : status;
}

status_t BNode::Sync()
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    struct stat st;
    status_t status = GetStat(&st);
    if (status != B_OK) {
        return status;
    }
    status = kits::sys::Sync(fDescriptor);
    if (status != B_FILE_ERROR || (!S_ISREG(st.st_mode) && !S_ISDIR(st.st_mode))) {
        return status;
    }
    // Open for the path alone: the way to the data is through the system's list of descriptors.
    const std::string path = "/proc/self/fd/" + std::to_string(fDescriptor);
    const kits::UniqueFd open(
        kits::sys::OpenAt(kits::sys::kWorkingDirectory, path.c_str(), O_RDONLY | O_NONBLOCK));
    return open.IsOpen() ? kits::sys::Sync(open.Get()) : open.Get();
}

int BNode::Dup() const
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    return kits::sys::Duplicate(fDescriptor);
}

bool BNode::operator==(const BNode& other) const
{
    struct stat mine;
    struct stat theirs;
    return GetStat(&mine) == B_OK && other.GetStat(&theirs) == B_OK &&
           mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino;
}

status_t BNode::SetStat(const struct stat& st, uint32 what)
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    status_t status = Settle();
    if (status == B_OK && (what & (kSetOwner | kSetGroup)) != 0) {
        status =
            kits::sys::SetOwnerAt(fDescriptor, "", (what & kSetOwner) != 0 ? st.st_uid : uid_t(-1),
                                  (what & kSetGroup) != 0 ? st.st_gid : gid_t(-1));
    }
    if (status == B_OK && (what & kSetMode) != 0) {
        status = kits::sys::SetMode(fDescriptor, st.st_mode);
    }
    if (status == B_OK && (what & (kSetModified | kSetAccessed)) != 0) {
        const kits::TimesToSet set(st, (what & kSetAccessed) != 0, (what & kSetModified) != 0);
        status = kits::sys::SetTimesAt(fDescriptor, "", set.times);
    }
    return status;
}
