// A library to be preloaded: makes the n-th system call of a kind fail, or ends the process there.
//
// Armed by its harness through faults_arm(), or for any program by the environment: FAULT_CALL (a
// name of kFaultNames), FAULT_NTH (from 1), FAULT_ACTION (an errno's number, "short", "kill",
// "kill-after", "kill-within"), FAULT_BELOW (a folder, links resolved; calls elsewhere pass),
// FAULT_LASTING (set: all later calls fail too).

#include "Faults.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

template<typename Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

using Syscall = long (*)(long, long, long, long, long, long, long);

long RealSyscall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0,
                 long f = 0)
{
    static const auto sReal = Next<Syscall>("syscall");
    return sReal(number, a, b, c, d, e, f);
}

long Number(const void* pointer)
{
    return reinterpret_cast<long>(pointer);
}

struct State
{
    std::atomic<bool> isArmed{false};
    char folder[PATH_MAX] = "";
    size_t folderLength = 0;
    FaultPlan plan;
    std::atomic<int> counts[kFaultKinds] = {};
    std::atomic<int> fired{0};
};

State sState;

/// Path of what a descriptor is open on; "" when it has none.
bool PathOfDescriptor(int descriptor, char* path, size_t size)
{
    char link[40];
    std::snprintf(link, sizeof(link), "/proc/self/fd/%d", descriptor);
    const long length = RealSyscall(SYS_readlinkat, AT_FDCWD, Number(link), Number(path),
                                    static_cast<long>(size - 1));
    path[length < 0 ? 0 : length] = '\0';
    return length > 0;
}

bool IsBelow(const char* path)
{
    return std::strncmp(path, sState.folder, sState.folderLength) == 0 &&
           (path[sState.folderLength] == '/' || path[sState.folderLength] == '\0');
}

bool Concerns(int folder, const char* name)
{
    if (sState.folderLength == 0) {
        return true;
    }
    if (name != nullptr && *name == '/') {
        return IsBelow(name);
    }
    char path[PATH_MAX];
    if (folder == AT_FDCWD) {
        return ::getcwd(path, sizeof(path)) != nullptr && IsBelow(path);
    }
    return PathOfDescriptor(folder, path, sizeof(path)) && IsBelow(path);
}

[[noreturn]] void Die()
{
    for (;;) {
        RealSyscall(SYS_kill, ::getpid(), SIGKILL);
    }
}

/// What is to happen at this call: kFaultNone, an errno or one of the actions.
int Decide(FaultKind kind, int folder, const char* name)
{
    if (!sState.isArmed.load(std::memory_order_acquire)) {
        return kFaultNone;
    }
    const int error = errno;
    const bool isMeant = Concerns(folder, name);
    errno = error;
    if (!isMeant) {
        return kFaultNone;
    }
    const int number = ++sState.counts[kind];
    const FaultPlan& plan = sState.plan;
    if (kind != plan.kind || plan.action == kFaultNone ||
        (plan.isLasting ? number < plan.nth : number != plan.nth)) {
        return kFaultNone;
    }
    ++sState.fired;
    if (plan.action == kFaultKillBefore) {
        Die();
    }
    return plan.action;
}

/// Makes a call, or what is to happen in its stead.
template<typename Call>
auto With(FaultKind kind, int folder, const char* name, Call call) -> decltype(call())
{
    const int action = Decide(kind, folder, name);
    if (action > 0) {
        errno = action;
        return -1;
    }
    const auto result = call();
    if (action == kFaultKillAfter) {
        Die();
    }
    return result;
}

/// The same for calls that take a number of bytes.
template<typename Call>
ssize_t WithBytes(FaultKind kind, int descriptor, size_t size, Call call)
{
    const int action = Decide(kind, descriptor, nullptr);
    if (action > 0) {
        errno = action;
        return -1;
    }
    const bool isHalf = action == kFaultShort || action == kFaultKillWithin;
    const ssize_t result = call(isHalf && size > 1 ? size / 2 : size);
    if (action == kFaultKillAfter || action == kFaultKillWithin) {
        Die();
    }
    return result;
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

int OpenAt(int folder, const char* name, int flags, mode_t mode)
{
    return With(kFaultOpen, folder, name, [&] {
        return static_cast<int>(RealSyscall(SYS_openat, folder, Number(name), flags, mode));
    });
}

int KindNamed(const char* name)
{
    for (int kind = 0; kind < kFaultKinds; ++kind) {
        if (std::strcmp(kFaultNames[kind], name) == 0) {
            return kind;
        }
    }
    return -1;
}

int ActionNamed(const char* name)
{
    return std::strcmp(name, "short") == 0         ? kFaultShort
           : std::strcmp(name, "kill") == 0        ? kFaultKillBefore
           : std::strcmp(name, "kill-after") == 0  ? kFaultKillAfter
           : std::strcmp(name, "kill-within") == 0 ? kFaultKillWithin
                                                   : std::atoi(name);
}

__attribute__((constructor)) void ArmFromEnvironment();

} // namespace

EXPORTED void faults_arm(const FaultPlan* plan)
{
    sState.isArmed = false;
    sState.plan = *plan;
    sState.folderLength = 0;
    if (plan->folder != nullptr) {
        std::snprintf(sState.folder, sizeof(sState.folder), "%s", plan->folder);
        sState.folderLength = std::strlen(sState.folder);
    }
    for (auto& count : sState.counts) {
        count = 0;
    }
    sState.fired = 0;
    sState.isArmed = true;
}

EXPORTED int faults_count(FaultKind kind)
{
    return sState.counts[kind];
}

EXPORTED int faults_fired()
{
    return sState.fired;
}

namespace {

void ArmFromEnvironment()
{
    const char* call = std::getenv("FAULT_CALL");
    const char* nth = std::getenv("FAULT_NTH");
    const char* action = std::getenv("FAULT_ACTION");
    if (call == nullptr || nth == nullptr || action == nullptr) {
        return;
    }
    const int kind = KindNamed(call);
    if (kind < 0) {
        std::fprintf(stderr, "FAULT_CALL: there is no %s\n", call);
        std::_Exit(2);
    }
    const FaultPlan plan{std::getenv("FAULT_BELOW"), static_cast<FaultKind>(kind),
                         ActionNamed(action), std::atoi(nth),
                         std::getenv("FAULT_LASTING") != nullptr};
    faults_arm(&plan);
}

} // namespace

// Opening.

EXPORTED int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt(AT_FDCWD, path, flags, mode);
}

EXPORTED int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt(AT_FDCWD, path, flags, mode);
}

EXPORTED int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt(folder, path, flags, mode);
}

EXPORTED int openat64(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt(folder, path, flags, mode);
}

EXPORTED int __open_2(const char* path, int flags)
{
    return OpenAt(AT_FDCWD, path, flags, 0);
}

EXPORTED int __openat_2(int folder, const char* path, int flags)
{
    return OpenAt(folder, path, flags, 0);
}

EXPORTED int creat(const char* path, mode_t mode)
{
    return OpenAt(AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

EXPORTED int close(int descriptor)
{
    const int action = Decide(kFaultClose, descriptor, nullptr);
    const int result = static_cast<int>(RealSyscall(SYS_close, descriptor));
    if (action == kFaultKillAfter) {
        Die();
    }
    if (action > 0) {
        errno = action; // whatever it says, the descriptor is gone
        return -1;
    }
    return result;
}

// Contents.

EXPORTED ssize_t read(int descriptor, void* buffer, size_t size)
{
    return WithBytes(kFaultRead, descriptor, size, [&](size_t count) {
        return RealSyscall(SYS_read, descriptor, Number(buffer), static_cast<long>(count));
    });
}

EXPORTED ssize_t pread(int descriptor, void* buffer, size_t size, off_t position)
{
    return WithBytes(kFaultRead, descriptor, size, [&](size_t count) {
        return RealSyscall(SYS_pread64, descriptor, Number(buffer), static_cast<long>(count),
                           position);
    });
}

EXPORTED ssize_t pread64(int descriptor, void* buffer, size_t size, off64_t position)
{
    return pread(descriptor, buffer, size, position);
}

EXPORTED ssize_t __read_chk(int descriptor, void* buffer, size_t size, size_t)
{
    return read(descriptor, buffer, size);
}

EXPORTED ssize_t __pread_chk(int descriptor, void* buffer, size_t size, off_t position, size_t)
{
    return pread(descriptor, buffer, size, position);
}

EXPORTED ssize_t __pread64_chk(int descriptor, void* buffer, size_t size, off64_t position, size_t)
{
    return pread(descriptor, buffer, size, position);
}

EXPORTED ssize_t write(int descriptor, const void* buffer, size_t size)
{
    return WithBytes(kFaultWrite, descriptor, size, [&](size_t count) {
        return RealSyscall(SYS_write, descriptor, Number(buffer), static_cast<long>(count));
    });
}

EXPORTED ssize_t pwrite(int descriptor, const void* buffer, size_t size, off_t position)
{
    return WithBytes(kFaultWrite, descriptor, size, [&](size_t count) {
        return RealSyscall(SYS_pwrite64, descriptor, Number(buffer), static_cast<long>(count),
                           position);
    });
}

EXPORTED ssize_t pwrite64(int descriptor, const void* buffer, size_t size, off64_t position)
{
    return pwrite(descriptor, buffer, size, position);
}

EXPORTED int fsync(int descriptor)
{
    return With(kFaultSync, descriptor, nullptr,
                [&] { return static_cast<int>(RealSyscall(SYS_fsync, descriptor)); });
}

EXPORTED int fdatasync(int descriptor)
{
    return With(kFaultSync, descriptor, nullptr,
                [&] { return static_cast<int>(RealSyscall(SYS_fdatasync, descriptor)); });
}

EXPORTED int ftruncate(int descriptor, off_t size)
{
    return With(kFaultSetSize, descriptor, nullptr,
                [&] { return static_cast<int>(RealSyscall(SYS_ftruncate, descriptor, size)); });
}

EXPORTED int ftruncate64(int descriptor, off64_t size)
{
    return ftruncate(descriptor, size);
}

EXPORTED ssize_t copy_file_range(int from, off64_t* fromPosition, int to, off64_t* toPosition,
                                 size_t size, unsigned flags)
{
    return WithBytes(kFaultCopyRange, to, size, [&](size_t count) {
        return RealSyscall(SYS_copy_file_range, from, Number(fromPosition), to, Number(toPosition),
                           static_cast<long>(count), flags);
    });
}

EXPORTED int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return With(kFaultControl, descriptor, nullptr, [&] {
        return static_cast<int>(
            RealSyscall(SYS_ioctl, descriptor, static_cast<long>(request), Number(argument)));
    });
}

// Names.

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

// Calls without a function of their own.

EXPORTED long syscall(long number, ...) noexcept
{
    va_list arguments;
    va_start(arguments, number);
    long value[6];
    for (long& each : value) {
        each = va_arg(arguments, long);
    }
    va_end(arguments);
    const auto call = [&] {
        return RealSyscall(number, value[0], value[1], value[2], value[3], value[4], value[5]);
    };
    const int folder = static_cast<int>(value[0]);
    switch (number) {
    case SYS_getdents64:
        return With(kFaultList, folder, nullptr, call);
    case SYS_openat2:
        return With(kFaultOpen, folder, reinterpret_cast<const char*>(value[1]), call);
    default:
        return call();
    }
}

EXPORTED ssize_t getdents64(int descriptor, void* buffer, size_t size) noexcept
{
    return With(kFaultList, descriptor, nullptr, [&] {
        return RealSyscall(SYS_getdents64, descriptor, Number(buffer), static_cast<long>(size));
    });
}
