#include <File.h>

#include "EntryName.h"
#include "FileBuffer.h"
#include "PathLookup.h"

#include <Directory.h>
#include <Entry.h>

#include <fcntl.h>

namespace {

constexpr uint32 kAccessMask = B_WRITE_ONLY | B_READ_WRITE;

int SystemFlags(uint32 openMode)
{
    // Never waits for the other end of a FIFO or for a device; what is no file is refused
    // afterwards.
    int flags = O_NONBLOCK;
    switch (openMode & kAccessMask) {
    case B_READ_ONLY:
        flags |= O_RDONLY;
        break;
    case B_WRITE_ONLY:
        flags |= O_WRONLY;
        break;
    default:
        flags |= O_RDWR;
    }
    if ((openMode & B_CREATE_FILE) != 0) {
        flags |= O_CREAT;
    }
    if ((openMode & B_FAIL_IF_EXISTS) != 0) {
        flags |= O_EXCL;
    }
    if ((openMode & B_NO_TRAVERSE) != 0) {
        flags |= O_NOFOLLOW;
    }
    return flags;
}

/// Refuses what is no regular file, and does what must not be done to anything else.
status_t CheckOpened(int file, uint32 openMode, struct stat* st)
{
    status_t status = kits::sys::Stat(file, st);
    if (status != B_OK) {
        return status;
    }
    if (S_ISDIR(st->st_mode)) {
        return B_IS_A_DIRECTORY;
    }
    if (!S_ISREG(st->st_mode)) {
        return B_BAD_VALUE;
    }
    const bool isWritable = (openMode & kAccessMask) != B_READ_ONLY;
    if ((openMode & B_ERASE_FILE) != 0 && isWritable && st->st_size > 0) {
        status = kits::sys::SetSize(file, 0);
        st->st_size = 0;
    }
    return status;
}

} // namespace

BFile::BFile() = default;

BFile::BFile(const entry_ref* ref, uint32 openMode)
{
    BFile::SetTo(ref, openMode);
}

BFile::BFile(const BEntry* entry, uint32 openMode)
{
    BFile::SetTo(entry, openMode);
}

BFile::BFile(const char* path, uint32 openMode)
{
    BFile::SetTo(path, openMode);
}

BFile::BFile(const BDirectory* directory, const char* path, uint32 openMode)
{
    BFile::SetTo(directory, path, openMode);
}

BFile::~BFile()
{
    BFile::Unset();
}

void BFile::Unset()
{
    Close();
}

status_t BFile::Close()
{
    if (InitCheck() != B_OK) {
        Fail(B_NO_INIT);
        return B_NO_INIT;
    }
    const status_t written = fBuffer->Flush();
    fBuffer.reset();
    // Quotas and network file systems tell some errors only now; the descriptor is gone in any
    // case.
    const status_t closed = CloseDescriptor();
    fOpenMode = 0;
    return written != B_OK ? written : closed;
}

status_t BFile::SetTo(const entry_ref* ref, uint32 openMode)
{
    const BEntry entry(ref);
    return SetTo(&entry, openMode);
}

status_t BFile::SetTo(const BEntry* entry, uint32 openMode)
{
    Unset();
    if (entry == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    kits::OpenFolder folder;
    status_t status = entry->InitCheck();
    if (status == B_OK) {
        status = kits::FolderTable::Get().Open(entry->fFolder, &folder);
    }
    struct stat st;
    return status == B_OK ? OpenAt(folder->Get(), entry->fName, openMode, &st) : Fail(status);
}

status_t BFile::SetTo(const char* path, uint32 openMode)
{
    Unset();
    if (path == nullptr || *path == '\0') {
        return Fail(B_BAD_VALUE);
    }
    struct stat st;
    return OpenAt(kits::sys::kWorkingDirectory, kits::SystemPath(path), openMode, &st);
}

status_t BFile::SetTo(const BDirectory* directory, const char* path, uint32 openMode)
{
    Unset();
    if (directory == nullptr || directory->InitCheck() != B_OK || path == nullptr ||
        *path == '\0') {
        return Fail(B_BAD_VALUE);
    }
    struct stat st;
    return OpenAt(directory->Descriptor(), kits::SystemPath(path), openMode, &st);
}

status_t BFile::SetToChild(const BDirectory& folder, const char* name, struct stat* st)
{
    Unset();
    if (folder.InitCheck() != B_OK || !kits::IsEntryName(name) || st == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    return OpenAt(folder.Descriptor(), name, B_READ_ONLY | B_NO_TRAVERSE, st);
}

status_t BFile::OpenAt(int folder, const std::string& path, uint32 openMode, struct stat* st)
{
    kits::UniqueFd file(kits::OpenPath(folder, path, SystemFlags(openMode), 0666));
    if (!file.IsOpen()) {
        return Fail(file.Get());
    }
    const status_t status = CheckOpened(file.Get(), openMode, st);
    if (status != B_OK) {
        return Fail(status);
    }
    AdoptFile(file.Release(), openMode);
    fBuffer->SetPosition((openMode & B_OPEN_AT_END) != 0 ? st->st_size : 0);
    return B_OK;
}

void BFile::AdoptFile(int descriptor, uint32 openMode)
{
    Adopt(descriptor);
    fOpenMode = openMode;
    fBuffer = std::make_unique<kits::FileBuffer>(descriptor);
}

status_t BFile::Settle() const
{
    return fBuffer->Flush();
}

bool BFile::IsReadable() const
{
    return InitCheck() == B_OK && (fOpenMode & kAccessMask) != B_WRITE_ONLY;
}

bool BFile::IsWritable() const
{
    return InitCheck() == B_OK && (fOpenMode & kAccessMask) != B_READ_ONLY;
}

ssize_t BFile::Read(void* buffer, size_t size)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsReadable()) {
        return B_NOT_ALLOWED;
    }
    return buffer == nullptr && size > 0 ? status_t(B_BAD_VALUE) : fBuffer->Read(buffer, size);
}

ssize_t BFile::Write(const void* buffer, size_t size)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsWritable()) {
        return B_NOT_ALLOWED;
    }
    return buffer == nullptr && size > 0 ? status_t(B_BAD_VALUE) : fBuffer->Write(buffer, size);
}

ssize_t BFile::ReadAt(off_t position, void* buffer, size_t size)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsReadable()) {
        return B_NOT_ALLOWED;
    }
    if (position < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    return fBuffer->ReadAt(position, buffer, size);
}

ssize_t BFile::WriteAt(off_t position, const void* buffer, size_t size)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsWritable()) {
        return B_NOT_ALLOWED;
    }
    if (position < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    return fBuffer->WriteAt(position, buffer, size);
}

off_t BFile::Seek(off_t position, uint32 seekMode)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    status_t status = fBuffer->Flush();
    off_t base = 0;
    if (seekMode == SEEK_CUR) {
        base = fBuffer->Position();
    } else if (seekMode == SEEK_END && status == B_OK) {
        status = GetSize(&base);
    } else if (seekMode != SEEK_SET && status == B_OK) {
        status = B_BAD_VALUE;
    }
    off_t place = 0;
    if (status == B_OK && (__builtin_add_overflow(base, position, &place) || place < 0)) {
        status = B_BAD_VALUE;
    }
    if (status != B_OK) {
        return status;
    }
    fBuffer->SetPosition(place);
    return place;
}

off_t BFile::Position() const
{
    return InitCheck() == B_OK ? fBuffer->Position() : off_t(B_NO_INIT);
}

status_t BFile::SetSize(off_t size)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (size < 0) {
        return B_BAD_VALUE;
    }
    if (!IsWritable()) {
        return B_NOT_ALLOWED;
    }
    const status_t status = fBuffer->Flush();
    fBuffer->DropReadAhead();
    return status == B_OK ? kits::sys::SetSize(Descriptor(), size) : status;
}

status_t BFile::GetSize(off_t* size) const
{
    return BStatable::GetSize(size);
}

status_t BFile::Sync()
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    const status_t status = fBuffer->Flush();
    return status == B_OK ? kits::sys::Sync(Descriptor()) : status;
}
