// A library to be preloaded: makes the n-th system call of a kind fail, or ends the process there.
//
// Armed by its harness through faults_arm(), or for any program by the environment: FAULT_CALL (a
// name of kFaultNames), FAULT_NTH (from 1), FAULT_ACTION (an errno's number, "short", "kill",
// "kill-after", "kill-within"), FAULT_BELOW (a folder, links resolved; calls elsewhere pass),
// FAULT_LASTING (set: all later calls fail too).

#include "FaultPoint.h"

#include <atomic>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

bool Concerns(int folder, const char* name)
{
    if (sState.folderLength == 0) {
        return true;
    }
    char path[PATH_MAX];
    return PathOfCall(folder, name, path) && IsAtOrBelow(path, sState.folder);
}

} // namespace

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

void Done(FaultKind, int, const char*) {}

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
