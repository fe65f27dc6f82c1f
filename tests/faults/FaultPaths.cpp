// What calls are about, and the calls that nothing stands in for.

#include "FaultPoint.h"

#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

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

} // namespace

long RealSyscall(long number, long a, long b, long c, long d, long e, long f)
{
    using Syscall = long (*)(long, long, long, long, long, long, long);
    static const auto sReal = Next<Syscall>("syscall");
    return sReal(number, a, b, c, d, e, f);
}

void Die()
{
    for (;;) {
        RealSyscall(SYS_kill, ::getpid(), SIGKILL);
    }
}

bool IsAtOrBelow(const char* path, const char* folder)
{
    const size_t length = std::strlen(folder);
    return std::strncmp(path, folder, length) == 0 && (path[length] == '/' || path[length] == '\0');
}

bool PathOfCall(int folder, const char* name, char* path)
{
    if (name != nullptr && *name == '/') {
        return std::snprintf(path, PATH_MAX, "%s", name) < PATH_MAX;
    }
    const bool hasFolder = folder == AT_FDCWD ? ::getcwd(path, PATH_MAX) != nullptr
                                              : PathOfDescriptor(folder, path, PATH_MAX);
    if (!hasFolder || name == nullptr || *name == '\0') {
        return hasFolder;
    }
    const size_t length = std::strlen(path);
    return std::snprintf(path + length, PATH_MAX - length, "/%s", name) <
           static_cast<int>(PATH_MAX - length);
}
