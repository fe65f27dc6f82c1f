#pragma once

#include "Faults.h"

#include <cerrno>
#include <cstddef>
#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/types.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

// The inside of a preloaded library: every call that it stands in for goes through With() or
// WithBytes(). What is to happen then, each library says for itself: Decide() and Done().

/// The function of that name that the program would have called.
template<typename Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

/// The system's own call, which nothing stands in for.
long RealSyscall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0,
                 long f = 0);

inline long Number(const void* pointer)
{
    return reinterpret_cast<long>(pointer);
}

[[noreturn]] void Die();

/// The path of what a call is about; false when it has none. `path` has room for PATH_MAX bytes.
bool PathOfCall(int folder, const char* name, char* path);
/// Whether a path is that of `folder` or lies below it.
bool IsAtOrBelow(const char* path, const char* folder);

/// What is to happen at this call: kFaultNone, an errno or one of the actions. `name` is relative
/// to `folder`; null when that is what the call is about.
int Decide(FaultKind kind, int folder, const char* name);
/// The call was made, or something happened in its stead.
void Done(FaultKind kind, int folder, const char* name);

/// Says Done() at its end, and keeps what the call said.
class CallEnd
{
public:
    CallEnd(FaultKind kind, int folder, const char* name)
        : fKind(kind), fFolder(folder), fName(name)
    {
    }
    ~CallEnd()
    {
        const int error = errno;
        Done(fKind, fFolder, fName);
        errno = error;
    }
    CallEnd(const CallEnd&) = delete;
    CallEnd& operator=(const CallEnd&) = delete;

private:
    const FaultKind fKind;
    const int fFolder;
    const char* const fName;
};

/// Makes a call, or what is to happen in its stead.
template<typename Call>
auto With(FaultKind kind, int folder, const char* name, Call call) -> decltype(call())
{
    const int action = Decide(kind, folder, name);
    const CallEnd end(kind, folder, name);
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
    const CallEnd end(kind, descriptor, nullptr);
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
