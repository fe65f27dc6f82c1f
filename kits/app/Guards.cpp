#include "app/Guards.h"

#ifdef KITS_GUARDS

#include "app/DisplayHooks.h"
#include "app/LooperCore.h"

#include <Message.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace kits {

namespace {

thread_local std::vector<const LooperCore*> tHeld; // outermost first
thread_local std::vector<std::pair<const BLooper*, const BLooper*>> tAllowedPairs;

bool IsDeclared(const LooperCore& outer, const LooperCore& inner)
{
    return std::any_of(tAllowedPairs.begin(), tAllowedPairs.end(), [&](const auto& pair) {
        return (pair.first == outer.Looper() && pair.second == inner.Looper()) ||
               (pair.first == inner.Looper() && pair.second == outer.Looper());
    });
}

bool MayBeHeldTogether(const LooperCore& outer, const LooperCore& inner)
{
    if (!outer.HasRun() || !inner.HasRun()) {
        return true; // nobody else can reach it yet
    }
    const bool isOwnQuestion = outer.IsLongRunning() && inner.Maker() == outer.Token();
    return isOwnQuestion || IsDeclared(outer, inner);
}

} // namespace

AllowLockPair::AllowLockPair(const BLooper* one, const BLooper* other)
{
    tAllowedPairs.emplace_back(one, other);
}

AllowLockPair::~AllowLockPair()
{
    tAllowedPairs.pop_back();
}

LongWork::LongWork() : fCore(LooperCore::OfThisThread())
{
    if (fCore != nullptr) {
        fCore->AddLongWorks(1);
    }
}

LongWork::~LongWork()
{
    if (fCore != nullptr) {
        fCore->AddLongWorks(-1);
    }
}

void GuardBeforeLock(const LooperCore& core)
{
    GuardNotServer("The window server's thread takes a looper's lock");
    for (const LooperCore* held : tHeld) {
        if (!MayBeHeldTogether(*held, core)) {
            EndWithStack("A thread takes a looper's lock while it holds another one's");
        }
    }
}

void GuardAfterLock(const LooperCore& core)
{
    tHeld.push_back(&core);
}

void GuardAfterUnlock(const LooperCore& core)
{
    tHeld.erase(std::remove(tHeld.begin(), tHeld.end(), &core), tHeld.end());
}

void GuardNotServer(const char* complaint)
{
    const DisplayHooks& hooks = GetDisplayHooks();
    if (hooks.isServerThread != nullptr && hooks.isServerThread()) {
        EndWithStack(complaint);
    }
}

int32 InnermostLockedLooper()
{
    return tHeld.empty() ? 0 : tHeld.back()->Token();
}

} // namespace kits

#endif
