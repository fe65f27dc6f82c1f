// Preloaded into the program: a file system that does not answer. Calls on what lies below the
// folder named by HANG_AT wait as long as there is a file of the name in HANG_WHILE. Links to it
// hang like it. While there is a file of the name in NO_WATCH_WHILE no folder can be watched.

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

constexpr long kPause = 5'000'000; // nanoseconds

template<typename Function>
Function Real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

long Raw(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0)
{
    static const auto call = Real<long (*)(long, ...)>("syscall");
    return call(number, a, b, c, d, e, f);
}

long Number(const void* pointer)
{
    return reinterpret_cast<long>(pointer);
}

bool LiesThere(const char* path)
{
    static const char* const at = std::getenv("HANG_AT");
    const size_t length = at != nullptr ? std::strlen(at) : 0;
    return length > 0 && std::strncmp(path, at, length) == 0 &&
           (path[length] == '/' || path[length] == '\0');
}

/// Where an open descriptor leads; empty when that cannot be told.
std::string PathOf(int descriptor)
{
    char name[64];
    char path[4096];
    std::snprintf(name, sizeof(name), "/proc/self/fd/%d", descriptor);
    const long length = Raw(SYS_readlinkat, AT_FDCWD, Number(name), Number(path), sizeof(path) - 1);
    return length > 0 ? std::string(path, static_cast<size_t>(length)) : std::string();
}

void Wait()
{
    static const char* const gate = std::getenv("HANG_WHILE");
    while (gate != nullptr && Raw(SYS_faccessat, AT_FDCWD, Number(gate), F_OK) == 0) {
        const timespec pause = {0, kPause};
        Raw(SYS_nanosleep, Number(&pause));
    }
}

/// `folder` may be AT_FDCWD; `name` may be null or empty: the descriptor itself is meant.
void MayHang(int folder, const char* name, bool followsLinks = true)
{
    const int error = errno;
    std::string path = name != nullptr ? name : "";
    if (path.empty() || path[0] != '/') {
        const std::string base = folder >= 0 ? PathOf(folder) : std::string();
        path = path.empty() ? base : base + "/" + path;
    }
    if (path.starts_with("/proc/self/fd/")) {
        path = PathOf(std::atoi(path.c_str() + 14));
    }
    char target[4096];
    const long length = followsLinks ? Raw(SYS_readlinkat, AT_FDCWD, Number(path.c_str()),
                                           Number(target), sizeof(target) - 1)
                                     : 0;
    if (length > 0) {
        target[length] = '\0';
    }
    if (LiesThere(path.c_str()) || (length > 0 && LiesThere(target))) {
        Wait();
    }
    errno = error;
}

int Open(int folder, const char* path, int flags, mode_t mode)
{
    if (!LiesThere(path) && path[0] == '/' && std::strncmp(path, "/proc", 5) == 0) {
        return static_cast<int>(Raw(SYS_openat, folder, Number(path), flags, mode));
    }
    MayHang(folder, path, (flags & O_NOFOLLOW) == 0);
    return static_cast<int>(Raw(SYS_openat, folder, Number(path), flags, mode));
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

EXPORTED int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(AT_FDCWD, path, flags, mode);
}

EXPORTED int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(AT_FDCWD, path, flags, mode);
}

EXPORTED int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(folder, path, flags, mode);
}

EXPORTED int openat64(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(folder, path, flags, mode);
}

// What the system's library has no call of its own for.
EXPORTED long syscall(long number, ...) noexcept
{
    va_list arguments;
    va_start(arguments, number);
    long given[6];
    for (long& argument : given) {
        argument = va_arg(arguments, long);
    }
    va_end(arguments);
    if (number == SYS_openat2) {
        MayHang(static_cast<int>(given[0]), reinterpret_cast<const char*>(given[1]), false);
    } else if (number == SYS_getdents64) {
        MayHang(static_cast<int>(given[0]), nullptr);
    }
    return Raw(number, given[0], given[1], given[2], given[3], given[4], given[5]);
}

EXPORTED int statx(int folder, const char* path, int flags, unsigned mask, struct statx* record)
{
    MayHang(folder, path, (flags & AT_SYMLINK_NOFOLLOW) == 0);
    return static_cast<int>(Raw(SYS_statx, folder, Number(path), flags, mask, Number(record)));
}

EXPORTED int stat(const char* path, struct stat* record)
{
    MayHang(AT_FDCWD, path);
    return Real<int (*)(const char*, struct stat*)>("stat")(path, record);
}

EXPORTED int lstat(const char* path, struct stat* record)
{
    MayHang(AT_FDCWD, path, false);
    return Real<int (*)(const char*, struct stat*)>("lstat")(path, record);
}

EXPORTED int fstat(int file, struct stat* record)
{
    MayHang(file, nullptr);
    return Real<int (*)(int, struct stat*)>("fstat")(file, record);
}

EXPORTED int fstatat(int folder, const char* path, struct stat* record, int flags)
{
    MayHang(folder, path, (flags & AT_SYMLINK_NOFOLLOW) == 0);
    return Real<int (*)(int, const char*, struct stat*, int)>("fstatat")(folder, path, record,
                                                                         flags);
}

EXPORTED int mkdirat(int folder, const char* path, mode_t mode)
{
    MayHang(folder, path, false);
    return static_cast<int>(Raw(SYS_mkdirat, folder, Number(path), static_cast<long>(mode)));
}

EXPORTED int renameat2(int folder, const char* path, int newFolder, const char* newPath,
                       unsigned flags)
{
    MayHang(folder, path, false);
    MayHang(newFolder, newPath, false);
    return static_cast<int>(Raw(SYS_renameat2, folder, Number(path), newFolder, Number(newPath),
                                static_cast<long>(flags)));
}

EXPORTED int access(const char* path, int mode)
{
    MayHang(AT_FDCWD, path);
    return static_cast<int>(Raw(SYS_faccessat, AT_FDCWD, Number(path), mode));
}

EXPORTED int name_to_handle_at(int folder, const char* path, struct file_handle* handle, int* mount,
                               int flags)
{
    MayHang(folder, path, false);
    return static_cast<int>(
        Raw(SYS_name_to_handle_at, folder, Number(path), Number(handle), Number(mount), flags));
}

EXPORTED int inotify_add_watch(int instance, const char* path, uint32_t mask)
{
    MayHang(AT_FDCWD, path);
    static const char* const gate = std::getenv("NO_WATCH_WHILE");
    if (gate != nullptr && Raw(SYS_faccessat, AT_FDCWD, Number(gate), F_OK) == 0) {
        errno = ENOSPC; // as many as the person may have
        return -1;
    }
    return static_cast<int>(
        Raw(SYS_inotify_add_watch, instance, Number(path), static_cast<long>(mask)));
}

EXPORTED ssize_t flistxattr(int file, char* list, size_t size)
{
    MayHang(file, nullptr);
    return Raw(SYS_flistxattr, file, Number(list), static_cast<long>(size));
}
