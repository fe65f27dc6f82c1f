// Names, records and attributes.

#include "FaultPoint.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

EXPORTED int renameat2(int from, const char* name, int to, const char* newName,
                       unsigned flags) noexcept
{
    return With(kFaultRename, from, name, [&] {
        return static_cast<int>(
            RealSyscall(SYS_renameat2, from, Number(name), to, Number(newName), flags));
    });
}

EXPORTED int renameat(int from, const char* name, int to, const char* newName) noexcept
{
    return renameat2(from, name, to, newName, 0);
}

EXPORTED int rename(const char* name, const char* newName) noexcept
{
    return renameat2(AT_FDCWD, name, AT_FDCWD, newName, 0);
}

EXPORTED int linkat(int from, const char* name, int to, const char* newName, int flags) noexcept
{
    return With(kFaultLink, to, newName, [&] {
        return static_cast<int>(
            RealSyscall(SYS_linkat, from, Number(name), to, Number(newName), flags));
    });
}

EXPORTED int link(const char* name, const char* newName) noexcept
{
    return linkat(AT_FDCWD, name, AT_FDCWD, newName, 0);
}

EXPORTED int symlinkat(const char* text, int folder, const char* name) noexcept
{
    return With(kFaultLink, folder, name, [&] {
        return static_cast<int>(RealSyscall(SYS_symlinkat, Number(text), folder, Number(name)));
    });
}

EXPORTED int symlink(const char* text, const char* name) noexcept
{
    return symlinkat(text, AT_FDCWD, name);
}

EXPORTED int unlinkat(int folder, const char* name, int flags) noexcept
{
    return With(kFaultUnlink, folder, name, [&] {
        return static_cast<int>(RealSyscall(SYS_unlinkat, folder, Number(name), flags));
    });
}

EXPORTED int unlink(const char* name) noexcept
{
    return unlinkat(AT_FDCWD, name, 0);
}

EXPORTED int rmdir(const char* name) noexcept
{
    return unlinkat(AT_FDCWD, name, AT_REMOVEDIR);
}

EXPORTED int mkdirat(int folder, const char* name, mode_t mode) noexcept
{
    return With(kFaultMakeFolder, folder, name, [&] {
        return static_cast<int>(RealSyscall(SYS_mkdirat, folder, Number(name), mode));
    });
}

EXPORTED int mkdir(const char* name, mode_t mode) noexcept
{
    return mkdirat(AT_FDCWD, name, mode);
}

// Records.

EXPORTED int statx(int folder, const char* name, int flags, unsigned mask,
                   struct statx* record) noexcept
{
    return With(kFaultStat, folder, name, [&] {
        return static_cast<int>(
            RealSyscall(SYS_statx, folder, Number(name), flags, mask, Number(record)));
    });
}

EXPORTED int fstatat(int folder, const char* name, struct stat* st, int flags) noexcept
{
    static const auto sReal = Next<int (*)(int, const char*, struct stat*, int)>("fstatat");
    return With(kFaultStat, folder, name, [&] { return sReal(folder, name, st, flags); });
}

EXPORTED int fstatat64(int folder, const char* name, struct stat64* st, int flags) noexcept
{
    static const auto sReal = Next<int (*)(int, const char*, struct stat64*, int)>("fstatat64");
    return With(kFaultStat, folder, name, [&] { return sReal(folder, name, st, flags); });
}

EXPORTED int fstat(int descriptor, struct stat* st) noexcept
{
    static const auto sReal = Next<int (*)(int, struct stat*)>("fstat");
    return With(kFaultStat, descriptor, nullptr, [&] { return sReal(descriptor, st); });
}

EXPORTED int fstat64(int descriptor, struct stat64* st) noexcept
{
    static const auto sReal = Next<int (*)(int, struct stat64*)>("fstat64");
    return With(kFaultStat, descriptor, nullptr, [&] { return sReal(descriptor, st); });
}

EXPORTED int stat(const char* name, struct stat* st) noexcept
{
    static const auto sReal = Next<int (*)(const char*, struct stat*)>("stat");
    return With(kFaultStat, AT_FDCWD, name, [&] { return sReal(name, st); });
}

EXPORTED int lstat(const char* name, struct stat* st) noexcept
{
    static const auto sReal = Next<int (*)(const char*, struct stat*)>("lstat");
    return With(kFaultStat, AT_FDCWD, name, [&] { return sReal(name, st); });
}

EXPORTED int fchmod(int descriptor, mode_t mode) noexcept
{
    return With(kFaultSetMode, descriptor, nullptr,
                [&] { return static_cast<int>(RealSyscall(SYS_fchmod, descriptor, mode)); });
}

EXPORTED int fchmodat(int folder, const char* name, mode_t mode, int flags) noexcept
{
    static const auto sReal = Next<int (*)(int, const char*, mode_t, int)>("fchmodat");
    return With(kFaultSetMode, folder, name, [&] { return sReal(folder, name, mode, flags); });
}

EXPORTED int chmod(const char* name, mode_t mode) noexcept
{
    return fchmodat(AT_FDCWD, name, mode, 0);
}

EXPORTED int fchownat(int folder, const char* name, uid_t owner, gid_t group, int flags) noexcept
{
    return With(kFaultSetMode, folder, name, [&] {
        return static_cast<int>(
            RealSyscall(SYS_fchownat, folder, Number(name), owner, group, flags));
    });
}

EXPORTED int utimensat(int folder, const char* name, const struct timespec times[2],
                       int flags) noexcept
{
    return With(kFaultSetMode, folder, name, [&] {
        return static_cast<int>(
            RealSyscall(SYS_utimensat, folder, Number(name), Number(times), flags));
    });
}

// Extended attributes.

EXPORTED ssize_t flistxattr(int descriptor, char* buffer, size_t size) noexcept
{
    return With(kFaultAttributes, descriptor, nullptr, [&] {
        return static_cast<ssize_t>(
            RealSyscall(SYS_flistxattr, descriptor, Number(buffer), static_cast<long>(size)));
    });
}

EXPORTED ssize_t fgetxattr(int descriptor, const char* name, void* buffer, size_t size) noexcept
{
    return With(kFaultAttributes, descriptor, nullptr, [&] {
        return static_cast<ssize_t>(RealSyscall(SYS_fgetxattr, descriptor, Number(name),
                                                Number(buffer), static_cast<long>(size)));
    });
}

EXPORTED int fsetxattr(int descriptor, const char* name, const void* buffer, size_t size,
                       int flags) noexcept
{
    return With(kFaultAttributes, descriptor, nullptr, [&] {
        return static_cast<int>(RealSyscall(SYS_fsetxattr, descriptor, Number(name), Number(buffer),
                                            static_cast<long>(size), flags));
    });
}
