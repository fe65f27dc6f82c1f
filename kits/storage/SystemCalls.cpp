#include "SystemCalls.h"

#include "support/ErrnoTable.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kits {

UniqueFd::~UniqueFd()
{
    if (fDescriptor >= 0) {
        sys::Close(fDescriptor);
    }
}

namespace sys {

const int kWorkingDirectory = AT_FDCWD;

namespace {

/// Makes the call again while signals interrupt it; a failure becomes its status.
template<typename Call>
auto Retry(Call call) -> decltype(call())
{
    for (;;) {
        const auto result = call();
        if (result >= 0) {
            return result;
        }
        const int error = errno;
        if (error != EINTR) {
            return StatusFromErrno(error);
        }
    }
}

/// The node of a descriptor as a path, for the calls that refuse descriptors opened for the path
/// alone.
struct ProcPath
{
    explicit ProcPath(int descriptor)
    {
        std::snprintf(text, sizeof(text), "/proc/self/fd/%d", descriptor);
    }
    char text[32];
};

/// Makes a call by descriptor and, when that is open for the path alone, by the path of the node.
template<typename ByDescriptor, typename ByPath>
auto RetryByPath(int descriptor, ByDescriptor byDescriptor, ByPath byPath)
    -> decltype(byDescriptor())
{
    const auto result = Retry(byDescriptor);
    if (result != B_FILE_ERROR) {
        return result;
    }
    const ProcPath path(descriptor);
    return Retry([&] { return byPath(path.text); });
}

} // namespace

int OpenAt(int folder, const char* name, int flags, mode_t mode)
{
    return Retry([&] { return ::openat(folder, name, flags | O_CLOEXEC | O_NOCTTY, mode); });
}

int OpenUnmountedFolderAt(int folder, const char* name)
{
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    struct open_how how = {};
    how.flags = kFlags;
    how.resolve = RESOLVE_NO_XDEV | RESOLVE_NO_SYMLINKS | RESOLVE_BENEATH;
    const int opened = static_cast<int>(
        Retry([&] { return ::syscall(SYS_openat2, folder, name, &how, sizeof(how)); }));
    // Older systems do not know the call, and some sandboxes forbid what they do not know.
    if (opened != B_UNSUPPORTED && opened != B_NOT_ALLOWED) {
        return opened;
    }
    UniqueFd child(OpenAt(folder, name, kFlags));
    if (child.IsOpen() && MountOf(child.Get()) != MountOf(folder)) {
        return B_CROSS_DEVICE_LINK;
    }
    return child.Release();
}

status_t Close(int descriptor)
{
    // Never again after EINTR: the descriptor is gone by then and may be someone else's already.
    if (::close(descriptor) == 0 || errno == EINTR) {
        return B_OK;
    }
    return StatusFromErrno(errno);
}

int Duplicate(int descriptor)
{
    return Retry([&] { return ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0); });
}

ssize_t ReadAt(int file, void* buffer, size_t size, off_t position)
{
    return Retry([&] { return ::pread(file, buffer, size, position); });
}

ssize_t WriteAt(int file, const void* buffer, size_t size, off_t position)
{
    return Retry([&] { return ::pwrite(file, buffer, size, position); });
}

status_t SetSize(int file, off_t size)
{
    return Retry([&] { return ::ftruncate(file, size); });
}

status_t CloneContents(int source, int target)
{
    return Retry([&] { return ::ioctl(target, FICLONE, source); });
}

ssize_t CopyRange(int source, int target, off_t position, size_t size)
{
    off_t from = position;
    off_t to = position;
    return Retry([&] { return ::copy_file_range(source, &from, target, &to, size, 0); });
}

off_t SeekData(int file, off_t position)
{
    const off_t place = ::lseek(file, position, SEEK_DATA);
    if (place >= 0) {
        return place;
    }
    return errno == ENXIO ? B_ENTRY_NOT_FOUND : B_BAD_VALUE;
}

off_t SeekHole(int file, off_t position)
{
    const off_t place = ::lseek(file, position, SEEK_HOLE);
    return place >= 0 ? place : StatusFromErrno(errno);
}

status_t Sync(int file)
{
    return Retry([&] { return ::fsync(file); });
}

status_t Lock(int file)
{
    const status_t status = Retry([&] { return ::flock(file, LOCK_EX | LOCK_NB); });
    return status == B_WOULD_BLOCK ? status_t(B_BUSY) : status;
}

status_t Unlock(int file)
{
    return Retry([&] { return ::flock(file, LOCK_UN); });
}

status_t SyncVolume(int descriptor)
{
    return Retry([&] { return ::syncfs(descriptor); });
}

status_t Stat(int descriptor, struct stat* st)
{
    return Retry([&] { return ::fstat(descriptor, st); });
}

status_t StatAt(int folder, const char* name, struct stat* st)
{
    return Retry(
        [&] { return ::fstatat(folder, name, st, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT); });
}

status_t StatPath(const char* path, struct stat* st)
{
    return Retry([&] { return ::fstatat(AT_FDCWD, path, st, AT_NO_AUTOMOUNT); });
}

status_t StatxAt(int folder, const char* name, struct statx* record)
{
    return Retry([&] {
        return ::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC,
                       STATX_BASIC_STATS, record);
    });
}

status_t KnownRecord(int descriptor, struct statx* record)
{
    return Retry([&] {
        return ::statx(descriptor, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_TYPE, record);
    });
}

status_t HandleOf(int descriptor, std::string* handle)
{
    union
    {
        struct file_handle head;
        char bytes[sizeof(struct file_handle) + MAX_HANDLE_SZ];
    } read = {};
    read.head.handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    const status_t status = Retry(
        [&] { return ::name_to_handle_at(descriptor, "", &read.head, &mount, AT_EMPTY_PATH); });
    if (status != B_OK) {
        return status;
    }
    handle->assign(reinterpret_cast<const char*>(&read.head.handle_type),
                   sizeof(read.head.handle_type));
    handle->append(reinterpret_cast<const char*>(read.head.f_handle), read.head.handle_bytes);
    return B_OK;
}

status_t BirthOf(int descriptor, uint64* birth)
{
    struct statx record;
    const status_t status =
        Retry([&] { return ::statx(descriptor, "", AT_EMPTY_PATH, STATX_BTIME, &record); });
    if (status != B_OK) {
        return status;
    }
    const uint64 nanoseconds =
        static_cast<uint64>(record.stx_btime.tv_sec) * 1'000'000'000 + record.stx_btime.tv_nsec;
    // Some that keep no such time say that everything was made when time began.
    if ((record.stx_mask & STATX_BTIME) == 0 || nanoseconds == 0) {
        return B_UNSUPPORTED;
    }
    *birth = nanoseconds;
    return B_OK;
}

status_t SetMode(int descriptor, mode_t mode)
{
    return RetryByPath(
        descriptor, [&] { return ::fchmod(descriptor, mode); },
        [&](const char* path) { return ::chmod(path, mode); });
}

status_t SetModeAt(int folder, const char* name, mode_t mode)
{
    return Retry([&] { return ::fchmodat(folder, name, mode, AT_SYMLINK_NOFOLLOW); });
}

status_t SetOwnerAt(int folder, const char* name, uid_t owner, gid_t group)
{
    return Retry([&] {
        return ::fchownat(folder, name, owner, group, AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH);
    });
}

status_t SetTimesAt(int folder, const char* name, const struct timespec times[2])
{
    return Retry([&] {
        return ::utimensat(folder, name, times,
                           AT_SYMLINK_NOFOLLOW | (*name == '\0' ? AT_EMPTY_PATH : 0));
    });
}

ssize_t ListFolder(int folder, void* buffer, size_t size)
{
    return Retry([&] { return ::syscall(SYS_getdents64, folder, buffer, size); });
}

status_t RewindFolder(int folder)
{
    const off_t place = Retry([&] { return ::lseek(folder, 0, SEEK_SET); });
    return place < 0 ? static_cast<status_t>(place) : B_OK;
}

status_t MakeFolderAt(int folder, const char* name, mode_t mode)
{
    return Retry([&] { return ::mkdirat(folder, name, mode); });
}

status_t MakeLinkAt(const char* text, int folder, const char* name)
{
    return Retry([&] { return ::symlinkat(text, folder, name); });
}

ssize_t ReadLinkAt(int folder, const char* name, char* buffer, size_t size)
{
    return Retry([&] { return ::readlinkat(folder, name, buffer, size); });
}

status_t RemoveFileAt(int folder, const char* name)
{
    return Retry([&] { return ::unlinkat(folder, name, 0); });
}

status_t RemoveFolderAt(int folder, const char* name)
{
    return Retry([&] { return ::unlinkat(folder, name, AT_REMOVEDIR); });
}

status_t RenameAt(int from, const char* name, int to, const char* newName)
{
    return Retry([&] { return ::renameat(from, name, to, newName); });
}

status_t RenameNewAt(int from, const char* name, int to, const char* newName)
{
    const status_t status =
        Retry([&] { return ::renameat2(from, name, to, newName, RENAME_NOREPLACE); });
    if (status != B_BAD_VALUE && status != B_UNSUPPORTED) {
        return status;
    }
    // Some file systems cannot promise it, and say so by the code of a folder moved into itself.
    struct stat taken;
    const status_t looked = StatAt(to, newName, &taken);
    if (looked == B_OK) {
        return B_FILE_EXISTS;
    }
    if (looked != B_ENTRY_NOT_FOUND) {
        return looked;
    }
    return RenameAt(from, name, to, newName);
}

status_t ExchangeAt(int folder, const char* name, const char* other)
{
    const status_t status =
        Retry([&] { return ::renameat2(folder, name, folder, other, RENAME_EXCHANGE); });
    return status == B_BAD_VALUE ? B_UNSUPPORTED : status;
}

status_t VolumeRecord(int descriptor, struct statfs* record)
{
    return Retry([&] { return ::fstatfs(descriptor, record); });
}

int MountOf(int descriptor)
{
    struct statx record = {};
    if (::statx(descriptor, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_MNT_ID, &record) == 0 &&
        (record.stx_mask & STATX_MNT_ID) != 0) {
        return static_cast<int>(record.stx_mnt_id);
    }
    // Older systems tell it here alone.
    char path[40];
    std::snprintf(path, sizeof(path), "/proc/self/fdinfo/%d", descriptor);
    const UniqueFd file(OpenAt(kWorkingDirectory, path, O_RDONLY));
    if (!file.IsOpen()) {
        return file.Get();
    }
    char text[512];
    const ssize_t length = ReadAt(file.Get(), text, sizeof(text) - 1, 0);
    if (length < 0) {
        return static_cast<int>(length);
    }
    text[length] = '\0';
    constexpr char kKey[] = "mnt_id:";
    const char* found = std::strstr(text, kKey);
    return found == nullptr ? B_UNSUPPORTED : std::atoi(found + sizeof(kKey) - 1);
}

status_t IsMountPointAt(int folder, const char* name, bool* is)
{
    struct statx record = {};
    const status_t status = Retry([&] {
        return ::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, 0,
                       &record);
    });
    if (status != B_OK) {
        return status;
    }
    if ((record.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
        *is = (record.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
        return B_OK;
    }
    const UniqueFd entry(OpenAt(folder, name, O_PATH | O_NOFOLLOW));
    const int below = entry.IsOpen() ? MountOf(entry.Get()) : entry.Get();
    const int above = MountOf(folder);
    if (below < 0 || above < 0) {
        return below < 0 ? below : above;
    }
    *is = below != above;
    return B_OK;
}

ssize_t ListAttributes(int descriptor, char* buffer, size_t size)
{
    return RetryByPath(
        descriptor, [&] { return ::flistxattr(descriptor, buffer, size); },
        [&](const char* path) { return ::listxattr(path, buffer, size); });
}

ssize_t GetAttribute(int descriptor, const char* name, void* buffer, size_t size)
{
    return RetryByPath(
        descriptor, [&] { return ::fgetxattr(descriptor, name, buffer, size); },
        [&](const char* path) { return ::getxattr(path, name, buffer, size); });
}

status_t SetAttribute(int descriptor, const char* name, const void* buffer, size_t size)
{
    return RetryByPath(
        descriptor, [&] { return ::fsetxattr(descriptor, name, buffer, size, 0); },
        [&](const char* path) { return ::setxattr(path, name, buffer, size, 0); });
}

status_t RemoveAttribute(int descriptor, const char* name)
{
    return RetryByPath(
        descriptor, [&] { return ::fremovexattr(descriptor, name); },
        [&](const char* path) { return ::removexattr(path, name); });
}

status_t ReadLinkText(int folder, const char* name, std::string* text)
{
    std::string buffer(256, '\0');
    for (;;) {
        const ssize_t length = ReadLinkAt(folder, name, buffer.data(), buffer.size());
        if (length < 0) {
            return static_cast<status_t>(length);
        }
        // A text that fills the buffer may have been cut.
        if (static_cast<size_t>(length) < buffer.size()) {
            buffer.resize(static_cast<size_t>(length));
            *text = std::move(buffer);
            return B_OK;
        }
        buffer.resize(buffer.size() * 4);
    }
}

status_t PathOf(int descriptor, std::string* path)
{
    const ProcPath link(descriptor);
    std::string text;
    const status_t status = ReadLinkText(kWorkingDirectory, link.text, &text);
    if (status != B_OK) {
        return status;
    }
    if (text.empty() || text.front() != '/') {
        return B_ENTRY_NOT_FOUND; // reached by no path: "(unreachable)/...", a socket
    }
    // The kernel marks a removed node so; a node may also be called so.
    constexpr std::string_view kRemoved = " (deleted)";
    if (text.ends_with(kRemoved)) {
        struct stat there;
        struct stat open;
        if (StatAt(kWorkingDirectory, text.c_str(), &there) != B_OK ||
            Stat(descriptor, &open) != B_OK || there.st_dev != open.st_dev ||
            there.st_ino != open.st_ino) {
            return B_ENTRY_NOT_FOUND;
        }
    }
    *path = std::move(text);
    return B_OK;
}

} // namespace sys
} // namespace kits
