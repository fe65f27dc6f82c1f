// Opening, contents, and calls without a function of their own.

#include "FaultPoint.h"

#include <atomic>
#include <cstdarg>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

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

// Which descriptors something was written to since they were opened.
constexpr int kKnownDescriptors = 1024;
std::atomic<bool> sIsWritten[kKnownDescriptors];

void NoteWritten(int descriptor)
{
    if (descriptor >= 0 && descriptor < kKnownDescriptors) {
        sIsWritten[descriptor] = true;
    }
}

bool ForgetWritten(int descriptor)
{
    return descriptor >= 0 && descriptor < kKnownDescriptors &&
           sIsWritten[descriptor].exchange(false);
}

/// What a close that fails says: that bytes which were taken did not arrive.
void LoseHalf(int descriptor)
{
    struct stat st = {};
    if (RealSyscall(SYS_fstat, descriptor, Number(&st)) == 0 && S_ISREG(st.st_mode)) {
        RealSyscall(SYS_ftruncate, descriptor, st.st_size / 2);
    }
}

} // namespace

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
    const CallEnd end(kFaultClose, descriptor, nullptr);
    if (ForgetWritten(descriptor) && action > 0 && action != EINTR) {
        LoseHalf(descriptor);
    }
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
    NoteWritten(descriptor);
    return WithBytes(kFaultWrite, descriptor, size, [&](size_t count) {
        return RealSyscall(SYS_write, descriptor, Number(buffer), static_cast<long>(count));
    });
}

EXPORTED ssize_t pwrite(int descriptor, const void* buffer, size_t size, off_t position)
{
    NoteWritten(descriptor);
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

EXPORTED int syncfs(int descriptor) noexcept
{
    return With(kFaultSyncVolume, descriptor, nullptr,
                [&] { return static_cast<int>(RealSyscall(SYS_syncfs, descriptor)); });
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
