// A library to be preloaded: makes the n-th system call of a kind fail, or ends the process there.
//
// Armed by its harness through faults_arm(), or for any program by the environment: FAULT_CALL (a
// name of kFaultNames), FAULT_NTH (from 1), FAULT_ACTION (an errno's number, "short", "kill",
// "kill-after", "kill-within"), FAULT_BELOW (a folder, links resolved; calls elsewhere pass),
// FAULT_LASTING (set: all later calls fail too).

#include "FaultPoint.h"

#include <atomic>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

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

__attribute__((constructor)) void ArmFromEnvironment()
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
